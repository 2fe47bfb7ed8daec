if(TARGET vellum_xlsx)
  quillet_fuzz_target(package_load SOURCES package_load.cpp DEPENDS vellum)
endif()
