# SPDX-License-Identifier: GPL-3.0-or-later
if(TARGET kelmo)
  kelmo_benchmark(benchmark_render SOURCES "${CMAKE_CURRENT_LIST_DIR}/render.cpp")
  add_dependencies(benchmark_render kelmo)
endif()
