# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(text_path text_path.cpp LINK kelmo_geometry)
