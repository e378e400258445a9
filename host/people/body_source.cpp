// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/people/body_source.h"

#include <algorithm>
#include <utility>

#include "host/session/host_error.h"

namespace kelmo::host {

const std::vector<AIDATA::HumanPose>* RecordedBodies::Bodies(double seconds, const Picture&) {
    const double frame = 1.0 / track.rate.PerSecond();
    // Times are written in five digits.
    const auto after =
        std::upper_bound(track.frames.begin(), track.frames.end(), seconds + 0.01 * frame + 1e-5,
                         [](double time, const auto& entry) { return time < entry.time; });
    if (after == track.frames.begin()) return nullptr;
    const auto& shown = *std::prev(after);
    return seconds - shown.time < 0.99 * frame ? &shown.people : nullptr;
}

SeenBodies::SeenBodies(std::string pluginFolder, std::string resourceFolder,
                       std::function<void(const std::string&)> complainTo)
    : plugins(std::move(pluginFolder)),
      resources(std::move(resourceFolder)),
      complain(std::move(complainTo)) {}

void SeenBodies::Load() {
    tried = true;
    try {
        library = std::make_unique<AiLibrary>(plugins, resources);
        filter = library->Make(kAiBodyFilter);
    } catch (const HostError& error) {
        complain(std::string("no body points: ") + error.what());
    }
}

const std::vector<AIDATA::HumanPose>* SeenBodies::Bodies(double, const Picture& picture) {
    // An effect asks in the midst of its frame; what the library says then is no fault of its own.
    const HostServices::OwnWork work;
    if (!tried) Load();
    if (!filter) return nullptr;
    seen = filter->Analyse<AIDATA::HumanPoseDatas>(picture);
    return seen ? &seen->persons : nullptr;
}

}  // namespace kelmo::host
