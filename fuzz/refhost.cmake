quillet_fuzz_target(script SOURCES script.cpp DEPENDS quillet_refhost)
