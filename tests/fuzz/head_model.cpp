// SPDX-License-Identifier: GPL-3.0-or-later
// The geometry file beside the face network: whatever the bytes say, a model that is read turns any
// face without leaving its points.
#include <cmath>
#include <cstdlib>

#include "ai/face/head_angles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
    const auto model = kelmo::HeadModel::Parse({data, size});
    if (!model) return 0;
    kelmo::FaceShape face;
    for (std::size_t i = 0; i < face.points.size(); ++i) {
        const auto angle = static_cast<float>(i);
        face.points[i] = {std::cos(angle), std::sin(angle), angle / 100.0F};
    }
    model->Fit(face);
    return 0;
}
