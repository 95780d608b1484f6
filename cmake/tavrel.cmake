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

# Appends to `out` every target defined in `dir` and the folders below it.
function(tavrel_targets_below dir out)
  get_property(found DIRECTORY ${dir} PROPERTY BUILDSYSTEM_TARGETS)
  get_property(subdirs DIRECTORY ${dir} PROPERTY SUBDIRECTORIES)
  foreach(sub IN LISTS subdirs)
    tavrel_targets_below(${sub} below)
    list(APPEND found ${below})
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# Cuts compile time, which is most of a fresh build. With TAVREL_UNITY every
# library and program compiles its sources in batches of 16, so the standard
# headers are parsed once per batch instead of once per file; names in
# anonymous namespaces must therefore be unique within a target. Test
# programs also share one precompiled GoogleTest header. GCC 12 then reports
# its known false buffer warnings on inlined std::string code (which it keeps
# quiet about when the header is parsed normally), so those warnings are off
# for test programs; the sanitizer build runs the same tests with real bounds
# checks. Call once, after all folders were added.
function(tavrel_tune_compilation)
  tavrel_targets_below(${PROJECT_SOURCE_DIR} targets)
  add_library(tavrel_gtest_pch STATIC ${PROJECT_SOURCE_DIR}/cmake/gtest_pch.cc)
  target_link_libraries(tavrel_gtest_pch PRIVATE GTest::gtest)
  target_precompile_headers(tavrel_gtest_pch PRIVATE <gtest/gtest.h>)
  foreach(t IN LISTS targets)
    get_target_property(type ${t} TYPE)
    if(NOT type MATCHES "^(STATIC_LIBRARY|EXECUTABLE)$")
      continue()
    endif()
    get_target_property(libs ${t} LINK_LIBRARIES)
    if("GTest::gtest" IN_LIST libs)
      target_precompile_headers(${t} REUSE_FROM tavrel_gtest_pch)
      target_compile_options(${t} PRIVATE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
    endif()
    if(TAVREL_UNITY)
      set_target_properties(${t} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
    endif()
  endforeach()
endfunction()
