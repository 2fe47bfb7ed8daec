quillet_fuzz_target(zip_reader SOURCES ${CMAKE_CURRENT_LIST_DIR}/zip_reader.cpp DEPENDS zip)
