quillet_fuzz_target(worksheet_unmarshal SOURCES ${CMAKE_CURRENT_LIST_DIR}/worksheet_unmarshal.cpp DEPENDS ooxml bindery)
quillet_fuzz_target(styles_unmarshal SOURCES ${CMAKE_CURRENT_LIST_DIR}/styles_unmarshal.cpp DEPENDS ooxml bindery)
