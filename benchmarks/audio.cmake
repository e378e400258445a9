# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_audio
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/audio.cpp"
  LINK kelmo_framework PkgConfig::fftw3f)
