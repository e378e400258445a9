# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_mask_blend
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/mask_blend.cpp"
  LINK kelmo_effects kelmo_framework opencv::core opencv::imgproc)
