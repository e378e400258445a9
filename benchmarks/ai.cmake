# SPDX-License-Identifier: GPL-3.0-or-later
if(TARGET kelmo_ai)
  kelmo_benchmark(benchmark_ai SOURCES ai.cpp
    LINK kelmo_ai opencv::core opencv::imgproc opencv::imgcodecs ${CMAKE_DL_LIBS})
  add_dependencies(benchmark_ai qorAiFilterPlugin)
endif()
