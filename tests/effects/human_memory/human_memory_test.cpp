// SPDX-License-Identifier: GPL-3.0-or-later
// What effects with a memory of people show: which moments, in which order, and when they forget.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "bindings/ai_effect_lib.h"
#include "effects/human_memory/human_delay.h"
#include "effects/human_memory/past_pictures.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using test::EffectRecord;
using ::testing::ElementsAre;

constexpr const char* kMaskDelay = "8637F30D-5F33-421B-83FC-594F95BAEC3E";
constexpr const char* kCutoutDelay = "899890E7-05B3-46ED-B42D-4C13F37A2DDE";
constexpr const char* kAfterimage = "90CD42E2-C6E4-4486-4D36-69E3D8395E0C";
constexpr const char* kMirrored = "AEDC85E7-C1E3-4002-ADA1-6BFF483FEAF3";
constexpr const char* kFlash = "34964BC6-B535-4D5B-B517-32EB4B09B404";
constexpr const char* kBurning = "D7EA3285-2A8F-79E0-26A4-F41DBF2AE83E";
constexpr const char* kQueue = "61F4CBAE-FFCB-69F7-7AED-F9A16EEA6422";

/// Frames of 64 x 36 that are a person as a whole; the mask of frame n has the level 1 + n % 200.
class HumanMemory : public ::testing::Test {
protected:
    HumanMemory() {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.createFilter = [this](const char*) { return static_cast<void*>(this); };
        table.transform = [this](void*, const AIImage& out, const AIImage&, const AIImage&) {
            cv::Mat(out.height, out.width, CV_8UC4, out.pixels,
                    static_cast<std::size_t>(out.stride))
                .setTo(cv::Scalar::all(LevelOf(frame)));
            return 0;
        };
        SetAIEffectLibForTesting(table);
    }
    ~HumanMemory() override {
        effect.reset();
        ForgetAIEffectLibForTesting();
    }

    static int LevelOf(int32_t number) { return 1 + number % 200; }
    void Make(const char* guid) {
        effect = effects.Make(guid);
        record = effects.Engine().Effects().back().get();
    }
    int32_t Draw(int32_t number) {
        frame = number;
        return DrawFrame(*effect, number, test::RecordOf(clip));
    }
    /// The mask level that the first pixel of a slot shows; 0 for a blank.
    int Shown(int32_t slot) const {
        const EffectRecord::Input input = record->InputAt(slot);
        const auto* const pixel = static_cast<const uint8_t*>(input.pixels);
        return pixel ? pixel[input.channels - 1] : -1;
    }
    /// Number of the rendering that a slot of the effect's own shader shows.
    int32_t DrawnAt(int32_t slot) const {
        return effects.Engine().DrawnBy(record->InputAt(slot).texture);
    }
    EffectRecord& Stage(const char* part) { return *effects.Engine().FindEffect(part); }

    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(255));
    int32_t frame = 0;
    mutable test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    EffectRecord* record = nullptr;
};

TEST_F(HumanMemory, DelayedCopiesStandAtTheirDistance) {
    const struct {
        const char* guid;
        int32_t speed;
        int32_t step;
    } cases[] = {{kMaskDelay, 1, 30},
                 {kMaskDelay, 2, 20},
                 {kMaskDelay, 3, 15},
                 {kMaskDelay, 4, 30},
                 {kCutoutDelay, 2, 5}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.guid << " " << c.speed);
        Make(c.guid);
        if (c.guid == kMaskDelay) {
            effect->SetParam("speed", kParamInt, NLEParamValue::Int(c.speed));
        }
        const int32_t length = 4 * c.step;
        for (int32_t n = 0; n <= length; ++n) {
            ASSERT_EQ(Draw(n), kFilterOk);
            for (int32_t copy = 0; copy < 4; ++copy) {
                const int32_t seen = n - length + (copy == 0 ? 1 : copy * c.step);
                ASSERT_EQ(Shown(copy + 1), seen < 0 ? 0 : LevelOf(seen)) << n << " " << copy;
            }
            ASSERT_EQ(Shown(5), LevelOf(n));
        }
    }
}

TEST_F(HumanMemory, AFrameThatChangesTheFirstParameterIsNotRemembered) {
    Make(kMaskDelay);
    effect->SetParam("speed", kParamInt, NLEParamValue::Int(3));
    for (int32_t n = 0; n < 60; ++n) {
        effect->SetParam("style", kParamInt, NLEParamValue::Int(n == 20 ? 1 : 0));
        ASSERT_EQ(Draw(n), kFilterOk);
    }
    // 60 pictures but for the frames 20 and 21: the queue is two short, and begins with blanks.
    ASSERT_EQ(Draw(60), kFilterOk);
    EXPECT_EQ(Shown(1), 0);
    EXPECT_EQ(Shown(2), LevelOf(13));
    EXPECT_EQ(Shown(3), LevelOf(30));
}

TEST_F(HumanMemory, AJumpForgets) {
    constexpr int32_t kFrom = 61;
    const struct {
        const char* guid;
        int32_t jump;
        bool forgets;
    } cases[] = {{kCutoutDelay, 2, false}, {kCutoutDelay, 3, true}, {kCutoutDelay, -2, false},
                 {kCutoutDelay, -3, true}, {kAfterimage, 5, false}, {kAfterimage, 6, true},
                 {kAfterimage, -5, false}, {kAfterimage, -6, true}, {kQueue, 5, false},
                 {kQueue, 6, true},        {kQueue, -5, false},     {kQueue, -6, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.guid << " " << c.jump);
        Make(c.guid);
        for (int32_t n = 0; n <= kFrom; ++n) ASSERT_EQ(Draw(n), kFilterOk);
        const std::size_t own = effects.Engine().Effects().size();
        EffectRecord* const stage =
            c.guid == kCutoutDelay ? record : effects.Engine().Effects()[own - 2].get();
        stage->ClearCalls();
        ASSERT_EQ(Draw(kFrom + c.jump), kFilterOk);
        bool forgot = false;
        if (c.guid == kCutoutDelay) {
            forgot = Shown(4) == 0;
        } else if (c.guid == kAfterimage) {
            forgot = stage->InputAt(1).kind == EffectRecord::Input::kImage;
        } else {
            forgot = stage->Count("Render") == 9;
        }
        EXPECT_EQ(forgot, c.forgets);
        effect.reset();
    }
}

TEST_F(HumanMemory, TrailsTakeOnePictureATickAtAnyRate) {
    for (const float rate : {24.0F, 25.0F, 30.0F, 50.0F, 60.0F}) {
        Make(kAfterimage);
        EffectRecord& stage = *effects.Engine().Effects()[effects.Engine().Effects().size() - 2];
        effect->SetFrameRate(rate);
        const auto frames = static_cast<int32_t>(rate * 2.0F);
        std::set<int32_t> ticks;
        int drawn = 0;
        for (int32_t n = 0; n < frames; ++n) {
            const auto tick = static_cast<int32_t>(static_cast<float>(n) / rate * 25.0);
            // Tick 0 is drawn again each time.
            if (ticks.insert(tick).second || tick == 0) ++drawn;
            ASSERT_EQ(Draw(n), kFilterOk);
        }
        EXPECT_EQ(stage.Count("Render"), 2 * drawn) << rate;
        effect.reset();
    }
}

TEST_F(HumanMemory, TheQueueHoldsTheLastNinePicturesInOrder) {
    Make(kQueue);
    effect->SetFrameRate(8.0F);  // each frame is three or four ticks later
    for (int32_t n = 0; n < 12; ++n) ASSERT_EQ(Draw(n), kFilterOk);
    constexpr int32_t kFirstSlot = 2;
    for (int32_t i = 1; i < 9; ++i) {
        // Each frame draws two pictures: one of the queue and the one that shows all of them.
        EXPECT_EQ(DrawnAt(kFirstSlot + i) - DrawnAt(kFirstSlot + i - 1), 2) << i;
    }
    EXPECT_EQ(DrawnAt(kFirstSlot + 8), effects.Engine().RenderCount() - 1);
}

TEST_F(HumanMemory, TheMirroredTrailHasASlotAndMovesTheOtherWay) {
    Make(kMirrored);
    effect->SetParam("motion_x", kParamFloat, NLEParamValue::Float(0.5F));
    for (int32_t n = 0; n < 3; ++n) ASSERT_EQ(Draw(n), kFilterOk);
    EffectRecord& stage = *effects.Engine().Effects()[effects.Engine().Effects().size() - 2];
    EXPECT_EQ(stage.Count("SetUniformFloat(motion_x, -0.5"), 3);
    EXPECT_FLOAT_EQ(stage.UniformFloat("motion_x"), 0.5F);
    EXPECT_EQ(DrawnAt(1) - DrawnAt(2), 1) << "the mirrored trail is drawn first";
    EXPECT_EQ(record->InputAt(4).kind, EffectRecord::Input::kImage) << "the mask";
}

TEST_F(HumanMemory, RandomColoursAreThoseOfTheFrame) {
    std::vector<std::vector<int32_t>> runs;
    for (int run = 0; run < 2; ++run) {
        Make(kFlash);
        std::vector<int32_t> colors;
        for (int32_t n = run * 3; n < 8; ++n) {
            ASSERT_EQ(Draw(n), kFilterOk);
            if (n >= 3) colors.push_back(record->UniformInt("color"));
        }
        EXPECT_EQ(std::set<int32_t>(colors.begin(), colors.end()).size(), colors.size());
        runs.push_back(colors);
        effect.reset();
    }
    EXPECT_EQ(runs[0], runs[1]);
}

TEST_F(HumanMemory, BurningTakesTheFeatheredTrailAndTheWholeMask) {
    Make(kBurning);
    ASSERT_EQ(Draw(0), kFilterOk);
    EXPECT_EQ(record->InputAt(1).kind, EffectRecord::Input::kTexture);
    EXPECT_EQ(DrawnAt(1), effects.Engine().RenderCount() - 1);
    EXPECT_EQ(record->InputAt(2).kind, EffectRecord::Input::kImage);
    EXPECT_EQ(Stage("flame_afterimage").UniformInt("showSrc"), 0);
    EXPECT_EQ(DrawFrame(*effect, 1, FrameRecord()), kFilterOk) << "the last trail stays";
}

TEST(PastPicturesTest, AQueueAt4KStaysWithinMemory) {
    PastPictures masks;
    masks.Restart(120);
    const cv::Mat picture(2160, 3840, CV_8UC4, cv::Scalar::all(77));
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < masks.Count(); ++i) {
        masks.Push(picture, PastPictures::Content::kMask);
        const cv::Mat& kept = masks.At(masks.Count() - 1);
        EXPECT_EQ(kept.at<uint8_t>(100, 100), 77);
        bytes += kept.total() * kept.elemSize();
    }
    EXPECT_LT(bytes, 64U << 20);
    masks.Push(picture, PastPictures::Content::kCutout);
    EXPECT_EQ(masks.At(119).size(), cv::Size(1920, 1080));
}

}  // namespace
}  // namespace kelmo
