// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/mask/person_gate.h"

namespace kelmo {

PersonGate::PersonGate(std::shared_ptr<ModelStore> store)
    : faces(AnchorDetector::Face(store)), bodies(store) {}

bool PersonGate::SeesPerson(PicturePyramid& frame) {
    if (!faces.Detect(frame).empty()) return true;
    BodyShape shape;
    for (const RotatedSquare& region : bodies.Detect(frame))
        if (bodies.Run(frame, region, shape)) return true;
    return false;
}

}  // namespace kelmo
