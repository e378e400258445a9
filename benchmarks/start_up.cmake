# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_start_up SOURCES "${CMAKE_CURRENT_LIST_DIR}/start_up.cpp"
  LINK kelmo_test_support kelmo_host_session ${CMAKE_DL_LIBS})
add_dependencies(benchmark_start_up qorOpenGLFilterPlugin)
