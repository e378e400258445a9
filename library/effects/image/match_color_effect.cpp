// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/image/match_color_effect.h"

#include <array>
#include <cmath>

#include "framework/filter/effect_registry.h"
#include "framework/textures/material_binding.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLMatchColorEffect", MakeEffect<NLEOpenGLMatchColorEffect>,
                   {"718F5DC3-D828-48BF-B7CF-135474EF64A4"});

constexpr std::size_t kEnabled = 0;
constexpr std::size_t kFirstStatistic = 1;
constexpr std::size_t kStrength = 7;
constexpr std::array<const char*, 6> kReferenceNames = {"mean_b", "mean_g", "mean_r",
                                                        "stddb",  "stddg",  "stddr"};

}  // namespace

NLEOpenGLMatchColorEffect::NLEOpenGLMatchColorEffect(std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLFilter(std::move(filterInfo)) {
    needCpuFrame = 1;
}

int32_t NLEOpenGLMatchColorEffect::DoEffect(const FrameRecord& second, const FrameRecord& first,
                                            FrameRecord& out, int32_t, int32_t, int32_t) {
    if (!engine || params.size() <= kStrength) return kFilterFailed;
    float sum = 0.0F;
    for (std::size_t i = 0; i < kReferenceNames.size(); ++i) {
        sum += std::abs(CurrentNumber(*params[kFirstStatistic + i]));
    }
    if (CurrentInt(*params[kEnabled]) == 0 || (sum > -1e-9F && sum < 1e-9F)) return kFilterFailed;

    cv::Mat picture;
    GetMat(picture, first);
    const ColorStatistics measured = MeasureColor(picture, scratch);

    int32_t slot = 0;
    SetInputFrame(slot, first);
    SetInputFrame(slot, second);
    BindAllMaterialAsImages(*engine, slot, textureFrames.get());
    UploadTime(*engine, Time());
    UploadReference();
    UploadMeasured(measured);
    return RenderTo(out);
}

void NLEOpenGLMatchColorEffect::UploadReference() {
    engine->SetUniformInt("Enabled", CurrentInt(*params[kEnabled]));
    for (std::size_t i = 0; i < kReferenceNames.size(); ++i) {
        engine->SetUniformFloat(kReferenceNames[i], CurrentNumber(*params[kFirstStatistic + i]));
    }
    engine->SetUniformInt("strength", CurrentInt(*params[kStrength]));
}

void NLEOpenGLMatchColorEffect::UploadMeasured(const ColorStatistics& measured) {
    static constexpr std::array<const char*, 3> kMeans = {"mean_b1", "mean_g1", "mean_r1"};
    static constexpr std::array<const char*, 3> kDeviations = {"stddb1", "stddg1", "stddr1"};
    for (std::size_t i = 0; i < kMeans.size(); ++i) {
        engine->SetUniformFloat(kMeans[i], static_cast<float>(measured.mean[i]));
    }
    for (std::size_t i = 0; i < kDeviations.size(); ++i) {
        engine->SetUniformFloat(kDeviations[i], static_cast<float>(measured.deviation[i]));
    }
}

}  // namespace kelmo
