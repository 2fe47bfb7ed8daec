quillet_fuzz_target(number_format SOURCES ${CMAKE_CURRENT_LIST_DIR}/number_format.cpp DEPENDS quillet_cli_formats)
