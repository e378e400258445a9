// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "effects/image/curve_point.h"
#include "effects/image/rgb_curve_params.h"
#include "framework/filter/nle_opengl_combine_filter.h"

namespace kelmo {

/// Draws tone curves into four strips of 256 x 1 pixels, which stay in its engine targets: index 0
/// red, 1 green, 2 blue, 3 master. A strip is drawn again only when the knots of its channel
/// change.
///
/// Parameters: the twelve texts of rgb_curve_params.h. A frame fails (1) when one of the four
/// curves has fewer than 2 or more than 25 knots. Nothing is ever drawn into `out`.
class NLEOpenglRGBCurveLookTable : public NLEOpenGLCombineFilter {
public:
    explicit NLEOpenglRGBCurveLookTable(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    /// Strips have one size, whatever that of the frame.
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t CreateEffect(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// A list of points and the text that it was read from, so that a text is parsed once.
    struct ParsedCurve {
        std::string text;
        CurvePoints points;
    };
    struct Channel {
        ParsedCurve knots;
        ParsedCurve firstControls;
        ParsedCurve secondControls;
        /// Knots of the strip as it was last drawn.
        CurvePoints cachedKnots;
    };

    void ReadCurve(const char* name, ParsedCurve& curve);
    int32_t UpdateChannel(Channel& channel, int32_t index);
    void FillControlPoints(const Channel& channel);

    /// 3 for each of at most 25 knots.
    static constexpr std::size_t kControlPoints = 3 * kMaxCurveKnots;

    std::array<Channel, kCurveChannels> channels;
    std::array<float, 2 * kControlPoints> controlPoints{};
    CurvePoints computedFirst;
    CurvePoints computedSecond;
};

}  // namespace kelmo
