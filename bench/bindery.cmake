# Reading and writing a worksheet part through its bound classes, beside a plain tree parser where there is one.
if(TARGET ooxml)
  quillet_bench(bench_bindery SOURCES bindery.cpp DEPENDS ooxml)
  find_package(pugixml QUIET)
  if(TARGET bench_bindery AND TARGET pugixml::pugixml)
    target_link_libraries(bench_bindery PRIVATE pugixml::pugixml)
    target_compile_definitions(bench_bindery PRIVATE HAVE_PUGIXML)
  endif()
endif()
