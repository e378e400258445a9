# SPDX-License-Identifier: GPL-3.0-or-later
# The peer is the tessellator of the GL utility library (package libglu1-mesa-dev); without it the
# comparison is left out.
if(TARGET kelmo_test_shapes)
  find_library(KELMO_GLU GLU)
  find_path(KELMO_GLU_INCLUDE GL/glu.h)
  if(KELMO_GLU AND KELMO_GLU_INCLUDE)
    kelmo_benchmark(benchmark_triangulation
      SOURCES "${CMAKE_CURRENT_LIST_DIR}/triangulation.cpp"
      LINK kelmo_test_shapes "${KELMO_GLU}")
  endif()
endif()
