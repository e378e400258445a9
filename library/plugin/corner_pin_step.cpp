// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/corner_pin_step.h"

#include <algorithm>
#include <cmath>

namespace kelmo {

namespace {

struct Box {
    float minX = 0.0F;
    float minY = 0.0F;
    float maxX = 0.0F;
    float maxY = 0.0F;

    float Width() const { return maxX - minX; }
    float Height() const { return maxY - minY; }
    float CentreX() const { return Width() * 0.5F + minX; }
    float CentreY() const { return Height() * 0.5F + minY; }
    /// Whether the picture stays within the frame and in its middle.
    bool NeedsNoRoom() const {
        return Width() <= 1.0F && Height() <= 1.0F && CentreX() == 0.5F && CentreY() == 0.5F;
    }
};

Box CornerBox(NLEOpenGLFilter& filter) {
    constexpr const char* kNames[4][2] = {{"left_upx", "left_upy"},
                                          {"right_upx", "right_upy"},
                                          {"left_downx", "left_downy"},
                                          {"right_downx", "right_downy"}};
    float xs[4];
    float ys[4];
    // A name that is missing takes the value read before it.
    float value = 0.0F;
    for (int corner = 0; corner < 4; ++corner) {
        filter.FindFloat(kNames[corner][0], value);
        xs[corner] = value;
        filter.FindFloat(kNames[corner][1], value);
        ys[corner] = value;
    }
    const auto [minX, maxX] = std::minmax_element(xs, xs + 4);
    const auto [minY, maxY] = std::minmax_element(ys, ys + 4);
    return {*minX, *minY, *maxX, *maxY};
}

/// How far the farther edge lies from the frame's centre, measured across it: 1 is the frame.
float Extent(float min, float max, float centre) {
    return centre > 0.5F ? 2.0F * max - 1.0F : 2.0F * std::abs(0.5F - min);
}

int32_t Cut(float pixels) {
    constexpr float kLimit = 1.0e9F;
    return std::isnan(pixels) ? 0 : static_cast<int32_t>(std::clamp(pixels, -kLimit, kLimit));
}

void AskForRoom(QorRenderContext& context, const Box& box) {
    QorFrame* const frame = context.GetInputFrame(0);
    if (!frame) return;
    const float w =
        static_cast<float>(frame->GetWidth()) * Extent(box.minX, box.maxX, box.CentreX());
    const float h =
        static_cast<float>(frame->GetHeight()) * Extent(box.minY, box.maxY, box.CentreY());
    context.SetExpansion({Cut(w), Cut(h)}, {Cut(w * 0.5F), Cut(h * 0.5F)});
}

void SetFloat(NLEOpenGLFilter& filter, const char* name, float value) {
    filter.SetParam(name, kParamFloat, NLEParamValue::Float(value));
}

}  // namespace

void RunCornerPinStep(QorRenderContext& context, NLEOpenGLFilter& filter) {
    const Box box = CornerBox(filter);
    if (!box.NeedsNoRoom()) AskForRoom(context, box);
    SetFloat(filter, "cornerpin_roix0", box.minX);
    SetFloat(filter, "cornerpin_roiy0", box.minY);
    SetFloat(filter, "cornerpin_roiw", box.Width());
    SetFloat(filter, "cornerpin_roih", box.Height());
}

}  // namespace kelmo
