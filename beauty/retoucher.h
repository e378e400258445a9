// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "beauty/face_masks.h"
#include "beauty/face_warp.h"
#include "beauty/strengths.h"
#include "contract/face_sdk.h"

namespace kelmo::beauty {

/// Draws a picture with its faces retouched, in the context that is current: the program and the
/// textures are made by the first drawing, and end with `Release`.
class Retoucher {
public:
    Strengths strengths;

    /// False when the context cannot draw it.
    bool Draw(const FaceSdkResult& faces, const FaceSdkTexture& input,
              const FaceSdkTexture& output);
    void Release();

private:
    bool Prepare();
    void SendStrengths(bool faces, bool moves) const;

    FaceWarp warp;
    FaceMasks masks;
    uint32_t program = 0;
    uint32_t vertexArray = 0;
    uint32_t framebuffer = 0;
    /// Field, parts, folds.
    uint32_t textures[3] = {};
};

}  // namespace kelmo::beauty
