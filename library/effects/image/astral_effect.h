// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "effects/image/star_analysis.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// A star on each bright highlight of the clip. The highlights are looked for on every second frame
/// and after a change of the parameters; a frame without any fails (1) and draws nothing.
///
/// Parameters by position: "density" 30..100 (default 60: how near two stars may be),
/// "size" 10..100 (50), "alpha" 0..100 (100). Shader: "posArray" (vec4: x, y as fractions of the
/// frame with y down, brightness), "count"; slots: the clip, then the first picture of each
/// texture.
class NLEOpenGLAstralEffect : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLAstralEffect(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t CreateEffect(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

protected:
    struct Settings {
        float density = 60.0F;
        float size = 50.0F;
        int32_t alpha = 100;
    };
    virtual Settings ReadSettings();
    /// Binds the star pictures from `slot` on.
    virtual void BindStarPictures(int32_t slot);

private:
    /// False when this frame has nothing to draw.
    bool UpdateStars(const FrameRecord& first);

    StarAnalysis stars;
    Settings last;
    bool paramsChanged = false;
    bool firstAnalysis = true;
};

/// The same with parameters by name and a picture of the user's: "Profile" is the path of a star
/// picture, empty for that of the description.
class NLEOpenGLAstralFilter : public NLEOpenGLAstralEffect {
public:
    explicit NLEOpenGLAstralFilter(std::shared_ptr<NLEFilterInfo> filterInfo);

protected:
    Settings ReadSettings() override;
    void BindStarPictures(int32_t slot) override;

private:
    /// The picture of that file, ready to be bound; empty when it cannot be used. Read once for a
    /// path.
    const cv::Mat& ProfilePicture(const std::string& path);

    std::string profilePath;
    cv::Mat profile;
};

}  // namespace kelmo
