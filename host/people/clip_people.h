// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "contract/ai_transfer.h"
#include "host/people/body_source.h"

namespace kelmo::host {

/// What the host tells effects about the people of the frame at hand. Body points are looked up
/// when an effect asks and once a frame, so that a clip without such effects costs nothing.
///
/// Thread rule: the thread that renders.
class ClipPeople final : public ObjectAiDataTransfer {
public:
    /// Null: nothing is known of bodies.
    explicit ClipPeople(std::unique_ptr<BodySource> bodySource);

    /// The frame that is drawn next. `clip` is the clip's picture; `coverage` its mask, in every
    /// channel, or null where the effects shall find people by themselves. Both are borrowed until
    /// the next call.
    void BeginFrame(double seconds, const Picture& clip, Picture* coverage);

    bool GetMaskImage(void** pixels, int32_t* width, int32_t* height, int32_t* stride) override;
    bool GetPoseBlock(void** bytes, int32_t* length) override;
    void GetPosePoint(int32_t index, PosePointReference* reference) override;

private:
    void WriteBlock(const std::vector<AIDATA::HumanPose>& bodies);

    std::unique_ptr<BodySource> source;
    double time = 0;
    const Picture* picture = nullptr;
    Picture* mask = nullptr;
    std::vector<uint8_t> block;  // empty: nothing known
    bool asked = false;
};

}  // namespace kelmo::host
