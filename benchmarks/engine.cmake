# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_engine
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/engine.cpp"
  LINK kelmo_engine_core PkgConfig::epoxy)
