// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <vector>

#include "effects/passes/pass_stage.h"
#include "framework/filter/nle_opengl_filter.h"
#include "framework/shared/kept_picture.h"

namespace kelmo {

/// A filter that draws in the passes that its description lists, and needs no code of its own.
///
/// Each pass is an engine object of its own size, so that a wide blur costs what its small pictures
/// cost. The passes are drawn in their order, each one once a frame; one that a parameter makes
/// needless is skipped. The filter's own shader comes last and draws the frame; material is bound
/// behind what it reads.
///
/// Pictures of the frame before are kept for those who ask. They begin anew at the start, after a
/// change of size and after a jump (see KeptPicture) or a step back; drawing one frame twice reads
/// the same past twice.
class NLEOpenGLPassFilter : public NLEOpenGLFilter {
public:
    explicit NLEOpenGLPassFilter(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitEffect() override;
    int32_t InitParams() override;
    int32_t Resize(int32_t newWidth, int32_t newHeight, int32_t newStride) override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    /// What a frame knows of one pass; the last one is the filter itself.
    struct Slot {
        bool kept = false;      ///< somebody reads the picture of the frame before
        bool drawn = false;     ///< in the frame that was drawn last
        bool hasPast = false;   ///< the kept picture is that of the frame before
        PassInput standsFor{};  ///< while it is skipped: what it would have read first
        bool skipped = false;
    };
    struct Clips {
        const FrameRecord& first;
        const FrameRecord& second;
    };

    void TurnPictures();
    int32_t DrawPass(std::size_t index, const Clips& clips, const FrameTime& time);
    /// Binds what a pass reads, from slot 0 on. False when a picture of the frame before is
    /// missing.
    bool BindInputs(NLEOpenGLEngineEffect& target, const std::vector<PassInput>& reads,
                    const Clips& clips, int32_t& slot);
    FrameRecord PictureOf(PassInput input, const Clips& clips) const;

    std::vector<std::unique_ptr<PassStage>> stages;
    std::vector<Slot> slots;
    KeptPicture memory;
    int32_t lastPosition = 0;
    float elapsed = 0.0F;
};

}  // namespace kelmo
