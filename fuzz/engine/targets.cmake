quillet_fuzz_target(book_load SOURCES ${CMAKE_CURRENT_LIST_DIR}/book_load.cpp DEPENDS vellum)
quillet_fuzz_target(image_header SOURCES ${CMAKE_CURRENT_LIST_DIR}/image_header.cpp DEPENDS vellum_engine)
