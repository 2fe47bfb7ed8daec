quillet_fuzz_target(xml_reader SOURCES ${CMAKE_CURRENT_LIST_DIR}/xml_reader.cpp DEPENDS bindery)
