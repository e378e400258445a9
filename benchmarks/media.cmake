# SPDX-License-Identifier: GPL-3.0-or-later
if(TARGET kelmo_host_media)
  kelmo_benchmark(benchmark_media SOURCES "${CMAKE_CURRENT_LIST_DIR}/media.cpp" LINK kelmo_host_media)
endif()
