quillet_fuzz_target(book_load SOURCES ${CMAKE_CURRENT_LIST_DIR}/book_load.cpp DEPENDS vellum)
