// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bindings/ai_filter_handle.h"
#include "effects/human_memory/past_pictures.h"
#include "framework/filter/nle_opengl_filter.h"

namespace kelmo {

/// The person as they were a while ago, several times. Slots: the clip, `kCopies` earlier pictures
/// with the oldest first, the present one. They are masks, or cutouts (premultiplied) under
/// the GUID of the cutouts. A picture that did not exist yet is blank.
///
/// Parameters, told by their place in the description: a frame on which the first one changes is
/// not remembered; the second is the speed, 1 to 3, for copies 30, 20 or 15 frames apart (another
/// number keeps the distance), and its change forgets everything. The cutouts stand 5 frames apart
/// and heed neither. "downsampleRatio" (1 when absent): so many times smaller than the clip.
///
/// A jump of three frames or more forgets everything. Without a picture nothing is drawn and the
/// result is 1; without an AI library there are no people.
class NLEOpenGLHumanDelay : public NLEOpenGLFilter {
public:
    static constexpr int32_t kCopies = 4;

    explicit NLEOpenGLHumanDelay(std::shared_ptr<NLEFilterInfo> filterInfo);

    int32_t InitParams() override;
    int32_t DoEffect(const FrameRecord& second, const FrameRecord& first, FrameRecord& out,
                     int32_t frameWidth, int32_t frameHeight, int32_t frameStride) override;

private:
    void ReadSettings();
    void Restart();
    bool MakePresent(const FrameRecord& second, const FrameRecord& first);
    void BindPast(int32_t& slot);

    /// The distance of the copies is fixed, and the parameters say nothing.
    bool fixedConfig;
    AIFilterHandle aiHandle;
    int32_t copyStep;
    PastPictures delayQueue;
    int32_t previousValue = 0;
    int32_t currentValue = 0;
    int32_t lastSpeed = 1;
    int32_t lastPosition = 0;
    cv::Mat reduced;
    cv::Mat mask;
    cv::Mat cut;
};

}  // namespace kelmo
