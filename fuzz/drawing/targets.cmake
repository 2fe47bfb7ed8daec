quillet_fuzz_target(drawing_block SOURCES ${CMAKE_CURRENT_LIST_DIR}/drawing_block.cpp DEPENDS vellum)
quillet_fuzz_target(drawing_group SOURCES ${CMAKE_CURRENT_LIST_DIR}/drawing_group.cpp DEPENDS vellum)
