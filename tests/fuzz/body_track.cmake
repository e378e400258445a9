# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(body_track body_track.cpp LINK kelmo_host_people)
