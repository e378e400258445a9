// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/face/sense_time_beautify_effect.h"

#include <cmath>
#include <utility>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

const bool kRegistered =
    RegisterEffect("NLEOpenGLSenseTimeBeautifyEffect", MakeEffect<NLEOpenGLSenseTimeBeautifyEffect>,
                   {"B1D49A3C-A157-498E-A2C7-B7B5CFFC201F"});

struct BeautyParam {
    const char* name;
    /// The library's number for it.
    int32_t type;
    /// 50 is neutral.
    bool twoWay = false;
};

constexpr BeautyParam kBeautyParams[] = {
    {"redden_strength", 102},
    {"smooth_strength", 103},
    {"whiten_strength", 101},
    {"enlarge_eye_ratio", 202},
    {"shrink_face_ratio", 201},
    {"shrink_jaw_ratio", 203},
    {"contrast_strength", 601},
    {"saturation_strength", 602},
    {"narrow_face_strength", 204},
    {"round_eye_strength", 205},
    {"sharpen_strength", 603},
    {"narrow_nose_ratio", 306},
    {"length_nose_ratio", 307, true},
    {"length_chin_ratio", 303, true},
    {"size_mouth_ratio", 309, true},
    {"length_philtrum_ratio", 310, true},
    {"height_hairline_ratio", 304, true},
    {"shin_face_shape_ratio", 323},
    {"eye_distance_ratio", 311, true},
    {"eye_angle_ratio", 312, true},
    {"open_canthus_ratio", 313},
    {"open_external_canthus_ratio", 319},
    {"profile_rhinoplasty_ratio", 308},
    {"bright_eye_ratio", 314},
    {"remove_dark_circles_ratio", 315},
    {"remove_nasolabial_folds_ratio", 316},
    {"white_teeth_ratio", 317},
    {"apple_musle_ratio", 305},
    {"shrink_cheekbone_strength", 318},
};

constexpr float kSmallestChange = 0.01F;

float StrengthOf(const BeautyParam& param, int32_t percent) {
    const auto value = static_cast<float>(percent);
    return (param.twoWay ? 2.0F * value - 100.0F : value) / 100.0F;
}

}  // namespace

NLEOpenGLSenseTimeBeautifyEffect::NLEOpenGLSenseTimeBeautifyEffect(
    std::shared_ptr<NLEFilterInfo> filterInfo)
    : NLEOpenGLSenseTimeEffect(std::move(filterInfo), kFaceSdkBeauty, kFaceSdkBeauty) {}

void NLEOpenGLSenseTimeBeautifyEffect::PrepareHandle() {
    senseTime->SetBeautyParam(effectHandle, 0, 1.0F);
}

void NLEOpenGLSenseTimeBeautifyEffect::ApplyParams() {
    for (const BeautyParam& param : kBeautyParams) {
        int32_t percent = 0;
        if (!FindInt(param.name, percent)) continue;
        const float wanted = StrengthOf(param, percent);
        float current = 0.0F;
        senseTime->GetBeautyStrength(effectHandle, param.type, current);
        if (std::abs(wanted - current) > kSmallestChange) {
            senseTime->SetBeautyStrength(effectHandle, param.type, wanted);
        }
    }
}

}  // namespace kelmo
