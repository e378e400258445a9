// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/picture/one_euro.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kelmo {

namespace {
constexpr float kRate = 25.0f;

/// Share of the new value in a low pass of that cutoff.
float Share(float cutoff) {
    return 1.0f / (1.0f + kRate / (2 * std::numbers::pi_v<float> * cutoff));
}
}  // namespace

void OneEuro::Apply(std::span<float> values, float unit) {
    if (previous.size() != values.size()) {
        previous.assign(values.begin(), values.end());
        speed.assign(values.size(), 0.0f);
        return;
    }
    const float derivativeShare = Share(settings.derivativeCutoff);
    const float perUnit = kRate / std::max(unit, 1e-6f);
    for (size_t i = 0; i < values.size(); ++i) {
        const float change = (values[i] - previous[i]) * perUnit;
        speed[i] += (change - speed[i]) * derivativeShare;
        const float share = Share(settings.minCutoff + settings.beta * std::abs(speed[i]));
        previous[i] += (values[i] - previous[i]) * share;
        values[i] = previous[i];
    }
}

}  // namespace kelmo
