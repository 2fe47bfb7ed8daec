quillet_fuzz_target(xml_reader SOURCES xml_reader.cpp DEPENDS bindery)
