# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(filter_json filter_json.cpp LINK kelmo_catalogue)
