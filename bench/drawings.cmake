# Pictures and comments of workbooks, timed from outside as bench_workbook is.
find_package(ZLIB REQUIRED)
add_executable(bench_drawings EXCLUDE_FROM_ALL drawings.cpp)
target_link_libraries(bench_drawings PRIVATE quillet_build quillet_cli_workbook ZLIB::ZLIB)
add_dependencies(benches bench_drawings)
