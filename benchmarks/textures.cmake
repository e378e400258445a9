# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_textures
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/textures.cpp"
  LINK kelmo_framework kelmo_test_support)
target_include_directories(benchmark_textures PRIVATE "${CMAKE_SOURCE_DIR}/tests")
