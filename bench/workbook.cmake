# A program for timing whole tasks from outside, beside other readers and writers.
add_executable(bench_workbook EXCLUDE_FROM_ALL workbook.cpp)
target_link_libraries(bench_workbook PRIVATE quillet_build quillet_cli_workbook)
add_dependencies(benches bench_workbook)

# Layout of sheets, each time beside a walk over the same cells.
add_executable(bench_layout EXCLUDE_FROM_ALL layout.cpp)
target_link_libraries(bench_layout PRIVATE quillet_build vellum)
add_dependencies(benches bench_layout)

# Filters, names, links and rules, each beside what bounds it.
add_executable(bench_filters EXCLUDE_FROM_ALL filters.cpp)
target_link_libraries(bench_filters PRIVATE quillet_build vellum)
add_dependencies(benches bench_filters)
