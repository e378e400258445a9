// SPDX-License-Identifier: GPL-3.0-or-later
// A file of body points, written by the host or by anybody: it is read whole or refused in a
// sentence, and what was read can be written and read again.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/people/body_points.h"
#include "host/people/people_track.h"
#include "host/session/host_error.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    using namespace kelmo::host;
    static const std::string kName = "fuzz.json";
    BodyTrack track;
    try {
        track = ReadBodyTrack({reinterpret_cast<const char*>(bytes), size}, kName);
    } catch (const HostError& error) {
        if (std::string(error.what()).rfind(kName, 0) != 0) std::abort();
        return 0;
    }
    if (track.rate.numerator < 1 || track.rate.denominator < 1) std::abort();
    double time = track.frames.empty() ? 0 : track.frames[0].time;
    for (const auto& frame : track.frames) {
        if (!(frame.time >= time)) std::abort();
        time = frame.time;
        for (const auto& body : frame.people) {
            if (body.points.size() != kBodyPoints.size()) std::abort();
        }
    }
    if (ReadBodyTrack(ToJson(track), kName).frames.size() != track.frames.size()) std::abort();
    return 0;
}
