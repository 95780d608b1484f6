# The stand-in database of the host and its world files.
find_package(nlohmann_json REQUIRED)

tavrel_library(host_store
  SOURCES store_objects.cc select_match.cc select_eval.cc store_series.cc store_series_read.cc
          store_database.cc world_names.cc world_values.cc world_config.cc world_series.cc
          world_load.cc world_dump.cc store_subscriptions.cc progress_watch.cc direct_database.cc
  DEPS tavrel_dbms tavrel_tsdb tavrel_tql tavrel_protocol tavrel_base
       nlohmann_json::nlohmann_json)
tavrel_library(host_store_testing
  SOURCES store_test_world.cc report_test_world.cc
  DEPS tavrel_host_store)
tavrel_test(host_store_test
  SOURCES store_objects_test.cc select_eval_test.cc select_reporter_test.cc store_series_test.cc
          store_database_test.cc store_subscriptions_test.cc progress_watch_test.cc
          select_depth_test.cc
  DEPS tavrel_host_store_testing tavrel_queues)
tavrel_test(host_world_test
  SOURCES world_test.cc
  DEPS tavrel_host_store)
target_compile_definitions(host_world_test PRIVATE HOST_SOURCE_DIR="${CMAKE_CURRENT_SOURCE_DIR}")
tavrel_fuzzer(world_fuzzer
  SOURCES world_fuzzer.cc
  DEPS tavrel_host_store)
