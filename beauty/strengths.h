// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>

namespace kelmo::beauty {

/// The numbers by which callers name what to retouch.
enum Beauty : int32_t {
    kWhiten = 101,
    kRedden = 102,
    kSmooth = 103,
    kShrinkFace = 201,
    kEnlargeEyes = 202,
    kShrinkJaw = 203,
    kNarrowFace = 204,
    kRoundEyes = 205,
    kChinLength = 303,
    kHairline = 304,
    kCheeks = 305,
    kNarrowNose = 306,
    kNoseLength = 307,
    kNoseBridge = 308,
    kMouthSize = 309,
    kPhiltrum = 310,
    kEyeDistance = 311,
    kEyeAngle = 312,
    kInnerCorners = 313,
    kBrightEyes = 314,
    kDarkCircles = 315,
    kNasolabialFolds = 316,
    kWhiteTeeth = 317,
    kCheekbones = 318,
    kOuterCorners = 319,
    kFaceShape = 323,
    kContrast = 601,
    kSaturation = 602,
    kSharpen = 603,
};

/// How much of each, -1..1; 0, which changes nothing, for what was never set.
class Strengths {
public:
    void Set(int32_t type, float value) {
        values[type] = std::isnan(value) ? 0.0F : std::clamp(value, -1.0F, 1.0F);
    }
    float Of(int32_t type) const {
        const auto found = values.find(type);
        return found == values.end() ? 0.0F : found->second;
    }
    bool AllZero() const {
        return std::all_of(values.begin(), values.end(),
                           [](const auto& entry) { return entry.second == 0.0F; });
    }

private:
    std::map<int32_t, float> values;
};

}  // namespace kelmo::beauty
