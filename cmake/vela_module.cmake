# vela_module(NAME [DEPENDS module...] [SOURCES file...] [TESTS file...] [BENCHES file...])
#
# Makes the library NAME from src/, the test program NAME-test from test/ (one CTest a
# module) and the benchmark NAME-bench from bench/.  A module
# may depend only on modules below it, so that includes never run back up:
set(VELA_LAYERS
    core-std core-math core-thread core-io core-api core-audio core-codec
    comp-codec-v3 carrier-decoder velaenc carrier-check)

add_library(vela-options INTERFACE)
# Results are bit-exact: no fused multiply-add, no reordering of sums.
target_compile_options(vela-options INTERFACE -ffp-contract=off -Wall -Wextra -Wpedantic
                                              -Wshadow -Wconversion -Wno-sign-conversion)
if(VELA_WERROR)
  target_compile_options(vela-options INTERFACE -Werror)
endif()
if(VELA_SANITIZE)
  target_compile_options(vela-options INTERFACE -fsanitize=${VELA_SANITIZE} -fno-omit-frame-pointer
                                                -fno-sanitize-recover=all)
  target_link_options(vela-options INTERFACE -fsanitize=${VELA_SANITIZE})
endif()
if(VELA_TEST_SWITCHES)
  target_compile_definitions(vela-options INTERFACE VELA_TEST_SWITCHES=1)
endif()

function(vela_check_layer name depend)
  list(FIND VELA_LAYERS ${name} own)
  list(FIND VELA_LAYERS ${depend} other)
  if(own LESS 0)
    message(FATAL_ERROR "${name} has no place among the layers of vela_module.cmake")
  endif()
  if(other LESS 0 OR NOT other LESS own)
    message(FATAL_ERROR "${name} must not depend on ${depend}: it does not lie below it")
  endif()
endfunction()

function(vela_module name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;SOURCES;TESTS;BENCHES" ${ARGN})
  foreach(depend IN LISTS ARG_DEPENDS)
    vela_check_layer(${name} ${depend})
  endforeach()

  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${CMAKE_CURRENT_SOURCE_DIR}/src)
  target_link_libraries(${name} ${scope} vela-options Threads::Threads ${ARG_DEPENDS})

  if(VELA_BUILD_TESTS AND ARG_TESTS)
    add_executable(${name}-test ${ARG_TESTS})
    target_include_directories(${name}-test PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/test)
    target_compile_definitions(${name}-test PRIVATE VELA_TEST_DATA="${PROJECT_SOURCE_DIR}/test-data")
    target_link_libraries(${name}-test PRIVATE ${name} GTest::gtest_main GTest::gmock)
    if(VELA_SANITIZE)
      # Tests run for seconds only. Not optimising them saves more: the tests of core-io compile in
      # 34 s instead of 59 s, and what they test is optimised all the same.
      target_compile_options(${name}-test PRIVATE -O0)
    endif()
    add_test(NAME ${name} COMMAND ${name}-test --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES LABELS ${name})
  endif()
  if(VELA_BUILD_BENCHES AND ARG_BENCHES)
    add_executable(${name}-bench ${ARG_BENCHES})
    target_include_directories(${name}-bench PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/bench)
    target_link_libraries(${name}-bench PRIVATE ${name} benchmark::benchmark_main)
  endif()
endfunction()

# vela_sse2_test(MODULE FILTER): the module's tests of that gtest filter once more, as on a machine
# that has no newer set: elsewhere nothing else puts to the test what such a machine runs.
function(vela_sse2_test name filter)
  if(NOT TARGET ${name}-test OR NOT VELA_TEST_SWITCHES OR VELA_SANITIZE)
    return()
  endif()
  add_test(NAME ${name}.sse2 COMMAND ${name}-test --gtest_filter=${filter} --gtest_brief=1)
  set_tests_properties(${name}.sse2 PROPERTIES
    LABELS ${name} ENVIRONMENT VELA_INSTRUCTION_SET=sse2)
endfunction()

# vela_threads_test(MODULE FILTER): the module's tests of that gtest filter as a CTest of its own with
# the label "threads"; the target threads-tests builds all that these need.  With 16 processors given
# out, as many threads are at work at once on any machine.
add_custom_target(threads-tests)
function(vela_threads_test name filter)
  add_test(NAME ${name}.threads COMMAND ${name}-test --gtest_filter=${filter} --gtest_brief=1)
  set_tests_properties(${name}.threads PROPERTIES
    LABELS threads ENVIRONMENT VELA_PROCESSORS=16)
  add_dependencies(threads-tests ${name}-test)
endfunction()
