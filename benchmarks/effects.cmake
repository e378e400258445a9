# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_effects SOURCES effects.cpp
  "${CMAKE_SOURCE_DIR}/tests/effects/support/material_effect.cpp"
  LINK kelmo_effects kelmo_framework kelmo_test_support)
