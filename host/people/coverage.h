// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/media/picture/picture.h"

namespace kelmo::host {

/// What of a mask file is the coverage.
enum class CoverageChannel {
    kLuma,   ///< white covers: pictures without transparency
    kAlpha,  ///< what is opaque covers
};

/// Alpha when any pixel of the picture is see-through, luma otherwise: a cut-out person on nothing
/// and a white shape on black are both masks.
CoverageChannel ChooseCoverage(const Picture& picture);

/// Replaces each pixel (BGRA, premultiplied) by its coverage in all four channels.
void TurnIntoCoverage(Picture& picture, CoverageChannel channel);

}  // namespace kelmo::host
