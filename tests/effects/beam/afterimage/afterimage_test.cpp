// SPDX-License-Identifier: GPL-3.0-or-later
// The trail behind an edge flow: when it goes on, when it begins anew, and what the shader sees.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using test::EffectRecord;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;
using Input = EffectRecord::Input;

constexpr const char* kEcho = "D1A0ED4B-E2D0-816C-63D7-A2D5D82B412A";

class Afterimage : public ::testing::Test {
protected:
    void Start(const char* guid, int32_t mirror = 0) {
        effect = effects.Make(guid);
        effect->Resize(64, 36, 256);                    // as it is: no change of size is left over
        own = effects.Engine().Effects().back().get();  // stages begin before their owner
        effect->SetParam("mirror", kParamInt, NLEParamValue::Int(mirror));
        effect->SetParam("motion_x", kParamFloat, NLEParamValue::Float(0.5F));
        effects.Engine().onRender = [this](EffectRecord& record, FrameRecord&) {
            if (&record != own) return;
            if (own->UniformInt("uAccum") == 1) {
                trails.push_back(own->InputAt(2).kind == Input::kImage ? "new" : "on");
                count = own->UniformInt("uAccumBG");
                if (failAfterTrail) effects.Engine().failRender = true;
            }
            motions.push_back(own->UniformFloat("motion_x"));
        };
    }
    /// Draws a frame and says how its trails began.
    std::vector<std::string> Draw(int32_t position, int32_t result = kFilterOk) {
        trails.clear();
        motions.clear();
        EXPECT_EQ(test::DrawFrame(*effect, position, test::RecordOf(clip)), result);
        return trails;
    }

    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(0));
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    EffectRecord* own = nullptr;
    std::vector<std::string> trails;
    std::vector<float> motions;
    int32_t count = -1;
    bool failAfterTrail = false;
};

TEST_F(Afterimage, GoesOnOrBeginsAnew) {
    const struct {
        const char* name;
        int32_t rate;
        int32_t width;
        int32_t position;
        std::vector<std::string> trails;
        int32_t count;  // of ticks, as the shader sees it
    } steps[] = {
        {"first frame", 25, 64, 0, {"new"}, 0},   {"tick 0 is no last tick", 25, 64, 0, {"on"}, 0},
        {"next", 25, 64, 1, {"on"}, 1},           {"same tick", 25, 64, 1, {}, 1},
        {"5 ahead", 25, 64, 6, {"on"}, 2},        {"6 ahead", 25, 64, 12, {"new"}, 3},
        {"5 back", 25, 64, 7, {"on"}, 0},         {"6 back", 25, 64, 1, {"new"}, 1},
        {"twice the rate", 50, 64, 4, {"on"}, 0}, {"half a tick later", 50, 64, 5, {}, 0},
        {"another size", 50, 96, 5, {"new"}, 1},  {"that size again", 50, 96, 6, {"on"}, 0},
    };
    Start(kEcho);
    for (const auto& s : steps) {
        SCOPED_TRACE(s.name);
        effect->SetFrameRate(static_cast<float>(s.rate));
        effect->Resize(s.width, 36, s.width * 4);
        EXPECT_EQ(Draw(s.position), s.trails);
        EXPECT_EQ(count, s.count);
    }
    for (int32_t position = 7; position < 400; ++position) {  // at 25 each frame is a tick
        effect->SetFrameRate(25.0F);
        ASSERT_EQ(Draw(position).size(), 1U) << position;
    }
}

TEST_F(Afterimage, DoesNotCountAFailedFrame) {
    Start(kEcho);
    for (const bool late : {false, true}) {
        failAfterTrail = late;
        effects.Engine().failRender = !late;
        Draw(3, kFilterFailed);
        EXPECT_EQ(own->Count("SetRenderTarget"), late ? 1 : 0);
    }
    failAfterTrail = effects.Engine().failRender = false;
    EXPECT_THAT(Draw(3), ElementsAre("new"));
    EXPECT_THAT(Draw(3), IsEmpty());
}

TEST_F(Afterimage, ShowsTheLightItsTrailsAndTheMask) {
    Start(kEcho);
    Draw(3);
    EXPECT_EQ(own->InputAt(1).kind, Input::kTexture);
    EXPECT_EQ(own->InputAt(2).kind, Input::kTexture);
    EXPECT_EQ(own->InputAt(3).channels, 1) << "the mask";
    EXPECT_THAT(motions, ElementsAre(0.5F, 0.5F));

    Start(kEcho, 1);
    EXPECT_THAT(Draw(3), ElementsAre("new", "new"));
    EXPECT_THAT(motions, ElementsAre(0.5F, -0.5F, -0.5F)) << "the picture sees the opposite, too";
    EXPECT_THAT(own->Calls("SetRenderTarget"),
                ElementsAre("SetRenderTarget(0)", "SetRenderTarget(1)"));
    EXPECT_THAT(Draw(4), ElementsAre("on", "on"));
    EXPECT_NE(own->InputAt(2).texture, own->InputAt(3).texture);
    EXPECT_EQ(own->InputAt(4).channels, 1);
}

TEST_F(Afterimage, HasItsLookOfTheEdgeFlow) {
    const struct {
        const char* guid;
        const char* shader;
    } cases[] = {
        {"E8FEDA30-4CEF-A18C-A21E-6B717784FA49", "/arc.frag"},
        {"2C19EA70-2667-1A43-B71E-9674A61A0464", "/burning.frag"},
        {"526E7BF0-AF06-4B29-B8B3-F1C0C6FF2498", "/cellular.frag"},
        {"2AA73AD1-C5B9-8BAF-EC0A-9A6E37882BB1", "/edge_flow.frag"},
        {"D32CA8BC-053A-A758-478B-9807FF6AEC41", "/energize.frag"},
        {"FC2709BC-89C3-B916-F4E7-058F4304D3D4", "/fire.frag"},
        {"391FADE7-C57E-BA62-B9BE-715DFAAB3516", "/random_fire.frag"},
        {"18689208-3693-E2E9-4E71-C55B10999CD8", "/fog.frag"},
        {kEcho, "/neon_line.frag"},
        {"4F2899A7-3478-6DB2-21A5-06008A34E478", "/rainbow_flow.frag"},
        {"34AA48FB-4B88-8341-2371-83B36053D97E", "/gold_dust.frag"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shader);
        Start(c.guid);
        const auto& made = effects.Engine().Effects();
        EXPECT_THAT(made.at(made.size() - 2)->fragmentPath, EndsWith(c.shader));
        Draw(3);
        EXPECT_EQ(made.at(made.size() - 2)->UniformFloat("showSrc"), 0.0F) << "light alone";
    }
}

}  // namespace
}  // namespace kelmo
