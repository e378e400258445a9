# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(parameter_track parameter_track.cpp LINK kelmo_host_session)
