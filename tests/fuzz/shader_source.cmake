# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(shader_source shader_source.cpp LINK kelmo_engine_core)
