quillet_fuzz_target(package_load SOURCES ${CMAKE_CURRENT_LIST_DIR}/package_load.cpp DEPENDS vellum)
quillet_fuzz_target(sheet_features SOURCES ${CMAKE_CURRENT_LIST_DIR}/sheet_features.cpp DEPENDS vellum)
quillet_fuzz_target(package_objects SOURCES ${CMAKE_CURRENT_LIST_DIR}/package_objects.cpp DEPENDS vellum)
quillet_fuzz_target(number_sample SOURCES ${CMAKE_CURRENT_LIST_DIR}/number_sample.cpp DEPENDS vellum_xlsx)
