// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/render_plan.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <fmt/format.h>

#include "host/media/common/file_names.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

int64_t FramesOf(const Moment& moment, FrameRate rate, int64_t whole) {
    // A percentage is a part of the whole here, not a place in it.
    const double frames = moment.unit == Moment::Unit::kPercent
                              ? moment.amount / 100.0 * static_cast<double>(whole)
                              : moment.InFrames(rate, whole);
    return std::llround(std::min(frames, 1e12));
}

/// Frames of a clip from its beginning; 0 when unknown.
int64_t ClipFrames(const ClipFacts& clip, FrameRate rate) {
    if (clip.still) return rate.FramesIn(kStillSeconds);
    return clip.seconds > 0 ? std::max<int64_t>(1, rate.FramesIn(clip.seconds)) : 0;
}

void DecideSize(const TimingWishes& wishes, const ClipFacts& first, RenderPlan& plan) {
    plan.width = wishes.size ? wishes.size->width : first.width;
    plan.height = wishes.size ? wishes.size->height : first.height;
    if (plan.width < 1 || plan.height < 1 || plan.width > kLargestSide ||
        plan.height > kLargestSide) {
        throw UsageError(
            fmt::format("size {}x{} cannot be drawn: sides go from 1 to {}; use --size", plan.width,
                        plan.height, kLargestSide));
    }
    plan.rate = wishes.rate ? *wishes.rate : first.rate;
    if (!plan.rate.Valid()) plan.rate = FrameRate{25, 1};
}

/// The first clip from --start on; returns how many frames are left of it, 0 when unknown.
int64_t PlaceFirst(const TimingWishes& wishes, const ClipFacts& first, RenderPlan& plan) {
    const int64_t whole = ClipFrames(first, plan.rate);
    const int64_t start = wishes.start ? FramesOf(*wishes.start, plan.rate, whole) : 0;
    if (whole > 0 && start >= whole && !first.still) {
        throw UsageError(fmt::format("--start is after the end of {}, which lasts {:.2f} s",
                                     first.path, first.seconds));
    }
    ClipPlace place;
    place.start = first.still ? 0 : plan.rate.TimeOf(start);
    plan.clips.push_back(place);
    return first.still ? whole : std::max<int64_t>(0, whole - start);
}

int64_t RequireLength(int64_t frames, const ClipFacts& clip) {
    if (frames > 0) return frames;
    throw UsageError(
        fmt::format("{} does not say how long it is; give the length with --duration", clip.path));
}

void PlaceFilter(const TimingWishes& wishes, const ClipFacts& clip, int64_t left,
                 RenderPlan& plan) {
    plan.frames = left;
    if (wishes.duration) {
        const int64_t wanted = FramesOf(*wishes.duration, plan.rate, left);
        if (wanted < 1) throw UsageError("--duration is shorter than one frame");
        const bool longer = !clip.still && left > 0 && wanted > left;
        if (longer) {
            plan.warnings.push_back(
                fmt::format("{} ends after {} frames; --duration is cut", clip.path, left));
        }
        plan.frames = longer ? left : wanted;
    }
    RequireLength(plan.frames, clip);
    plan.clips[0].frames = plan.frames;
}

void PlaceTransition(const TimingWishes& wishes, const std::vector<ClipFacts>& clips,
                     int64_t leftOfFirst, RenderPlan& plan) {
    const int64_t first = RequireLength(leftOfFirst, clips[0]);
    const int64_t second = RequireLength(ClipFrames(clips[1], plan.rate), clips[1]);
    const int64_t shorter = std::min(first, second);
    int64_t length = wishes.duration ? FramesOf(*wishes.duration, plan.rate, shorter)
                                     : plan.rate.FramesIn(kTransitionSeconds);
    if (wishes.duration && length < 1) throw UsageError("--duration is shorter than one frame");
    length = std::max<int64_t>(1, length);
    if (length > shorter) {
        plan.warnings.push_back(
            fmt::format("the shorter clip has {} frames; the transition is cut to that", shorter));
        length = shorter;
    }
    plan.transitionFrames = length;
    plan.clips[0].frames = first;
    plan.clips.push_back({first - length, second, 0});
    plan.transitionFirst = first - length;
    plan.frames = first + second - length;
    if (!wishes.transitionOnly && !wishes.singlePicture) return;
    // The transition alone: the timeline begins with it.
    plan.clips[0].start += clips[0].still ? 0 : plan.rate.TimeOf(plan.transitionFirst);
    plan.clips[0].frames = length;
    plan.clips[1] = {0, length, 0};
    plan.transitionFirst = 0;
    plan.frames = length;
}

void ChooseFrames(const TimingWishes& wishes, RenderPlan& plan) {
    plan.end = plan.frames;
    if (wishes.maxFrames >= 0) plan.end = std::min(plan.end, wishes.maxFrames);
    if (!wishes.singlePicture) return;
    const double at = wishes.at ? wishes.at->InFrames(plan.rate, plan.frames)
                                : static_cast<double>(plan.frames) / 2;
    const int64_t frame = static_cast<int64_t>(std::min(std::floor(at + 1e-9), 1e12));
    if (frame >= plan.frames) {
        throw UsageError(fmt::format("--at is after the end, which comes after {:.2f} s",
                                     plan.rate.TimeOf(plan.frames)));
    }
    const int64_t lead = wishes.leadIn ? FramesOf(*wishes.leadIn, plan.rate, plan.frames)
                                       : plan.rate.FramesIn(kLeadInSeconds);
    plan.writeFrom = frame;
    plan.drawFrom = std::max<int64_t>(0, frame - lead);
    plan.end = frame + 1;
}

}  // namespace

RenderPlan PlanRender(const TimingWishes& wishes, const std::vector<ClipFacts>& clips) {
    const size_t needed = wishes.transition ? 2 : 1;
    if (clips.size() != needed) {
        throw UsageError(wishes.transition
                             ? "a transition needs two inputs: -i FIRST -i SECOND"
                             : fmt::format("this effect takes one input, not {}", clips.size()));
    }
    RenderPlan plan;
    DecideSize(wishes, clips[0], plan);
    const int64_t left = PlaceFirst(wishes, clips[0], plan);
    if (wishes.transition) {
        PlaceTransition(wishes, clips, left, plan);
    } else {
        PlaceFilter(wishes, clips[0], left, plan);
    }
    ChooseFrames(wishes, plan);
    return plan;
}

bool HasPictureEnding(const std::string& path) {
    const std::string ending = LowerCase(std::filesystem::path(path).extension().string());
    for (const char* known : {".png", ".jpg", ".jpeg", ".webp", ".bmp", ".tif", ".tiff"}) {
        if (ending == known) return true;
    }
    return false;
}

bool IsPicturePath(const std::string& path) {
    return HasPictureEnding(path) && !IsNumberPattern(path);
}

bool IsNumberedPictures(const std::string& path) {
    return HasPictureEnding(path) && IsNumberPattern(path);
}

}  // namespace kelmo::host
