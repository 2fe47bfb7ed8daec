# The csv driver beside other programs. The workloads' content is told by a header that lies beside the peers.
set(QUILLET_BENCH_PEERS ${PROJECT_SOURCE_DIR}/../shared/bench/peers CACHE PATH "Folder of the workloads' content.h")
if(EXISTS ${QUILLET_BENCH_PEERS}/content.h)
  add_executable(bench_csv EXCLUDE_FROM_ALL csv_main.cpp)
  target_link_libraries(bench_csv PRIVATE quillet_build quillet_host)
  target_include_directories(bench_csv SYSTEM PRIVATE ${QUILLET_BENCH_PEERS})
  add_dependencies(benches bench_csv)
endif()
