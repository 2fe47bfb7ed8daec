quillet_fuzz_target(script SOURCES ${CMAKE_CURRENT_LIST_DIR}/script.cpp DEPENDS quillet_refhost)
