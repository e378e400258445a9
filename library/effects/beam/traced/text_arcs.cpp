// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/traced/text_arcs.h"

#include <algorithm>

namespace kelmo {
namespace {

/// Places across the box, in its widths: both ends, the second control; and the share of the beam.
struct ArcPlace {
    float start, end, control2;
    float startProgress, endProgress;
    bool fromBelow;
};
constexpr ArcPlace kPlaces[kTextArcs] = {
    {0.0F, 2.0F / 3.0F, 2.0F / 3.0F, 0.0F, 1.0F, false},
    {1.0F / 3.0F, 2.0F / 3.0F, 2.0F / 3.0F, 0.0F, 0.5F, false},
    {2.0F / 3.0F, 1.0F, 1.0F, 0.5F, 1.0F, false},
    {0.25F, 0.5F, 0.4F, 0.0F, 1.0F, true},
    {0.5F, 0.75F, 0.75F, 0.0F, 1.0F, false},
};
/// How far the controls stand above and below the box, in its heights.
constexpr float kSwing = 2.0F;

}  // namespace

std::array<CurveLine, kTextArcs> TextArcs(const cv::Rect& box, const cv::Size& size,
                                          const std::array<float, kTextArcs>& phases) {
    const auto columns = static_cast<float>(size.width);
    const auto rows = static_cast<float>(size.height);
    const float left = (static_cast<float>(box.x) / columns - 0.5F) * 2.0F;
    const float right = (static_cast<float>(box.br().x) / columns - 0.5F) * 2.0F;
    const float top = (static_cast<float>(box.y) / rows - 0.5F) * -2.0F;
    const float bottom = (static_cast<float>(box.br().y) / rows - 0.5F) * -2.0F;
    const float middle = (top + bottom) * 0.5F;
    const float above = top + kSwing * (top - bottom);
    const float below = bottom - kSwing * (top - bottom);
    std::array<CurveLine, kTextArcs> arcs;
    for (std::size_t i = 0; i < kTextArcs; ++i) {
        const ArcPlace& place = kPlaces[i];
        const auto x = [&](float widths) {
            return std::clamp(left + (right - left) * (widths + phases[i] / 3.0F), left, right);
        };
        const float first = place.fromBelow ? below : above;
        const float second = place.fromBelow ? above : below;
        arcs[i] = {{x(place.start), middle},    {x(place.end), middle}, {x(place.start), first},
                   {x(place.control2), second}, place.startProgress,    place.endProgress};
    }
    return arcs;
}

}  // namespace kelmo
