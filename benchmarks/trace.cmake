# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_trace
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/trace.cpp"
  LINK kelmo_geometry opencv::imgproc)
