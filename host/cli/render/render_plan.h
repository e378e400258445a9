// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/media/common/frame_rate.h"
#include "host/session/text_values.h"

namespace kelmo::host {

inline constexpr double kStillSeconds = 3.0;       ///< length of a picture in a video
inline constexpr double kTransitionSeconds = 1.0;  ///< length of a transition
inline constexpr double kLeadInSeconds = 1.0;      ///< what is drawn before a single picture

/// What of the command line decides sizes and times.
struct TimingWishes {
    std::optional<PixelSize> size;
    std::optional<FrameRate> rate;
    std::optional<Moment> start;     ///< in the first clip
    std::optional<Moment> duration;  ///< of the filter, or of the transition alone
    std::optional<Moment> at;        ///< moment of a single picture
    std::optional<Moment> leadIn;
    int64_t maxFrames = -1;  ///< negative: no limit
    bool transition = false;
    bool transitionOnly = false;
    bool singlePicture = false;
};

/// What is known of an input file.
struct ClipFacts {
    std::string path;
    int width = 0;
    int height = 0;
    FrameRate rate{25, 1};
    double seconds = 0;  ///< 0: unknown
    bool still = false;
};

/// A clip on the timeline of the result.
struct ClipPlace {
    int64_t firstFrame = 0;
    int64_t frames = 0;
    double start = 0;  ///< seconds in the file at firstFrame

    bool Covers(int64_t frame) const { return frame >= firstFrame && frame < firstFrame + frames; }
};

/// Sizes and times of a rendering. The timeline counts frames from 0; a transition overlaps the end
/// of the first clip with the beginning of the second.
struct RenderPlan {
    int width = 0;
    int height = 0;
    FrameRate rate;
    int64_t frames = 0;  ///< of the timeline
    std::vector<ClipPlace> clips;
    int64_t transitionFirst = 0;
    int64_t transitionFrames = 0;
    /// Frames from `drawFrom` on are drawn, those from `writeFrom` up to `end` are written too.
    int64_t drawFrom = 0;
    int64_t writeFrom = 0;
    int64_t end = 0;
    std::vector<std::string> warnings;
};

/// Decides what was not said:
/// - size and rate are those of the first clip;
/// - a filter lasts as long as the rest of its clip, a picture 3 s, a transition 1 s;
/// - a single picture shows the middle of the effect, after a second of lead-in: effects with a
///   memory look as they do in the video then.
/// Throws UsageError for wishes that cannot be met.
RenderPlan PlanRender(const TimingWishes& wishes, const std::vector<ClipFacts>& clips);

/// Whether a path names a picture file or numbered ones; whether one; whether numbered ones.
bool HasPictureEnding(const std::string& path);
bool IsPicturePath(const std::string& path);
bool IsNumberedPictures(const std::string& path);

}  // namespace kelmo::host
