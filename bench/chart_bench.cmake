# The chart benchmark has its own main (it also times the bare gd calls).
add_executable(chart_bench chart_bench.cc chart_bench_canvas.cc)
target_include_directories(chart_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(chart_bench PRIVATE tavrel_grapher benchmark::benchmark)
