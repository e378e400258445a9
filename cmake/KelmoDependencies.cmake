# SPDX-License-Identifier: GPL-3.0-or-later
# Everything that we link comes from the distribution's packages; scripts/setup installs it.

find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)

# OpenCV by module: the package that carries OpenCVConfig.cmake would pull in every module there is.
find_path(KELMO_OPENCV_INCLUDE opencv2/core.hpp PATH_SUFFIXES opencv4 REQUIRED)
foreach(module IN ITEMS core imgproc imgcodecs videoio features2d)
  find_library(KELMO_OPENCV_${module} opencv_${module} REQUIRED)
  add_library(opencv::${module} UNKNOWN IMPORTED)
  set_target_properties(opencv::${module} PROPERTIES
    IMPORTED_LOCATION "${KELMO_OPENCV_${module}}"
    INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${KELMO_OPENCV_INCLUDE}"
    INTERFACE_INCLUDE_DIRECTORIES "${KELMO_OPENCV_INCLUDE}")
endforeach()

pkg_check_modules(fftw3f REQUIRED IMPORTED_TARGET fftw3f)
pkg_check_modules(epoxy REQUIRED IMPORTED_TARGET epoxy)
pkg_check_modules(egl REQUIRED IMPORTED_TARGET egl)
pkg_check_modules(tinyxml2 REQUIRED IMPORTED_TARGET tinyxml2)
pkg_check_modules(libav REQUIRED IMPORTED_TARGET libavfilter libavformat libavcodec libavutil libswscale libswresample)
pkg_check_modules(text REQUIRED IMPORTED_TARGET harfbuzz freetype2 fribidi)
find_package(nlohmann_json REQUIRED)
find_package(fmt REQUIRED)
find_package(CLI11 REQUIRED)

if(KELMO_TESTS)
  find_package(GTest REQUIRED)
endif()
if(KELMO_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
