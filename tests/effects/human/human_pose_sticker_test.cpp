// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/human_pose_sticker_effect.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/effects/support/material_effect.h"
#include "tests/support/pose_transfer.h"

namespace kelmo {
namespace {

using test::PoseBlock;
using test::PosePoints;

constexpr const char* kStickerGuid = "81316C1E-0D2D-4217-8200-261275619483";
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

/// A body with its eyes (points 1 and 2) and shoulders (5 and 6) at known places.
PosePoints Body() {
    PosePoints points(19, {0.5F, 0.5F});
    points[1] = {0.50F, 0.25F};
    points[2] = {0.25F, 0.25F};
    points[5] = {0.75F, 0.50F};
    points[6] = {0.25F, 0.75F};
    return points;
}

class PoseSticker : public ::testing::Test {
protected:
    PoseSticker() {
        transfer.block = PoseBlock({Body()});
        Give(&transfer);
    }
    void Give(ObjectAiDataTransfer* host) {
        effect->SetParam(kAiTransferParam, kParamPointer, NLEParamValue::Pointer(host));
    }
    int32_t Bind(int32_t type) {
        return effect->SetParam("binding_type", kParamInt, NLEParamValue::Int(type));
    }
    int32_t Draw(int width = 64, int height = 36) {
        cv::Mat clip(height, width, CV_8UC4, cv::Scalar::all(0));
        return test::DrawFrame(*effect, 0, test::RecordOf(clip));
    }
    void ExpectSticker(int x, int y, float scaleX, float scaleY, const char* name) {
        EXPECT_EQ(record.UniformInt("anchor_point_x"), x) << name;
        EXPECT_EQ(record.UniformInt("anchor_point_y"), y) << name;
        EXPECT_FLOAT_EQ(record.UniformFloat("scale_x"), scaleX) << name;
        EXPECT_FLOAT_EQ(record.UniformFloat("scale_y"), scaleY) << name;
    }

    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect = effects.Make(kStickerGuid);
    test::EffectRecord& record = effects.Engine().Effect(0);
    test::PoseTransfer transfer;
};

TEST_F(PoseSticker, HangsOnTheMiddleOfItsTwoPoints) {
    const struct {
        const char* name;
        int32_t binding;
        int x, y;
    } cases[] = {{"eyes", 0, 24, 9},
                 {"shoulders", 1, 32, 22},
                 {"stays", 2, 32, 22},
                 {"stays, too", -1, 32, 22}};
    for (const auto& c : cases) {
        Bind(c.binding);
        ASSERT_EQ(Draw(), kFilterOk) << c.name;
        ExpectSticker(c.x, c.y, 1.0F, 1.0F, c.name);
    }
}

TEST_F(PoseSticker, TakesItsSizeFromTheFirstBodyAndTheReference) {
    const struct {
        const char* name;
        std::pair<double, double> one, other;  // points 2 and 1
        float scale;
    } cases[] = {
        {"half as far apart", {0.3, 0.5}, {0.425, 0.5}, 2.0F},
        {"aslant", {0.0, 0.0}, {0.3, 0.4}, 0.5F},
        {"in one place", {0.7, 0.1}, {0.7, 0.1}, 1.0F},
        {"no places at all", {kNan, 0.1}, {0.7, 0.1}, 1.0F},
    };
    for (const auto& c : cases) {
        effect = effects.Make(kStickerGuid);
        Give(&transfer);
        transfer.references = {{2, c.one}, {1, c.other}};
        test::EffectRecord& drawn = *effects.Engine().Effects().back();
        transfer.block = PoseBlock({Body()});
        ASSERT_EQ(Draw(), kFilterOk);
        EXPECT_FLOAT_EQ(drawn.UniformFloat("scale_x"), c.scale) << c.name;
        // Coming nearer changes nothing, a larger frame does.
        PosePoints nearer = Body();
        nearer[1] = {0.95F, 0.25F};
        transfer.block = PoseBlock({nearer});
        ASSERT_EQ(Draw(128, 108), kFilterOk);
        EXPECT_FLOAT_EQ(drawn.UniformFloat("scale_x"), 2.0F * c.scale) << c.name;
        EXPECT_FLOAT_EQ(drawn.UniformFloat("scale_y"), 3.0F * c.scale) << c.name;
        EXPECT_EQ(drawn.UniformInt("anchor_point_x"), 76) << c.name;
    }
}

/// The frame fails without a word, and the first good one after it gives the size as if it were the
/// first of all.
TEST_F(PoseSticker, LeavesTheFrameAloneWithoutABody) {
    transfer.references = {{2, {0.0, 0.0}}, {1, {0.125, 0.0}}};
    PosePoints missing[3] = {Body(), Body(), Body()};
    missing[0][2].first = -1.0F;
    missing[1][1].first = -1.0F;
    missing[2][2].second = kNan;
    PosePoints few = Body();
    few.resize(2);
    std::vector<uint8_t> shortBlock = PoseBlock({Body()});
    shortBlock.resize(99);
    std::vector<uint8_t> manyPersons = PoseBlock({Body()});
    manyPersons[3] = 0xFF;  // a negative count
    const struct {
        const char* name;
        std::vector<uint8_t> block;
    } cases[] = {
        {"nobody", PoseBlock({}, 100)},
        {"short", shortBlock},
        {"minus many persons", manyPersons},
        {"too few points", PoseBlock({few}, 100)},
        {"no points", PoseBlock({{}}, 100)},
        {"right eye missing", PoseBlock({missing[0]})},
        {"left eye missing", PoseBlock({missing[1]})},
        {"a place that is none", PoseBlock({missing[2]})},
    };
    effects.host.ClearLines();
    for (const auto& c : cases) {
        transfer.block = c.block;
        EXPECT_EQ(Draw(), kFilterFailed) << c.name;
    }
    transfer.hasBlock = false;
    EXPECT_EQ(Draw(), kFilterFailed) << "no block";
    Give(nullptr);
    EXPECT_EQ(Draw(), kFilterFailed) << "no host object";
    EXPECT_EQ(record.renderCount, 0);
    EXPECT_TRUE(effects.host.Texts(kLogError).empty());
    Give(&transfer);
    transfer.hasBlock = true;
    transfer.block = PoseBlock({Body()});
    ASSERT_EQ(Draw(32, 18), kFilterOk);
    ExpectSticker(12, 4, 2.0F, 2.0F, "the first good frame");
}

/// Those without both points are passed over; each other one leans with its own points.
TEST_F(PoseSticker, TellsOfEverybodyWithBothPoints) {
    PosePoints noEye = Body(), aslant = Body();
    noEye[1].first = -1.0F;
    aslant[2] = {0.25F, 0.25F};
    aslant[1] = {0.50F, 0.25F + 4.0F / 9.0F};  // 16 pixels across, 16 down
    transfer.block = PoseBlock({noEye, aslant, Body()});
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(record.UniformInt("anchor_point_x"), 24);
    ASSERT_EQ(record.UniformInt("stickers_count"), 2);
    constexpr float kTurn = 0.785398F;
    const float wanted[] = {
        0.375F, 0.25F + 2.0F / 9.0F, 3.0F * kTurn, std::sqrt(2.0F) * 16 / 36, 0.375F,
        0.25F,  4.0F * kTurn,        16.0F / 36};
    const std::vector<float> told = record.Array("stickers");
    ASSERT_EQ(told.size(), std::size(wanted));
    for (std::size_t i = 0; i < std::size(wanted); ++i) EXPECT_NEAR(told[i], wanted[i], 1e-5) << i;
    transfer.block = PoseBlock(std::vector<PosePoints>(20, Body()));
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(record.UniformInt("stickers_count"), 8);
}

TEST_F(PoseSticker, NeverReadsPastABlockThatIsCut) {
    const std::vector<uint8_t> whole = PoseBlock({Body(), Body()});
    const std::size_t firstPerson = PoseBlock({Body()}).size();
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        // A block of its own for each size, so that a reader that goes too far leaves the memory.
        transfer.block = std::vector<uint8_t>(whole.begin(), whole.begin() + size);
        transfer.block.shrink_to_fit();
        EXPECT_EQ(Draw(), size >= firstPerson ? kFilterOk : kFilterFailed) << size;
    }
}

TEST_F(PoseSticker, DrawsWithAPointThatIsMissingDownwardsAlone) {
    PosePoints body = Body();
    body[1].second = -1.0F;
    transfer.block = PoseBlock({body});
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(record.UniformInt("anchor_point_y"), -13);
    body[1] = {1e38F, 0.25F};
    transfer.block = PoseBlock({body});
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_GT(record.UniformInt("anchor_point_x"), 1000000);
}

TEST_F(PoseSticker, IsOfNoSizeWhileItHangsOnNothing) {
    Bind(2);
    ASSERT_EQ(Draw(), kFilterOk);
    ExpectSticker(0, 0, 0.0F, 0.0F, "an unknown pair of points");
    Bind(1);
    ASSERT_EQ(Draw(), kFilterOk);
    ExpectSticker(32, 22, 1.0F, 1.0F, "shoulders at last");
}

TEST_F(PoseSticker, TakesNoReferenceFromAFrameWithoutAPicture) {
    EXPECT_EQ(test::DrawFrame(*effect, 0, FrameRecord::TargetLess(0, 0, 0)), kFilterFailed);
    ASSERT_EQ(Draw(), kFilterOk);
    ExpectSticker(24, 9, 1.0F, 1.0F, "the first frame with one");
}

TEST_F(PoseSticker, HangsWhereItsDescriptionSaysUntilTheHostSaysAnother) {
    effect = effects.Make("E8A41D57-90B3-4C2E-B7F5-6D3C20A9185B");  // wings: the shoulders
    Give(&transfer);
    test::EffectRecord& wings = *effects.Engine().Effects().back();
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(wings.UniformInt("anchor_point_x"), 32);
}

TEST_F(PoseSticker, RefusesABindingThatIsNoWholeNumber) {
    Bind(1);
    EXPECT_EQ(effect->SetParam("binding_type", kParamFloat, NLEParamValue::Float(0.0F)),
              kFilterRefusedType);
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(record.UniformInt("anchor_point_x"), 32) << "still the shoulders";
    EXPECT_EQ(record.UniformInt("binding_type"), 1);
}

TEST_F(PoseSticker, ShowsASecondPictureAsItsOwn) {
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(0));
    cv::Mat artwork(8, 8, CV_8UC4, cv::Scalar::all(9));
    ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip), test::RecordOf(artwork)),
              kFilterOk);
    EXPECT_EQ(record.InputAt(0).pixels, clip.data);
    EXPECT_EQ(record.InputAt(1).pixels, artwork.data);
}

}  // namespace
}  // namespace kelmo
