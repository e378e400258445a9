# SPDX-License-Identifier: GPL-3.0-or-later
kelmo_fuzz(head_model head_model.cpp "${CMAKE_SOURCE_DIR}/ai/face/head_angles.cpp"
  LINK opencv::core opencv::imgproc)
