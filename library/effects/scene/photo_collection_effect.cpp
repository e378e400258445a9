// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/photo_collection_effect.h"

#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLPhotoCollectionEffect", MakeEffect<NLEOpenGLPhotoCollectionEffect>,
                   {"PhotoCollection", "7AD7063E-08B0-D64B-E337-B3FE29BA5CCF"});

constexpr float kCameraDistance = 2.42F;

}  // namespace

NLEOpenGLPhotoCollectionEffect::NLEOpenGLPhotoCollectionEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)),
      photoSizes(2 * kMostPhotos, 0.0F),
      mvp(Multiply(Projection(), Translation(0.0F, 0.0F, -kCameraDistance))) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLPhotoCollectionEffect::InitParams() {
    engine->AddUniformMat4("uMVP", mvp.data());
    engine->AddUniformFloat("photoCount", 0.0F);
    engine->AddUniformArrayVec2("photoSize", photoSizes.data(), kMostPhotos);
    return kFilterOk;
}

void NLEOpenGLPhotoCollectionEffect::BindPhotos(int32_t slot) {
    photoSizes.assign(2 * kMostPhotos, 0.0F);
    const int32_t bound = BindFirstMaterial(*engine, slot, textureFrames.get(), kMostPhotos);
    for (std::size_t i = 0; i < static_cast<std::size_t>(bound); ++i) {
        const cv::Mat& photo = textureFrames->Frame(i, 0);
        photoSizes[2 * i] = static_cast<float>(photo.cols);
        photoSizes[2 * i + 1] = static_cast<float>(photo.rows);
    }
    engine->SetUniformFloat("photoCount", static_cast<float>(bound));
    engine->SetUniformArrayVec2("photoSize", photoSizes.data(), kMostPhotos);
}

int32_t NLEOpenGLPhotoCollectionEffect::DoEffect(const FrameRecord&, const FrameRecord& first,
                                                 FrameRecord& out, int32_t frameWidth,
                                                 int32_t frameHeight, int32_t) {
    if (!engine) return kFilterFailed;
    UploadParams();
    const cv::Size wanted = PhotoCards::GridFor(IntOr("uCount", 0), frameWidth, frameHeight);
    if (wanted != grid) {
        cv::Mat picture;
        GetMat(picture, first);
        if (picture.type() != CV_8UC4) picture.release();
        cards.Build(wanted, picture);
        grid = wanted;
    }
    engine->AddVertexAttribute("position", 4, cards.Positions(), true, false);
    engine->AddVertexAttribute("direction", 2, cards.Directions(), true, false);
    engine->AddVertexAttribute("texcoord", 2, cards.Corners(), true, false);
    engine->SetVertexCount(cards.VertexCount());
    UploadTimeAndLength(*engine, Time());
    engine->SetUniformMat4("uMVP", mvp.data());
    int32_t slot = 0;
    SetInputFrame(slot, first);
    BindPhotos(slot);
    engine->SetBlendMode(kBlendOver);
    engine->SetDrawType(kDrawTriangles);
    engine->SetDepthTest(true);
    engine->SetDepthWrite(true);
    return RenderTo(out);
}

}  // namespace kelmo
