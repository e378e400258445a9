// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/sub_filters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/filter_catalogue.h"
#include "framework/filter/filter_guids.h"
#include "tests/support/engine_session.h"
#include "tests/support/filter_descriptions.h"
#include "tests/support/recording_host.h"

namespace kelmo {
namespace {

using test::MakeInfo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SubFiltersTest : public ::testing::Test {
protected:
    SubFiltersTest() {
        SetSubFilterCreation(CreateFilterFromCatalogue);
        GetCatalogue().AddFilter(MakeInfo("stage-a"));
        GetCatalogue().AddFilter(MakeInfo("stage-b"));
    }
    ~SubFiltersTest() override { SetSubFilterCreation(nullptr); }

    test::AcquiredHost host;
    test::EngineSession engine;
    NLEOpenGLFilter owner{MakeInfo("owner")};
    SubFilters stages{&owner};
};

TEST_F(SubFiltersTest, AnUnknownGuidGivesNothingAndIsNotLogged) {
    EXPECT_EQ(stages.Add("no such guid"), nullptr);
    EXPECT_EQ(stages.Add(nullptr), nullptr);
    EXPECT_THAT(host.Lines(), IsEmpty());
    SetSubFilterCreation(nullptr);
    EXPECT_EQ(CreateSubFilter("stage-a", &owner), nullptr) << "before start-up";
}

TEST_F(SubFiltersTest, AStageKnowsItsOwnerAndTakesItsFrameRate) {
    NLEOpenGLFilter* const stage = stages.Add("stage-a");
    ASSERT_NE(stage, nullptr);
    EXPECT_EQ(stage->Parent(), &owner);
    owner.SetFrameRate(30.0F);
    EXPECT_EQ(stage->GetFrameRate(), 30.0F);
}

TEST_F(SubFiltersTest, AStageOfAnotherClassIsDropped) {
    class Special : public NLEOpenGLFilter {};
    EXPECT_EQ(stages.AddAs<Special>("stage-a"), nullptr);
    EXPECT_NE(stages.AddAs<NLEOpenGLFilter>("stage-a"), nullptr);
}

TEST_F(SubFiltersTest, StagesAreInitialisedAndResizedInOrderAndDieWithTheirOwner) {
    {
        SubFilters own(&owner);
        own.Add("stage-a");
        own.Add("stage-b");
        own.InitEffects();
        own.Resize(WorkingSize::For(1920, 1080));
        ASSERT_EQ(engine.Effects().size(), 2U);
        EXPECT_EQ(engine.Effect(0).fragmentPath, "stage-a.frag");
        EXPECT_EQ(engine.Effect(1).fragmentPath, "stage-b.frag");
        EXPECT_THAT(engine.Calls(), ::testing::Contains("1: Resize(548, 308, 2192, self)"));
    }
    EXPECT_FALSE(engine.Effect(0).alive);
    EXPECT_FALSE(engine.Effect(1).alive);
}

TEST_F(SubFiltersTest, AnAstralVariantIsMadeFromItsMaster) {
    const auto variant = MakeInfo("astral-variant");
    variant->subGuid = kAstralSubGuid;
    GetCatalogue().AddFilter(variant);
    ASSERT_NE(stages.Add("astral-variant"), nullptr);
    EXPECT_EQ(stages.Add("astral-variant")->Info()->guid, "astral-variant") << "no master yet";
    GetCatalogue().AddFilter(MakeInfo(kAstralMasterGuid));
    EXPECT_EQ(stages.Add("astral-variant")->Info()->guid, kAstralMasterGuid);
}

TEST_F(SubFiltersTest, AStageDrawsIntoItsOwnPicture) {
    NLEOpenGLFilter* const stage = stages.Add("stage-a");
    stage->InitEffect();
    stages.Resize(64, 32, 256);
    owner.SetPosition(50);
    owner.SetDuration(100);
    const FrameRecord picture = RunSubFilter(*stage, owner, {}, {}, 64, 32, 256);
    EXPECT_EQ(engine.DrawnBy(picture.texture), 1);
    EXPECT_EQ(picture.width, 64);
    EXPECT_EQ(engine.Effect(0).UniformFloat("global_time"), 2.0F);
    EXPECT_EQ(engine.Effect(0).lastTarget.pixels, nullptr);

    engine.failRender = true;
    EXPECT_EQ(RunSubFilter(*stage, owner, {}, {}, 64, 32, 256).texture, picture.texture);
}

TEST_F(SubFiltersTest, AllParametersOfAnOwnerGoToTheStageWithTypeAndValue) {
    NLEOpenGLFilter* const stage = stages.Add("stage-a");
    int target = 0;
    owner.SetParam("f", kParamFloat, NLEParamValue::Float(1.5F));
    owner.SetParam("p", kParamPointer, NLEParamValue::Pointer(&target));
    owner.SetParam("t", kParamText, NLEParamValue::Text("text"));
    HandOverParams(owner.Params(), *stage);
    EXPECT_EQ(stage->FloatOr("f", 0.0F), 1.5F);
    EXPECT_EQ(stage->FindParam("p")->value.AsPointer(), &target);
    EXPECT_EQ(stage->FindParam("t")->value.text, "text");
}

TEST(RecordingEngineTest, ExchangesPicturesInsteadOfCopyingThem) {
    test::RecordingEngine engine;
    std::shared_ptr<NLEOpenGLEngineEffect> effect;
    engine.CreateEngineEffect(8, 8, 32, false, "a", effect, 0, "", {}, {});
    effect->AddRenderTarget();
    FrameRecord none = FrameRecord::TargetLess(8, 8, 32);
    effect->Render(none, effect, 0);
    const int32_t drawn = effect->GetResultFrame().texture;
    effect->SetRenderTarget(0);
    EXPECT_EQ(effect->GetRenderTarget(0).texture, drawn);
    EXPECT_NE(effect->GetResultFrame().texture, drawn);
    EXPECT_EQ(engine.DrawnBy(drawn), 1);
    EXPECT_EQ(engine.DrawnBy(effect->GetResultFrame().texture), 0);
    EXPECT_FALSE(effect->GetRenderTarget(1).HasTexture());
}

}  // namespace
}  // namespace kelmo
