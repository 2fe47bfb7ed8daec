# A million formulas, for timing from outside.
add_executable(bench_formulas EXCLUDE_FROM_ALL formulas.cpp)
target_link_libraries(bench_formulas PRIVATE quillet_build quillet_cli_workbook)
add_dependencies(benches bench_formulas)
