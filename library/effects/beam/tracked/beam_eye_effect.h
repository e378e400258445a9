// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "effects/beam/tracked/tracked_light.h"

namespace kelmo {

/// Rings of light round the eyes of each face; with "ray" (int) 1 also two beams from the pupils to
/// where the head points, unless it is turned aside by more than 50 degrees.
class NLEOpenGLBeamEyeEffect : public TrackedLight {
public:
    NLEOpenGLBeamEyeEffect(std::shared_ptr<NLEFilterInfo> filterInfo, const char* lookGuid);

protected:
    void MakeLines(const AIImage& frame, const AIImage& input) override;

private:
    std::vector<cv::Point> ring;
};

}  // namespace kelmo
