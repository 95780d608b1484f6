# Helpers shared by the folders' CMakeLists.txt.

# tavrel_library(NAME SOURCES a.cc b.cc DEPS other_lib ...)
# A static library named tavrel_NAME; the project root is on its include path,
# so headers are included as "folder/file.h".
function(tavrel_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_library(tavrel_${name} STATIC ${ARG_SOURCES})
  target_include_directories(tavrel_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(tavrel_${name} PUBLIC ${ARG_DEPS})
endfunction()

# tavrel_test(NAME SOURCES a_test.cc ... DEPS lib ...)
# A GoogleTest program whose cases are registered with CTest one by one.
function(tavrel_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                       PROPERTIES ENVIRONMENT "TAVREL_BUILD_DIR=${PROJECT_BINARY_DIR}")
endfunction()

# tavrel_fuzzer(NAME SOURCES f.cc DEPS lib ...)
# A libFuzzer target, built only in the fuzzing configuration.
function(tavrel_fuzzer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  if(TAVREL_FUZZ)
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS})
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    set_property(GLOBAL APPEND PROPERTY TAVREL_FUZZERS ${name})
  endif()
endfunction()

# Writes build/fuzzers.txt: one line per fuzzer, "binary corpus-folder", for
# scripts/test. Call once, after all folders were added.
function(tavrel_write_fuzzer_list)
  get_property(fuzzers GLOBAL PROPERTY TAVREL_FUZZERS)
  set(lines "")
  foreach(f IN LISTS fuzzers)
    get_target_property(dir ${f} SOURCE_DIR)
    string(APPEND lines "$<TARGET_FILE:${f}> ${dir}/fuzz/${f}\n")
  endforeach()
  file(GENERATE OUTPUT ${PROJECT_BINARY_DIR}/fuzzers.txt CONTENT "${lines}")
endfunction()
