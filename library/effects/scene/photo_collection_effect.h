// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "effects/scene/photo_cards.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/matrix4.h"

namespace kelmo {

/// The picture dissolves into a cloud of small photo cards in depth.
///
/// Parameter "uCount" (int): cards on the longer side of the frame. The cloud is built from the
/// first frame that the grid sees and stays until the grid changes. Uniforms: "uMVP" (a camera 2.42
/// in front of the cloud's middle), "photoCount" (float) and "photoSize" (array of vec2, 10): the
/// number and sizes in pixels of the photos, which are the material, from the slot behind the clip
/// on.
class NLEOpenGLPhotoCollectionEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLPhotoCollectionEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    static constexpr std::size_t kMostPhotos = 10;

    void BindPhotos(int32_t slot);

    PhotoCards cards;
    cv::Size grid{-1, -1};  ///< of the cards that stand; none yet
    std::vector<float> photoSizes;
    Matrix4 mvp;
};

}  // namespace kelmo
