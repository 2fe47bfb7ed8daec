# What operations cost when they are repeated often. CI runs its small form.
find_package(nlohmann_json REQUIRED)
if(NOT QUILLET_FUZZ)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/growth/*.cpp)
  add_executable(bench_growth EXCLUDE_FROM_ALL ${sources})
  target_link_libraries(bench_growth PRIVATE quillet_build vellum quillet_host quillet_script_runner nlohmann_json::nlohmann_json)
  add_dependencies(benches bench_growth)
endif()
