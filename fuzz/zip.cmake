quillet_fuzz_target(zip_reader SOURCES zip_reader.cpp DEPENDS zip)
