// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contract/qor_host.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Tells the host how much room a pinned picture needs around the frame, and tells the corner pin
/// effect the box of its four corners: "cornerpin_roix0", "cornerpin_roiy0", "cornerpin_roiw",
/// "cornerpin_roih". Corners are fractions of the frame, 0 and 1 being its edges.
void RunCornerPinStep(QorRenderContext& context, NLEOpenGLFilter& filter);

}  // namespace kelmo
