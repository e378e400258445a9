// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/lightning/lightning_power_effect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/filter/filter_guids.h"
#include "platform/random.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using ::testing::ElementsAre;

constexpr const char* kRadial = "7607D2AA-5F28-47F5-A737-C77904315896";
constexpr const char* kGrounded = "14C64749-25E5-41AD-9DE3-69CA27D9A3E3";
constexpr const char* kForearm = "0EB82802-7C6D-4EB0-B761-26E096999AE8";
constexpr const char* kArc = "F2DFF6FE-D88E-48A0-8CB5-7247F6BFD1AB";

/// A person with the right hand at (0.25, y) and the left one at (0.75, y), elbows above them.
AIDATA::HumanPose Person(bool left, bool right, float y = 0.5F) {
    AIDATA::HumanPose person;
    person.points.assign(19, {-1.0F, -1.0F});
    if (right) person.points[4] = {0.25F, y};
    if (left) person.points[10] = {0.75F, y};
    person.points[3] = {0.25F, y - 0.25F};
    person.points[8] = {0.75F, y - 0.25F};
    return person;
}

class LightningPower : public ::testing::Test {
protected:
    LightningPower() {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.createFilter = [this](const char*) { return static_cast<void*>(this); };
        table.getResult = [this](void*, std::shared_ptr<AIDATA::BaseAIDATA>& data) {
            data = poses;
            return 0;
        };
        SetAIEffectLibForTesting(table);
    }
    ~LightningPower() override {
        effect.reset();
        ForgetAIEffectLibForTesting();
    }
    void Start(const char* guid) {
        effect = effects.Make(guid);
        const auto& made = effects.Engine().Effects();
        own = made.back().get();  // stages begin before their owner
        mainBeam = made.at(made.size() - 4).get();
        branchBeam = made.at(made.size() - 3).get();
    }
    void See(std::vector<AIDATA::HumanPose> persons) {
        poses = std::make_shared<AIDATA::HumanPoseDatas>();
        poses->persons = std::move(persons);
    }
    int32_t Draw(int32_t position = 1) {
        return test::DrawFrame(*effect, position, test::RecordOf(clip));
    }
    /// Ends of the lines that a renderer was given: x, y, x, y each.
    static std::vector<float> Lines(const test::EffectRecord* beam) {
        return beam->Array("uStartEndData");
    }
    std::vector<float> Balls() const {
        return {own->UniformFloat("showLeftBall"), own->UniformFloat("showRightBall")};
    }

    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(0));
    std::shared_ptr<AIDATA::HumanPoseDatas> poses;
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    test::EffectRecord* own = nullptr;
    test::EffectRecord* mainBeam = nullptr;
    test::EffectRecord* branchBeam = nullptr;
};

TEST_F(LightningPower, ShootsFromTheHandsOfTheFirstPersonThatAreThere) {
    const struct {
        const char* name;
        std::vector<AIDATA::HumanPose> persons;
        int32_t leftOrRight;
        int32_t result;
        std::vector<float> balls;
    } cases[] = {
        {"nobody", {}, 2, kFilterFailed, {0, 0}},
        {"both", {Person(true, true)}, 2, kFilterOk, {1, 1}},
        {"left alone", {Person(true, true)}, 0, kFilterOk, {1, 0}},
        {"right alone", {Person(true, true)}, 1, kFilterOk, {0, 1}},
        {"left missing", {Person(false, true)}, 2, kFilterOk, {0, 1}},
        {"the one asked for missing", {Person(false, true)}, 0, kFilterOk, {0, 0}},
        {"no hands", {Person(false, false)}, 2, kFilterOk, {0, 0}},
        {"two persons", {Person(false, true), Person(true, true)}, 2, kFilterOk, {0, 1}},
        {"no points at all", {AIDATA::HumanPose()}, 2, kFilterOk, {0, 0}},
    };
    for (const char* guid : {kRadial, kGrounded, kForearm}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(guid) + ": " + c.name);
            Start(guid);
            See(c.persons);
            effect->SetParam("leftOrRight", kParamInt, NLEParamValue::Int(c.leftOrRight));
            ASSERT_EQ(Draw(), c.result);
            EXPECT_EQ(Balls(), c.balls);
            if (c.result != kFilterOk) continue;
            const std::size_t floats = Lines(mainBeam).size();
            EXPECT_EQ(floats > 0, c.balls[0] + c.balls[1] > 0.0F);
            EXPECT_LT(floats, 4U * 2 * 10 * 3 * 512) << "bounded";
        }
    }
    poses = nullptr;
    EXPECT_EQ(Draw(), kFilterFailed) << "no record";
}

TEST_F(LightningPower, EndsWhereItsModeSays) {
    See({Person(true, true)});
    Start(kGrounded);
    ASSERT_EQ(Draw(), kFilterOk);
    std::vector<float> lines = Lines(mainBeam);
    EXPECT_THAT(std::vector<float>(lines.begin(), lines.begin() + 2), ElementsAre(0.5F, 0.0F));
    EXPECT_EQ(lines.back(), -1.0F) << "the ground";
    EXPECT_EQ(lines[lines.size() - 2], -0.5F);
    EXPECT_EQ(own->UniformFloat("center_x"), 0.75F);

    Start(kForearm);
    ASSERT_EQ(Draw(), kFilterOk);
    lines = Lines(mainBeam);
    EXPECT_THAT(std::vector<float>(lines.end() - 2, lines.end()), ElementsAre(-0.5F, -1.0F));
    See({Person(true, true, 2.0F)});
    EXPECT_EQ(Draw(), kFilterFailed) << "an arm that points past the frame";

    Start(kArc);
    EXPECT_EQ(Draw(), kFilterOk) << "nothing bright";
    EXPECT_EQ(own->Count("Render"), 0);
    clip(cv::Rect(16, 9, 32, 18)).setTo(255);
    ASSERT_EQ(Draw(), kFilterOk);
    lines = Lines(mainBeam);
    EXPECT_NEAR(lines[0], -0.5F, 0.02F);
    EXPECT_NEAR(lines[1], 0.5F, 0.04F);
}

TEST_F(LightningPower, HasTheBoltsOfItsSeed) {
    See({Person(true, true)});
    Start(kForearm);
    const auto bolts = [&](int32_t position) {
        EXPECT_EQ(Draw(position), kFilterOk);
        return Lines(mainBeam);
    };
    const auto seventh = bolts(7);
    EXPECT_EQ(bolts(8), seventh) << "every fourth frame keeps the bolts drawn before";
    EXPECT_NE(bolts(9), seventh);
    EXPECT_EQ(bolts(7), seventh);
    Start(kRadial);
    Srand(3);
    const auto crown = bolts(1);
    EXPECT_NE(bolts(1), crown) << "not seeded, and turned on";
}

TEST_F(LightningPower, DrawsItsBoltsThenTheirLayerThenTheFrame) {
    See({Person(true, true)});
    Start(kGrounded);
    std::vector<std::string> passes;
    effects.Engine().onRender = [&](test::EffectRecord& r, FrameRecord&) {
        passes.push_back(&r == mainBeam     ? "main"
                         : &r == branchBeam ? "branches"
                         : &r != own        ? "feather"
                                            : "layer " + std::to_string(r.UniformInt("calLayer")));
    };
    ASSERT_EQ(Draw(), kFilterOk);
    EXPECT_THAT(passes,
                ElementsAre("main", "branches", "layer 0", "feather", "feather", "layer 1"));
    EXPECT_EQ(own->InputAt(0).kind, test::EffectRecord::Input::kImage);
    EXPECT_EQ(own->InputAt(2).kind, test::EffectRecord::Input::kTexture);
    EXPECT_FLOAT_EQ(mainBeam->UniformFloat("uZoomEndNode"), 0.55F) << "branches are thinner";
    EXPECT_FLOAT_EQ(branchBeam->UniformFloat("uZoomStartNode"), 0.6F);
    EXPECT_NEAR(own->Uniform("uBound")[3], 1.0F, 0.004F) << "down to the ground";
}

}  // namespace
}  // namespace kelmo
