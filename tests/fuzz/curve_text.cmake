# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(curve_text curve_text.cpp LINK nlohmann_json::nlohmann_json)
target_sources(curve_text PRIVATE "${CMAKE_SOURCE_DIR}/library/effects/image/curve_point.cpp")
