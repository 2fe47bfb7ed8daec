quillet_fuzz_target(options SOURCES ${CMAKE_CURRENT_LIST_DIR}/options.cpp DEPENDS quillet_host)
quillet_fuzz_target(csv_load
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/csv_load.cpp ${PROJECT_SOURCE_DIR}/tests/host/sources/csv_reference.cpp
  DEPENDS quillet_host)
quillet_fuzz_target(label SOURCES ${CMAKE_CURRENT_LIST_DIR}/label.cpp DEPENDS quillet_host)
