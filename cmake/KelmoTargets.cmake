# SPDX-License-Identifier: GPL-3.0-or-later
# What every target of ours has in common: language, warnings, sanitizers, ccache, precompiled
# headers, and the places in the build tree that mirror an installation.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# The same level as the dev preset: hot loops that gain from more ask for it themselves.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

find_program(KELMO_CCACHE ccache)
if(KELMO_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # The slack that ccache needs to cache users of a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      ${KELMO_CCACHE})
endif()

# The build tree is laid out as an installation is, so that everything finds its neighbours the same
# way: bin/kelmo, lib/kelmo/*.so and *.qor, share/kelmo/qor_effect/...
set(KELMO_PLUGIN_SUBDIR "${CMAKE_INSTALL_LIBDIR}/kelmo")
set(KELMO_DATA_SUBDIR "${CMAKE_INSTALL_DATADIR}/kelmo")
set(KELMO_BIN_DIR "${CMAKE_BINARY_DIR}/stage/${CMAKE_INSTALL_BINDIR}")
set(KELMO_PLUGIN_DIR "${CMAKE_BINARY_DIR}/stage/${KELMO_PLUGIN_SUBDIR}")
set(KELMO_DATA_DIR "${CMAKE_BINARY_DIR}/stage/${KELMO_DATA_SUBDIR}")

add_library(kelmo_options INTERFACE)
target_compile_options(kelmo_options INTERFACE -Wall -Wextra -Werror)
target_include_directories(kelmo_options INTERFACE "${CMAKE_SOURCE_DIR}" "${CMAKE_SOURCE_DIR}/library")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kelmo_options INTERFACE -fpch-preprocess)
endif()
if(KELMO_SANITIZE)
  target_compile_options(kelmo_options INTERFACE
    -fsanitize=${KELMO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
    -O1 -g1)  # the higher levels double the build for reports that are no better
  target_link_options(kelmo_options INTERFACE -fsanitize=${KELMO_SANITIZE})
endif()
if(KELMO_FUZZ)
  target_compile_options(kelmo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# kelmo_room(NAME [OBJECT] [OPENCV] [OPTIONS o...] [LINK lib...]): a static (or object) library of all .cpp
# files of the current folder and its sub-folders. OPENCV puts OpenCV's core header into the precompiled
# header. Code with options of its own cannot use a precompiled header that was made without them.
function(kelmo_room name)
  cmake_parse_arguments(ARG "OBJECT;OPENCV" "" "OPTIONS;LINK" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE kelmo_options ${ARG_LINK})
    return()
  endif()
  if(ARG_OBJECT)
    add_library(${name} OBJECT ${sources})
  else()
    add_library(${name} STATIC ${sources})
  endif()
  target_link_libraries(${name} PUBLIC kelmo_options ${ARG_LINK})
  if(ARG_OPTIONS)
    target_compile_options(${name} PRIVATE ${ARG_OPTIONS})
  else()
    kelmo_precompile(${name} ${ARG_OPENCV})
  endif()
endfunction()

# Precompiled headers are made once a kind, not once a target: they are large, and the same everywhere.
# kelmo_headers(NAME OPTION HEADERS...): a target that others reuse the headers of; OPTION says what code it
# is for, -fPIC (libraries) or -fPIE (programs).
function(kelmo_headers name option)
  file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/${name}.cpp" CONTENT "// Carries a precompiled header.\n")
  add_library(${name} OBJECT "${CMAKE_BINARY_DIR}/${name}.cpp")
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
  target_compile_options(${name} PRIVATE ${option})
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# kelmo_precompile(NAME OPENCV): the standard headers that every room uses, with OpenCV's core on request.
function(kelmo_precompile name opencv)
  get_target_property(type ${name} TYPE)
  set(option -fPIC)
  set(kind kelmo_headers_library)
  if(type STREQUAL "EXECUTABLE")
    set(option -fPIE)
    set(kind kelmo_headers_program)
  endif()
  set(headers <algorithm> <cstdint> <functional> <map> <memory> <string> <vector>)
  set(link kelmo_options)
  if(opencv)
    string(APPEND kind "_opencv")
    list(APPEND headers <opencv2/core.hpp>)
    list(APPEND link opencv::core)
  endif()
  if(NOT TARGET ${kind})
    kelmo_headers(${kind} ${option} ${headers})
    target_link_libraries(${kind} PRIVATE ${link})
  endif()
  target_precompile_headers(${name} REUSE_FROM ${kind})
endfunction()

# Drivers and codecs outside our code keep memory until the process ends: the suppressions name them,
# never code of ours, and libraries stay loaded, so that a leak has a name. For ThreadSanitizer they are
# not instrumented. Nothing is suppressed there: OpenCV stands in the stack of each parallel loop of ours.
if(KELMO_SANITIZE MATCHES "address")
  set(KELMO_TEST_ENVIRONMENT
    "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0"
    "UBSAN_OPTIONS=print_stacktrace=1")
elseif(KELMO_SANITIZE MATCHES "thread")
  set(KELMO_TEST_ENVIRONMENT
    "TSAN_OPTIONS=ignore_noninstrumented_modules=1:halt_on_error=1")
endif()

# The programs of the ThreadSanitizer run, built without the rest.
add_custom_target(kelmo_thread_tests)

# kelmo_test(NAME [THREADS] [FOLDERS f...] [LABELS l...] [LINK lib...]): one GoogleTest program of all .cpp
# files of the current folder, and of the folders named, registered with ctest. THREADS marks it for the
# ThreadSanitizer run.
function(kelmo_test name)
  cmake_parse_arguments(ARG "THREADS" "" "FOLDERS;LINK;LABELS;ARGS" ${ARGN})
  set(patterns "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND patterns "${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp")
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE kelmo_options ${ARG_LINK} GTest::gmock GTest::gtest_main)
  if(NOT TARGET kelmo_headers_test)
    kelmo_headers(kelmo_headers_test -fPIE <gtest/gtest.h> <gmock/gmock.h> <string> <vector>)
    target_link_libraries(kelmo_headers_test PRIVATE kelmo_options GTest::gmock)
  endif()
  target_precompile_headers(${name} REUSE_FROM kelmo_headers_test)
  target_compile_definitions(${name} PRIVATE
    KELMO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    KELMO_BIN_DIR="${KELMO_BIN_DIR}"
    KELMO_PLUGIN_DIR="${KELMO_PLUGIN_DIR}"
    KELMO_DATA_DIR="${KELMO_DATA_DIR}"
    KELMO_TEST_OUTPUT_DIR="${CMAKE_BINARY_DIR}/test-output")
  if(KELMO_SANITIZE MATCHES "address")
    target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests/asan/kept_libraries.cpp")
    target_link_options(${name} PRIVATE "LINKER:--export-dynamic-symbol=dlclose")
  endif()
  add_test(NAME ${name} COMMAND ${name} ${ARG_ARGS})
  set(labels ${ARG_LABELS})
  if(ARG_THREADS)
    list(APPEND labels threads)
    add_dependencies(kelmo_thread_tests ${name})
    if(KELMO_SANITIZE MATCHES "thread")
      target_sources(${name} PRIVATE
        "${CMAKE_SOURCE_DIR}/tests/tsan/traced_parallel_backend.cpp")
      target_link_libraries(${name} PRIVATE opencv::core)
    endif()
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT 1800 LABELS "${labels}")
  if(KELMO_TEST_ENVIRONMENT)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${KELMO_TEST_ENVIRONMENT}")
  endif()
endfunction()

# kelmo_benchmark(benchmark_NAME SOURCES s... [LINK lib...]): one Google Benchmark program.
function(kelmo_benchmark name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/benchmarks")
  target_link_libraries(${name} PRIVATE kelmo_options ${ARG_LINK} benchmark::benchmark benchmark::benchmark_main)
  target_compile_definitions(${name} PRIVATE
    KELMO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    KELMO_BIN_DIR="${KELMO_BIN_DIR}"
    KELMO_PLUGIN_DIR="${KELMO_PLUGIN_DIR}"
    KELMO_DATA_DIR="${KELMO_DATA_DIR}")
endfunction()

# kelmo_fuzz(NAME SOURCE [LINK lib...]): one libFuzzer program; its corpus is the folder corpus/NAME.
if(KELMO_FUZZ)
  add_custom_target(kelmo_fuzz_targets)
endif()
function(kelmo_fuzz name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE kelmo_options ${ARG_LINK})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/fuzz")
  add_dependencies(kelmo_fuzz_targets ${name})
endfunction()
