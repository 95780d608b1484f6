# Dialogs over the messenger against the bare FIFO round trip (plain program;
# run as: dialog_bench $<TARGET_FILE:dialog_bench_child> [N]).
add_executable(dialog_bench_child dialog_bench_child.cc)
target_include_directories(dialog_bench_child PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(dialog_bench_child PRIVATE tavrel_queues)
add_executable(dialog_bench dialog_bench.cc)
target_include_directories(dialog_bench PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(dialog_bench PRIVATE tavrel_host)
