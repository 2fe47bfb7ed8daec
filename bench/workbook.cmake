# A program for timing whole tasks from outside, beside other readers and writers.
add_executable(bench_workbook EXCLUDE_FROM_ALL workbook.cpp)
target_link_libraries(bench_workbook PRIVATE quillet_build quillet_cli_workbook)
add_dependencies(benches bench_workbook)
