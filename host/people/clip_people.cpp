// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/people/clip_people.h"

#include <cstring>
#include <type_traits>
#include <utility>

#include "host/people/body_points.h"

namespace kelmo::host {

ClipPeople::ClipPeople(std::unique_ptr<BodySource> bodySource) : source(std::move(bodySource)) {}

void ClipPeople::BeginFrame(double seconds, const Picture& clip, Picture* coverage) {
    time = seconds;
    picture = &clip;
    mask = coverage;
    asked = false;
}

bool ClipPeople::GetMaskImage(void** pixels, int32_t* width, int32_t* height, int32_t* stride) {
    if (mask == nullptr) return false;
    *pixels = mask->pixels.data();
    *width = mask->width;
    *height = mask->height;
    *stride = mask->stride;
    return true;
}

bool ClipPeople::GetPoseBlock(void** bytes, int32_t* length) {
    if (source == nullptr || picture == nullptr) return false;
    if (!asked) {
        asked = true;
        block.clear();
        if (const auto* const bodies = source->Bodies(time, *picture)) WriteBlock(*bodies);
    }
    if (block.empty()) return false;
    *bytes = block.data();
    *length = static_cast<int32_t>(block.size());
    return true;
}

void ClipPeople::WriteBlock(const std::vector<AIDATA::HumanPose>& bodies) {
    const auto put = [this](auto word) {
        static_assert(sizeof word == 4 && std::is_trivially_copyable_v<decltype(word)>);
        const size_t at = block.size();
        block.resize(at + sizeof word);
        std::memcpy(block.data() + at, &word, sizeof word);
    };
    put(static_cast<int32_t>(bodies.size()));
    for (const AIDATA::HumanPose& body : bodies) {
        put(static_cast<int32_t>(body.points.size()));
        for (const auto& [x, y] : body.points) {
            put(x);
            put(y);
        }
        put(body.tag);
    }
}

void ClipPeople::GetPosePoint(int32_t index, PosePointReference* reference) {
    if (index < 0 || index >= static_cast<int32_t>(kBodyPoints.size())) return;
    const BodyPoint& point = kBodyPoints[static_cast<size_t>(index)];
    if (point.naturalX < 0) return;
    reference->x = point.naturalX;
    reference->y = point.naturalY;
}

}  // namespace kelmo::host
