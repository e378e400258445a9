# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(filter_xml filter_xml.cpp LINK kelmo_catalogue)
