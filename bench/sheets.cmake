# Memory of many small sheets.
add_executable(bench_sheets EXCLUDE_FROM_ALL sheets.cpp)
target_link_libraries(bench_sheets PRIVATE quillet_build quillet_cli_workbook)
add_dependencies(benches bench_sheets)
