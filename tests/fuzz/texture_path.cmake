# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(texture_path texture_path.cpp LINK kelmo_catalogue)
