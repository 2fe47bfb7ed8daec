quillet_fuzz_target(label SOURCES label.cpp DEPENDS quillet_host)
