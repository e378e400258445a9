// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <span>

#include "effects/beam/lines/curve_line.h"
#include "geometry/trace/bitmap_trace_path.h"

namespace kelmo {

/// The outlines of a traced picture of `size` as lines: cubic curves, and two straight lines for a
/// corner. Each path has progress 0 to 1 of its own.
void TracedLines(std::span<const std::unique_ptr<Path>> paths, const cv::Size& size,
                 const CurveLineSink& sink);

}  // namespace kelmo
