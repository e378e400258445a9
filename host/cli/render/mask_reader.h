// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "host/cli/render/clip_reader.h"
#include "host/people/coverage.h"

namespace kelmo::host {

/// A mask given as a file: a picture that holds for every frame, numbered pictures, or a clip that
/// runs in step with the input. It lies over the frame as the input does: fitted, keeping its
/// shape; nobody is beside it. After its end its last picture stays.
///
/// Thread rule and errors: as ClipReader.
class MaskReader {
public:
    /// `rate`: of numbered pictures.
    MaskReader(const std::string& path, FrameRate rate);

    /// As ClipReader: frames of `place` from timeline frame `from` on.
    void Begin(const RenderPlan& plan, const ClipPlace& place, int64_t from);
    /// Coverage of the next frame in every channel; valid until the call after.
    Picture& Next();
    void ReportWarnings(Console& console) { reader.ReportWarnings(console); }

private:
    ClipReader reader;
    CoverageChannel channel;
    bool still;
    bool begun = false;
    Picture coverage;
};

}  // namespace kelmo::host
