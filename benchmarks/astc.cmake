# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_astc
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/astc.cpp"
  LINK kelmo_framework)
