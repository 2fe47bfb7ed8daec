# The csv driver beside other programs.
add_executable(bench_csv EXCLUDE_FROM_ALL csv_main.cpp)
target_link_libraries(bench_csv PRIVATE quillet_build quillet_host quillet_refhost)
add_dependencies(benches bench_csv)
