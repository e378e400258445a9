# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(catalogue_json catalogue_json.cpp LINK kelmo_catalogue)
