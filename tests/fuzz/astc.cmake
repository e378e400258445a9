# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(astc astc.cpp LINK kelmo_framework)
