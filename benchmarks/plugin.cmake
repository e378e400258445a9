# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_plugin
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/plugin.cpp"
  LINK kelmo_plugin kelmo_framework kelmo_test_support)
