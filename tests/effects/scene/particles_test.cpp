// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "effects/scene/particles/emitted_particles.h"
#include "effects/scene/particles/particle_lattice.h"
#include "effects/scene/particles/picture_particles.h"
#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

TEST(EmittedParticles, LieOverWhatIsNotBlackEachWithNumbersOfItsOwn) {
    cv::Mat picture = cv::Mat::zeros(50, 80, CV_8UC4);
    picture(cv::Rect(40, 0, 40, 50)).setTo(cv::Scalar(0, 0, 1, 0));
    EmittedParticles particles, again;
    particles.BuildOver(picture, 500);
    again.BuildOver(picture, 500);
    ASSERT_EQ(particles.VertexCount(), 3000);
    for (int v = 0; v < particles.VertexCount(); ++v) {
        const float* const place = particles.Positions() + 4 * v;
        const float* const direction = particles.Directions() + 4 * v;
        EXPECT_GE(place[0], 0.0F) << "the black half";
        for (int i = 0; i < 3; ++i) {
            EXPECT_LE(std::abs(place[i]), 1.0F);
            EXPECT_LE(std::abs(direction[i]), 1.0F);
        }
        EXPECT_NEAR(place[3], 0.085F, 0.0751F);
        EXPECT_EQ(place[3], direction[3]);
        EXPECT_TRUE(std::equal(place, place + 4, particles.Positions() + 4 * (v - v % 6)));
        EXPECT_TRUE(std::equal(place, place + 4, again.Positions() + 4 * v)) << "by chance";
    }
    particles.Build(3);
    ASSERT_EQ(particles.VertexCount(), 18);
    EXPECT_EQ(particles.Corners()[3 * 17 + 2], 2.0F) << "the index";
    for (const int64_t count : {int64_t{-4}, int64_t{0}, int64_t{INT32_MAX} + 1}) {
        EXPECT_EQ(EmittedParticles::Within(count), count > 0 ? EmittedParticles::kMost : 0);
    }
}

TEST(PictureParticles, CarryTheStraightColourOfTheirPlace) {
    cv::Mat picture(308, 548, CV_8UC4, cv::Scalar(0, 50, 100, 127));
    picture.colRange(274, 548).setTo(cv::Scalar(3, 3, 3, 255));  // too dark
    PictureParticles particles;
    ASSERT_TRUE(particles.Follow(picture, 5, 1920, 1080));
    const int count = particles.VertexCount() / 6;
    EXPECT_GT(count, 31 * 27 * 4) << "five draws a cell, few of them twice";
    EXPECT_LE(count, 31 * 28 * 5);
    for (int v = 0; v < particles.VertexCount(); ++v) {
        EXPECT_LT(particles.Positions()[2 * v], 0.0F);
        EXPECT_NEAR(particles.Colors()[4 * v + 1], 100 / 255.0, 0.005);
        EXPECT_NEAR(particles.Colors()[4 * v + 2], 200 / 255.0, 0.005);
        EXPECT_EQ(particles.Colors()[4 * v + 3], 1.0F);
    }
    EXPECT_TRUE(particles.Follow(picture, 0, 1920, 1080));
    EXPECT_EQ(particles.VertexCount(), 0);
    EXPECT_TRUE(particles.Follow(picture, INT32_MAX, 1920, 1080));
    EXPECT_TRUE(particles.Follow({}, 5, 1920, 1080));
    EXPECT_EQ(particles.VertexCount(), 0) << "black";
}

TEST(PictureParticles, AreNewWhenMeanAndDeviationChange) {
    cv::Mat picture(308, 548, CV_8UC4, cv::Scalar(90, 90, 90, 255));
    picture.rowRange(0, 100).setTo(cv::Scalar(200, 200, 200, 255));
    cv::Mat turned, lighter = picture + cv::Scalar(10, 10, 10, 0), other = 1.2 * picture;
    cv::flip(picture, turned, 0);
    PictureParticles particles;
    EXPECT_TRUE(particles.Follow(picture, 5, 800, 450));
    EXPECT_FALSE(particles.Follow(picture, 5, 800, 450));
    EXPECT_FALSE(particles.Follow(turned, 5, 800, 450)) << "the same statistics";
    EXPECT_FALSE(particles.Follow(lighter, 5, 800, 450)) << "the same deviation";
    EXPECT_TRUE(particles.Follow(other, 5, 800, 450));
    EXPECT_TRUE(particles.Follow(other, 5, 801, 450));
    EXPECT_TRUE(particles.Follow(other, 5, 450, 800)) << "turned upright";
}

TEST(ParticleLattice, IsSquareInTheFrameAndNeverTooLarge) {
    EXPECT_EQ(ParticleLattice::FlatSize(100, 1920, 1080), cv::Size(100, 56));
    EXPECT_EQ(ParticleLattice::FlatSize(100, 1080, 1920), cv::Size(56, 100));
    EXPECT_EQ(ParticleLattice::FlatSize(0, 1920, 1080), cv::Size());
    EXPECT_EQ(ParticleLattice::FlatSize(9, 1920, 0), cv::Size());
    EXPECT_LE(ParticleLattice::FlatSize(INT32_MAX, 1280, 720).area(), ParticleLattice::kMost);
    EXPECT_LE(ParticleLattice::FlatSize(INT32_MAX, 1, 90000).area(), ParticleLattice::kMost);
    const auto box = ParticleLattice::BoxSize({INT32_MAX, INT32_MAX, 3});
    EXPECT_EQ(box[0] * box[1] * box[2], ParticleLattice::kMost) << "the first one takes it all";
    EXPECT_EQ(ParticleLattice::BoxSize({4, -1, 7}), cv::Vec3i(0, 0, 0));
    ParticleLattice lattice;
    lattice.BuildFlat({4, 2});
    ASSERT_EQ(lattice.VertexCount(), 48);
    EXPECT_EQ(lattice.Positions()[3 * 6 * 5], -0.5F) << "second row, second column";
    EXPECT_EQ(lattice.Positions()[3 * 6 * 5 + 1], 0.0F);
    lattice.BuildBox({3, 2, 2});
    ASSERT_EQ(lattice.VertexCount(), 72);
    const float* const last = lattice.Positions() + 4 * 71;
    EXPECT_EQ(cv::Vec3f(last), cv::Vec3f(1.0F, 0.5F, 0.5F));
    EXPECT_EQ(lattice.Corners()[2 * 71], -1.0F);
    EXPECT_LT(last[3], 1.0F);
}

TEST(ParticleForm, MovesForItsFramesAndHolds) {
    test::MaterialEffects effects;
    auto effect = effects.Make("379593C5-3D85-3708-A285-AF2E96539228");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(99));
    effect->SetParam("uCount_start", kParamInt, NLEParamValue::Int(16));
    effect->SetParam("uCount_end", kParamInt, NLEParamValue::Int(32));
    effect->SetParam("rotate_start_angle", kParamFloat, NLEParamValue::Float(90.0F));
    auto& own = effects.Engine().Effect(1);
    const struct {
        int32_t frames, position, count;
    } cases[] = {{50, 0, 16}, {50, 25, 24}, {50, 50, 32}, {50, 99, 32}, {0, 7, 16}};
    for (const auto& c : cases) {
        effect->SetParam("rotate_frame_count", kParamInt, NLEParamValue::Int(c.frames));
        ASSERT_EQ(test::DrawFrame(*effect, c.position, test::RecordOf(clip)), kFilterOk);
        EXPECT_EQ(own.UniformInt("uCount"), c.count);
        EXPECT_EQ(own.vertexCount, 6 * c.count * (c.count * 36 / 64));
        EXPECT_EQ(own.blendMode, kBlendAdd);
        const bool turned = c.count == 16;  // by 90 degrees: x goes into the depth
        EXPECT_NEAR(own.Uniform("uMVP")[0],
                    turned          ? 0.0F
                    : c.count == 32 ? 2.4142F
                                    : 1.7071F,
                    1e-3);
        EXPECT_NEAR(own.Uniform("uMVP")[15], 3.4F, 1e-5) << "the camera's distance";
    }
}

TEST(ParticleForm, LaysItsColourBehindInAStage) {
    test::MaterialEffects effects;
    auto effect = effects.Make("379593C5-3D85-3708-A285-AF2E96539228");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(99));
    effect->SetParam("BGColor", kParamInt, NLEParamValue::Int(0x123456));
    for (const int32_t on : {0, 1}) {
        effect->SetParam("enableBGColor", kParamInt, NLEParamValue::Int(on));
        ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        EXPECT_EQ(effects.Engine().Effect(0).renderCount, on);
    }
    EXPECT_EQ(effects.Engine().Effect(0).UniformInt("color"), 0x123456);
}

TEST(FormParticleUnity, TakesItsLightAndItsTurnFromTheParameters) {
    test::MaterialEffects effects;
    auto effect = effects.Make("5A2DD7F4-7D9C-841B-3066-3F4ABEC33C4C");
    auto& own = effects.Engine().Effect(0);
    effect->SetParam("LightingPoint0Diffuse", kParamInt, NLEParamValue::Int(0xFF8000));
    effect->SetParam("rotate_x", kParamFloat, NLEParamValue::Float(0.0F));
    effect->SetParam("rotate_y", kParamFloat, NLEParamValue::Float(90.0F));
    ASSERT_EQ(test::DrawFrame(*effect, 0, {}), kFilterOk);
    EXPECT_NEAR(own.Uniform("uLightingPoint0DiffuseColor")[1], 128 / 255.0, 1e-6);
    EXPECT_NEAR(own.Uniform("uModel")[8], -1.0F, 1e-6) << "the sign of a turn about y is kept";
    EXPECT_NEAR(own.Uniform("uMVP")[15], 2.6F, 1e-5);
    EXPECT_EQ(own.vertexCount, 6 * 14 * 14 * 14);
    effect->SetParam("uParticleInZ", kParamInt, NLEParamValue::Int(0));
    ASSERT_EQ(test::DrawFrame(*effect, 1, {}), kFilterOk);
    EXPECT_EQ(own.vertexCount, 0);
}

/// One frame of an effect over a grey clip whose upper half is black; the vertices drawn.
struct Emission {
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(99));

    explicit Emission(const char* guid) : effect(effects.Make(guid)) {}
    int32_t Draw(int32_t count, int32_t update = 0) {
        effect->SetParam("uCount", kParamInt, NLEParamValue::Int(count));
        effect->SetParam("TextIsUpdate", kParamInt, NLEParamValue::Int(update));
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        return effects.Engine().Effect(0).vertexCount;
    }
    float FirstPlace() { return effects.Engine().Effect(0).AttributeValues("position").at(0); }
};

TEST(ParticleEmit, BuildsOnANewCountOrANewText) {
    Emission embers("5E0C7A1D-93B4-4D0E-8A66-2B7F1C9D4E31");
    EXPECT_EQ(embers.Draw(0), 0);
    EXPECT_EQ(embers.Draw(-9), 0);
    EXPECT_EQ(embers.Draw(50), 300);
    const float before = embers.FirstPlace();
    const int black = before < 0.0F ? 0 : 32;  // the half where the first particle lies
    embers.clip.colRange(black, black + 32).setTo(cv::Scalar::all(0));
    EXPECT_EQ(embers.Draw(50), 300);
    EXPECT_EQ(embers.FirstPlace(), before) << "a new picture alone";
    EXPECT_EQ(embers.Draw(50, 1), 300);
    EXPECT_LT(before * embers.FirstPlace(), 0.0F) << "a new text";
    Emission snow("B2D59104-725A-49DA-874A-0571482CC446");
    EXPECT_EQ(snow.Draw(0), 6);
    EXPECT_EQ(snow.Draw(INT32_MAX), 6 * EmittedParticles::kMost);
}

TEST(ParticleDissolve, HandsItsValuesToTheGrainsAndReadsThemAtSlotTwo) {
    test::MaterialEffects effects;
    auto effect = effects.Make("754E7562-27F0-4C93-AD51-5D6310E32967");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(255));
    effect->SetParam("particleSize", kParamFloat, NLEParamValue::Float(7.0F));
    effect->SetParam("particleAmount", kParamInt, NLEParamValue::Int(1));
    ASSERT_EQ(test::DrawFrame(*effect, 3, test::RecordOf(clip)), kFilterOk);
    auto& grains = effects.Engine().Effect(0);
    auto& own = effects.Engine().Effect(1);
    EXPECT_EQ(grains.UniformFloat("uParticleSize"), 7.0F);
    EXPECT_EQ(grains.UniformFloat("uDuration"), own.UniformFloat("duration"));
    EXPECT_EQ(grains.vertexCount, 6 * 31 * 55);
    EXPECT_TRUE(own.inputs.contains(2));
}

TEST(SandStorm, DrawsTwoLayersTwoSecondsApart) {
    test::MaterialEffects effects;
    auto effect = effects.Make("18BA37E8-56EC-648C-33FC-12FEEFE3A151");
    cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(255));
    effect->SetParam("uCount", kParamInt, NLEParamValue::Int(40));
    effect->SetParam("TextIsUpdate", kParamInt, NLEParamValue::Int(1));
    ASSERT_EQ(test::DrawFrame(*effect, 3, test::RecordOf(clip)), kFilterOk);
    for (int layer : {0, 1}) {
        EXPECT_EQ(effects.Engine().Effect(layer).vertexCount, 240);
        EXPECT_EQ(effects.Engine().Effect(layer).UniformFloat("uTimeDifference"), 2.0F * layer);
    }
    EXPECT_EQ(effect->IntOr("TextIsUpdate", 9), 0);
}

}  // namespace
}  // namespace kelmo
