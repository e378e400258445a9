# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(network_options network_options.cpp "${CMAKE_SOURCE_DIR}/ai/runtime/flex_map.cpp")
