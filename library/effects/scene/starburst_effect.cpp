// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/scene/starburst_effect.h"

#include <algorithm>
#include <opencv2/features2d.hpp>
#include <opencv2/imgproc.hpp>
#include <utility>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLStarburstEffect", MakeEffect<NLEOpenGLStarburstEffect>, {"Starburst"});

/// A level difference: 100 for no corners but the hardest, 10 for faint ones.
int CornerThreshold(int32_t amount) {
    return static_cast<int>((1.0 - std::clamp(amount, 0, 100) * 0.01 * 0.9) * 100.0);
}

}  // namespace

void StarPoints::Detect(const cv::Mat& gray, int32_t amount) {
    places = {};
    count = 0;
    const cv::Size tile(gray.cols / kTiles, gray.rows / kTiles);
    if (tile.empty()) return;
    const int threshold = CornerThreshold(amount);
    for (int row = 0; row < kTiles; ++row) {
        for (int column = 0; column < kTiles; ++column) {
            const cv::Point corner(column * tile.width, row * tile.height);
            cv::FAST(gray(cv::Rect(corner, tile)), found, threshold, true,
                     cv::FastFeatureDetector::TYPE_9_16);
            const auto best = std::max_element(
                found.begin(), found.end(),
                [](const auto& a, const auto& b) { return a.response < b.response; });
            if (best == found.end()) continue;
            const cv::Point2f place = best->pt + cv::Point2f(corner);
            places[count++] = {place.x / static_cast<float>(gray.cols),
                               1.0F - place.y / static_cast<float>(gray.rows)};
        }
    }
}

NLEOpenGLStarburstEffect::NLEOpenGLStarburstEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLStarburstEffect::InitParams() {
    engine->AddUniformArrayVec2("posArray", points.Places(), StarPoints::kMost);
    engine->AddUniformInt("starburstCount", StarPoints::kMost);
    return kFilterOk;
}

int32_t NLEOpenGLStarburstEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                           FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine) return kFilterFailed;
    FindInt("amount", amount);
    cv::Mat picture;
    GetMat(picture, first);
    if (picture.empty() || picture.type() != CV_8UC4) return kFilterFailed;
    cv::cvtColor(picture, gray, cv::COLOR_BGRA2GRAY);
    points.Detect(gray, amount);

    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    const FrameTime time = Time();
    BindMaterialAtTime(*engine, slot, textureFrames.get(), texDescs.get(), time.position);
    engine->SetUniformInt("starburstCount", amount == 0 ? 0 : points.Count());
    engine->SetUniformArrayVec2("posArray", points.Places(), StarPoints::kMost);
    UploadTimeAndLength(*engine, time);
    UploadParams();
    return RenderTo(out);
}

}  // namespace kelmo
