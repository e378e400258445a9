// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

#include "effects/beam/tracked/tracked_light.h"

namespace kelmo {

/// Two loops of light through the last fifteen places of the hands. A hand that is not found takes
/// the oldest place of its loop with it. The loops stay through a seek.
class NLEOpenGLBeamHandTrackingEffect : public TrackedLight {
public:
    NLEOpenGLBeamHandTrackingEffect(std::shared_ptr<NLEFilterInfo> filterInfo,
                                    const char* lookGuid);

protected:
    void MakeLines(const AIImage& frame, const AIImage& input) override;

private:
    using Trail = std::vector<cv::Point>;
    void Follow(Trail& trail, const AIDATA::HumanPose& person, std::size_t index);

    std::array<Trail, 2> trails;
};

}  // namespace kelmo
