// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ai/detect/anchor_detector.h"
#include "ai/pose/pose_estimator.h"

namespace kelmo {

/// Says whether anybody is in a frame. The mask network finds something person-like in almost half
/// of all pictures without people (fruit, cups, cats, buildings), so its mask counts only after
/// somebody was seen by other means: a face, or a body whose points hold together. A person whose
/// face is hidden and whose body is cut may be missed; what is switched on stays on (`PersonMask`).
class PersonGate {
public:
    explicit PersonGate(std::shared_ptr<ModelStore> store);
    bool SeesPerson(PicturePyramid& frame);

private:
    AnchorDetector faces;
    PoseEstimator bodies;
};

}  // namespace kelmo
