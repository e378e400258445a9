# SPDX-License-Identifier: GPL-3.0-or-later
if(TARGET kelmo_test_shapes)
  kelmo_benchmark(benchmark_mesh
    SOURCES "${CMAKE_CURRENT_LIST_DIR}/mesh.cpp"
    LINK kelmo_test_shapes)
endif()
