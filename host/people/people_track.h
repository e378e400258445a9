// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "contract/ai_filter.h"
#include "host/media/common/frame_rate.h"
#include "host/media/picture/fit.h"

namespace kelmo::host {

/// Bodies, or faces, of one frame. Positions are fractions of the frame, y down.
template <typename Person>
struct PeopleOfFrame {
    int64_t frame = 0;
    double time = 0;  ///< seconds from the clip's beginning
    std::vector<Person> people;
};

/// What was seen in a clip, frame by frame in the order of time.
template <typename Person>
struct PeopleTrack {
    std::string clip;  ///< file it was seen in, for the reader of the file
    FrameRate rate{25, 1};
    std::vector<PeopleOfFrame<Person>> frames;
};

using BodyTrack = PeopleTrack<AIDATA::HumanPose>;
using FaceTrack = PeopleTrack<AIDATA::HumanFaceInfo>;

/// A clip that is fitted into a frame of another shape takes a part of it (pixels): turns fractions
/// of the clip into fractions of such a frame. Missing points stay so.
void PlaceInFrame(BodyTrack& track, const Rectangle& part, int frameWidth, int frameHeight);

/// As JSON, a line for each frame: `{"schema": 1, "clip", "frameRate": [n, d], "frames": [{"frame",
/// "time", "bodies": [{"tag", "points": {"nose": [x, y], ...}}]}]}`. A point that was not found is
/// left out.
std::string ToJson(const BodyTrack& track);
/// The same with "faces": [{"box": [left, top, right, bottom], "pitch", "yaw", "roll",
/// "landmarks": [[x, y], ...], "scores": [...]}].
std::string ToJson(const FaceTrack& track);

/// Reads what `ToJson` wrote of bodies, corrected by hand or not. Frames are put in the order of
/// time; points that are not named, and null, are missing; frames that are not there stay unknown.
/// Throws HostError that names `file` and the place.
BodyTrack ReadBodyTrack(const std::string& text, const std::string& file);
/// The file itself. Throws HostError.
BodyTrack ReadBodyTrackFile(const std::string& file);

}  // namespace kelmo::host
