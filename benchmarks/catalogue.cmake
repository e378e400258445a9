# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_benchmark(benchmark_catalogue SOURCES catalogue.cpp LINK kelmo_catalogue)
