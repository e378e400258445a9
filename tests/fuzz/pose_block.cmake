# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(pose_block pose_block.cpp LINK kelmo_bindings)
