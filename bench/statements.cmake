# Statements of each layout on the reference host, and on one that stores nothing.
find_package(nlohmann_json REQUIRED)
if(NOT QUILLET_FUZZ)
  add_executable(bench_statements EXCLUDE_FROM_ALL statements.cpp)
  target_link_libraries(bench_statements PRIVATE quillet_build vellum quillet_script_runner nlohmann_json::nlohmann_json ${CMAKE_DL_LIBS})
  target_compile_definitions(bench_statements PRIVATE QUILLET_MODULE="$<TARGET_FILE:quillet_module>")
  add_dependencies(benches bench_statements)
endif()

# Memory that a cell of each kind takes.
add_executable(bench_memory EXCLUDE_FROM_ALL memory.cpp)
target_link_libraries(bench_memory PRIVATE quillet_build vellum quillet_host nlohmann_json::nlohmann_json)
add_dependencies(benches bench_memory)
