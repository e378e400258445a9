// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <opencv2/core/types.hpp>
#include <utility>

#include "contract/text_path.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// Gives the host's text object, if this frame has brought one, to `use` and puts a null pointer in
/// its place: the object is the host's, for one frame.
template <typename Use>
void TakeTextParam(NLEOpenGLFilter& filter, Use&& use) {
    constexpr const char* kTextPath = "TextPath";
    NLEParamValue value;
    if (!filter.FindParamValue(kTextPath, value)) return;
    auto* const text = static_cast<TextPath*>(value.AsPointer());
    if (!text) return;
    std::forward<Use>(use)(*text);
    filter.SetParam(kTextPath, kParamPointer, NLEParamValue::Pointer(nullptr));
}

/// Where the middle of a text's canvas stands, as parts of the frame, y down. A canvas of the
/// frame's size stands where the frame stands.
inline cv::Point2f TextAnchor(TextPath& text, const cv::Size& frame) {
    cv::Point2f anchor;
    cv::Size canvas;
    text.GetAnchor(&anchor.x, &anchor.y);
    text.GetSize(&canvas.width, &canvas.height);
    return canvas == frame ? cv::Point2f(0.5F, 0.5F) : anchor;
}

/// From points of the text to pixels of a frame, y down.
inline cv::Point2f TextOffset(TextPath& text, const cv::Size& frame) {
    const cv::Point2f anchor = TextAnchor(text, frame);
    cv::Size canvas;
    text.GetSize(&canvas.width, &canvas.height);
    return {static_cast<float>(frame.width) * anchor.x - static_cast<float>(canvas.width / 2),
            static_cast<float>(frame.height) * anchor.y - static_cast<float>(canvas.height / 2)};
}

}  // namespace kelmo
