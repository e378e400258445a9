// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "bindings/ai_effect_lib.h"
#include "effects/beam/tracked/beam_particle_effect.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

/// Effects on people whom the test makes up.
class Tracked : public ::testing::Test {
protected:
    Tracked() {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.createFilter = [this](const char*) { return static_cast<void*>(this); };
        table.transform = [this](void*, const AIImage& output, const AIImage&, const AIImage&) {
            if (output.pixels) PaintPerson(output);
            return 0;
        };
        table.getResult = [this](void*, std::shared_ptr<AIDATA::BaseAIDATA>& data) {
            data = found;
            return data ? 0 : 1;
        };
        SetAIEffectLibForTesting(table);
    }
    ~Tracked() override {
        effect.reset();
        ForgetAIEffectLibForTesting();
    }
    void Make(const char* guid) { effect = effects.Make(guid); }
    /// Lines that the renderer, the first one made, draws of a frame.
    int32_t LinesOf(int32_t frame) {
        effect->Resize(64, 36, 256);  // as the host does in front of every frame
        EXPECT_EQ(test::DrawFrame(*effect, frame, test::RecordOf(clip)), kFilterOk);
        return effects.Engine().Effect(0).instanceCount;
    }
    void PaintPerson(const AIImage& mask) {
        cv::Mat picture(mask.height, mask.width, CV_8UC4, mask.pixels,
                        static_cast<std::size_t>(mask.stride));
        picture.setTo(cv::Scalar::all(0));
        picture(cv::Rect(mask.width / 4, mask.height / 4, mask.width / 2, mask.height / 2))
            .setTo(cv::Scalar::all(255));
    }

    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(90));
    std::shared_ptr<AIDATA::BaseAIDATA> found;
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
};

TEST_F(Tracked, EyesHaveRingsAndRaysUnlessTheHeadIsTurned) {
    Make("91DA9096-BF30-4A12-BCD8-9DC6231EB81D");
    EXPECT_EQ(LinesOf(0), 1) << "nobody: one clear line";
    EXPECT_EQ(effects.Engine().Effect(0).Array("uColor")[3], 0.0F);
    const struct {
        double yaw;
        int32_t ray;
        std::size_t landmarks;
        int32_t lines;
    } cases[] = {{10, 0, 106, 16}, {10, 1, 106, 18},  {50, 1, 106, 18},
                 {51, 1, 106, 16}, {-60, 1, 106, 16}, {0, 1, 77, 1}};
    for (const auto& c : cases) {
        auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
        AIDATA::HumanFaceInfo& face = faces->faces.emplace_back();
        face.yaw = c.yaw;
        for (std::size_t i = 0; i < c.landmarks; ++i) {
            const auto turn = static_cast<float>(i);
            face.landmarks.emplace_back(0.5F + 0.2F * std::cos(turn), 0.5F + 0.2F * std::sin(turn));
        }
        found = faces;
        effect->SetParam("ray", kParamInt, NLEParamValue::Int(c.ray));
        EXPECT_EQ(LinesOf(0), c.lines) << c.yaw;
    }
}

TEST_F(Tracked, HandsLeaveLoopsOfFifteenPlaces) {
    Make("169C7E51-637C-07F5-CFD3-C2C4E0BF3ADA");
    auto people = std::make_shared<AIDATA::HumanPoseDatas>();
    AIDATA::HumanPose& person = people->persons.emplace_back();
    person.points.assign(19, {-1.0F, -1.0F});
    found = people;
    for (int32_t frame = 0; frame < 20; ++frame) {
        const auto step = static_cast<float>(frame);
        person.points[10] = {0.02F * step, 0.5F + 0.1F * std::sin(step)};
        const int32_t places = std::min(frame + 1, 15);
        EXPECT_EQ(LinesOf(frame), places < 3 ? 1 : places) << frame;
    }
    person.points[9] = {0.5F, 0.5F};
    person.points[10] = {-1.0F, 0.5F};
    EXPECT_EQ(LinesOf(20), 14) << "one hand is lost, the other has one place";
    person.points[9] = {NAN, 3e30F};
    EXPECT_EQ(LinesOf(21), 13);
}

TEST_F(Tracked, OutlinesGatherUntilAJump) {
    Make("674B7187-FC2C-E9EA-E024-5A2DCDA57AEA");
    test::EffectRecord& gathered = effects.Engine().Effect(1);
    const struct {
        int32_t frame;
        bool anew;
    } cases[] = {{0, true}, {1, false}, {6, false}, {12, true}, {7, false}, {1, true}};
    for (const auto& c : cases) {
        EXPECT_EQ(LinesOf(c.frame), 3) << "a rectangle, open";
        EXPECT_EQ(gathered.InputAt(1).kind,
                  c.anew ? test::EffectRecord::Input::kImage : test::EffectRecord::Input::kTexture)
            << c.frame;
    }
    EXPECT_EQ(effects.Engine().Effect(2).inputs.size(), 2U);
}

TEST_F(Tracked, ShocksBurstFromTheLastFaceThatLooksAhead) {
    Make("96564335-3185-B2FB-0588-372C1B84BDE0");
    auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
    for (const auto& [yaw, x] :
         {std::pair(0.0, 0.25F), std::pair(-30.0, 0.5F), std::pair(51.0, 0.9F)}) {
        AIDATA::HumanFaceInfo& face = faces->faces.emplace_back();
        face.yaw = yaw;
        face.landmarks.assign(106, {x, 0.75F});
    }
    effect->SetParam("duration", kParamFloat, NLEParamValue::Float(0.019F));  // 20 ticks
    test::EffectRecord& ring = effects.Engine().Effect(3);
    test::EffectRecord& own = effects.Engine().Effect(4);
    EXPECT_EQ(LinesOf(10), 2) << "two halves of a ring";
    EXPECT_EQ(ring.AttributeValues("position")[0], ring.AttributeValues("position")[6])
        << "nobody: a card without size";
    found = faces;
    EXPECT_EQ(LinesOf(10), 2);
    EXPECT_EQ(own.Uniform("uCenter"), (std::vector<float>{0.5F, 0.75F}));
    EXPECT_NEAR(own.Uniform("uFaceVector")[0], 1.0F, 1e-6);
    EXPECT_NEAR(ring.UniformFloat("shifting"), 0.25F, 1e-5) << "half of its way";
    EXPECT_NEAR(ring.UniformFloat("scale"), 0.5F * 1.4F + 0.15F, 1e-5);
    EXPECT_EQ(ring.UniformFloat("center_y"), 0.5F);
}

TEST(ShapeNoise, TiltsACardThatIsSquareInTheFrame) {
    test::MaterialEffects effects;
    auto effect = effects.Make("2626CC6E-9F50-78E9-FD00-0BF7E02E6C40");
    test::EffectRecord& own = effects.Engine().Effect(3);
    const struct {
        float yaw, shifting;
        float x, y;  // of the first corner
    } cases[] = {{0, 0, -0.5F * 36 / 64, 0.5F},
                 {60, 0, -0.25F * 36 / 64, 0.5F},
                 {90, 0.4F, -0.4F * 36 / 64, 0.5F}};
    effect->SetParam("scale", kParamFloat, NLEParamValue::Float(0.5F));
    for (const auto& c : cases) {
        effect->SetParam("yaw", kParamFloat, NLEParamValue::Float(c.yaw));
        effect->SetParam("shifting", kParamFloat, NLEParamValue::Float(c.shifting));
        ASSERT_EQ(test::DrawFrame(*effect, 0, {}), kFilterOk);
        EXPECT_NEAR(own.AttributeValues("position")[0], c.x, 1e-5) << c.yaw;
        EXPECT_NEAR(own.AttributeValues("position")[1], c.y, 1e-5) << c.yaw;
    }
    EXPECT_EQ(effects.Engine().Effect(0).width, 256) << "whatever the frame";
}

TEST(SineWave, GrowsOverTheClipOrTheTimeThatIsSet) {
    test::MaterialEffects effects;
    auto effect = effects.Make("D6D42170-AB20-4345-9A86-DB13BC6C7ADA");  // 100 frames, 25 a second
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(90));
    test::EffectRecord& line = effects.Engine().Effect(0);
    const struct {
        int32_t minute, second, position;
        float grown;
    } cases[] = {{0, 0, 0, 0.0F},   {0, 0, 50, 0.5F},  {0, 0, 130, 1.0F},
                 {0, 8, 50, 0.25F}, {1, 0, 75, 0.05F}, {0, -5, 50, 0.5F}};
    for (const auto& c : cases) {
        effect->SetParam("minute", kParamInt, NLEParamValue::Int(c.minute));
        effect->SetParam("second", kParamInt, NLEParamValue::Int(c.second));
        ASSERT_EQ(test::DrawFrame(*effect, c.position, test::RecordOf(clip)), kFilterOk);
        EXPECT_NEAR(line.UniformFloat("uProgressEnd"), c.grown, 1e-5) << c.second;
        EXPECT_EQ(effects.Engine().Effect(1).InputAt(1).kind,
                  c.position == 0 ? test::EffectRecord::Input::kImage
                                  : test::EffectRecord::Input::kTexture);
    }
    EXPECT_EQ(line.width, 1920);
    EXPECT_NEAR(line.Array("uStartEndData")[2], 0.86F, 1e-6);
}

TEST(CharmBeam, DrawsItsNoiseFirst) {
    test::MaterialEffects effects;
    auto effect = effects.Make("50C300CE-1D8B-4677-8374-4D94F8E2D37F");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(90));
    test::EffectRecord& own = effects.Engine().Effect(1);
    ASSERT_EQ(test::DrawFrame(*effect, 4, test::RecordOf(clip)), kFilterOk);
    EXPECT_EQ(own.renderCount, 2);
    EXPECT_EQ(own.UniformInt("calLayer"), 2);
    EXPECT_EQ(own.InputAt(0).kind, test::EffectRecord::Input::kImage);
    EXPECT_EQ(own.InputAt(1).kind, test::EffectRecord::Input::kTexture);
    EXPECT_EQ(effects.Engine().Effect(0).UniformFloat("contrast"), 3.0F);
}

TEST(BeamParticles, AreTheBrightPixelsInTheirStraightColour) {
    test::MaterialEffects effects;
    auto effect = effects.Make("A93A0D45-C9CA-4891-952D-91600DE288B1");
    test::EffectRecord& lines = effects.Engine().Effect(0);
    test::EffectRecord& own = effects.Engine().Effect(1);
    cv::Mat clip(308, 548, CV_8UC4, cv::Scalar::all(0));  // of the working size
    const auto draw = [&] {
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        return lines.instanceCount;
    };
    EXPECT_EQ(draw(), 0);
    EXPECT_EQ(own.UniformFloat("uBoundLeftX"), -1.0F);
    EXPECT_EQ(own.UniformFloat("uBoundRightX"), -1.0F);
    clip(cv::Rect(137, 10, 4, 3)).setTo(cv::Scalar(20, 40, 60, 120));
    clip(cv::Rect(411, 200, 1, 2)).setTo(cv::Scalar::all(255));  // two pixels make no line
    EXPECT_EQ(draw(), 12);
    EXPECT_NEAR(own.UniformFloat("uBoundLeftX"), -0.5F, 1e-6);
    EXPECT_NEAR(lines.UniformFloat("uBoundRightX"), 412 / 274.0 - 1, 1e-5);
    const std::vector<float> colors = lines.Array("uColor");
    EXPECT_NEAR(colors[0], 0.5F, 0.01F) << "red first";
    EXPECT_NEAR(colors[2], 0.1667F, 0.01F);
    EXPECT_EQ(lines.Array("uProgressRange")[0], 0.0F);
    EXPECT_EQ(lines.Array("uProgressRange")[2 * 11 + 1], 1.0F);
    clip.setTo(cv::Scalar::all(255));
    EXPECT_LE(draw(), BeamParticleEffect::kMostParticles) << "not every pixel";
    EXPECT_GT(lines.instanceCount, BeamParticleEffect::kMostParticles / 2);
}

}  // namespace
}  // namespace kelmo
