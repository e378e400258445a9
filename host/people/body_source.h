// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/people/ai_library.h"
#include "host/people/people_track.h"

namespace kelmo::host {

/// Where the body points of a clip come from.
class BodySource {
public:
    virtual ~BodySource() = default;
    /// The bodies of the frame that is shown at this time, or null when nothing is known of it;
    /// valid until the next call. `picture` is that frame.
    virtual const std::vector<AIDATA::HumanPose>* Bodies(double seconds,
                                                         const Picture& picture) = 0;
};

/// Out of a file of `kelmo analyse`.
class RecordedBodies final : public BodySource {
public:
    explicit RecordedBodies(BodyTrack recorded) : track(std::move(recorded)) {}
    const std::vector<AIDATA::HumanPose>* Bodies(double seconds, const Picture& picture) override;

private:
    BodyTrack track;
};

/// Asked of the AI library, which is loaded when the first effect wants to know.
class SeenBodies final : public BodySource {
public:
    /// `complain` is told once why nothing is found.
    SeenBodies(std::string pluginFolder, std::string resourceFolder,
               std::function<void(const std::string&)> complain);
    const std::vector<AIDATA::HumanPose>* Bodies(double seconds, const Picture& picture) override;

private:
    void Load();

    std::string plugins;
    std::string resources;
    std::function<void(const std::string&)> complain;
    bool tried = false;
    std::unique_ptr<AiLibrary> library;
    std::unique_ptr<AiLibrary::Filter> filter;
    std::shared_ptr<AIDATA::HumanPoseDatas> seen;
};

}  // namespace kelmo::host
