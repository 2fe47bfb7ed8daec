quillet_fuzz_target(options SOURCES options.cpp DEPENDS quillet_host)
quillet_fuzz_target(csv_load SOURCES csv_load.cpp DEPENDS quillet_host)
