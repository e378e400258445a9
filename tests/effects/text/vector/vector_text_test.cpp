// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/effects/support/material_effect.h"
#include "tests/geometry/contours/scripted_text.h"

namespace kelmo {
namespace {

constexpr const char* kGold = "AD6C1DC5-2EE9-A6D4-B624-6C22E9FE15FE";

class SolidText : public ::testing::Test {
protected:
    SolidText() : effect(effects.Make(kGold)) {
        text.paths.resize(2);
        text.paths[0].Box(10, 20, 30, 60);
        text.paths[1].Box(40, 20, 70, 60);
        const auto& made = effects.Engine().Effects();
        own = made.back().get();  // stages begin before their owner
    }
    ~SolidText() override { effect.reset(); }

    void Give(const char* name, float value) {
        effect->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
    void Give(const char* name, int32_t value) {
        effect->SetParam(name, kParamInt, NLEParamValue::Int(value));
    }
    void GiveText(TextPath* path) {
        effect->SetParam("TextPath", kParamPointer, NLEParamValue::Pointer(path));
    }
    /// Draws a frame and says how often the mesh was handed over up to now.
    int MeshesAfterFrame() {
        EXPECT_EQ(test::DrawFrame(*effect, position++, test::RecordOf(clip)), kFilterOk);
        return own->Count("AddVertexAttribute(position");
    }

    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    test::EffectRecord* own = nullptr;
    test::ScriptedText text;
    cv::Mat clip = cv::Mat::zeros(36, 64, CV_8UC4);
    int32_t position = 0;
};

TEST_F(SolidText, IsBuiltForANewTextOrShapeAndForNothingElse) {
    GiveText(&text);
    const int first = MeshesAfterFrame();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(MeshesAfterFrame(), first) << "the host's object is gone, the text stays";
    Give("Rotate_Y", 30.0F);
    Give("face_color", 0x123456);
    EXPECT_EQ(MeshesAfterFrame(), first) << "turned and painted";
    Give("BevelSegments", 9);
    EXPECT_EQ(MeshesAfterFrame(), first + 1) << "another shape";
    test::ScriptedText other = text;
    other.paths.pop_back();
    GiveText(&other);
    EXPECT_EQ(MeshesAfterFrame(), first + 2) << "another text";
    EXPECT_TRUE(own->Has("SetUniformFloat(uContourNum, 1)"));
}

TEST_F(SolidText, WithoutAnOutlineDrawsNoPassOfItsOwn) {
    test::ScriptedText nothing;
    for (TextPath* const path :
         {static_cast<TextPath*>(nullptr), static_cast<TextPath*>(&nothing)}) {
        GiveText(path);
        EXPECT_EQ(MeshesAfterFrame(), 0);
        EXPECT_EQ(own->renderCount, 0);
    }
}

TEST_F(SolidText, DrawsAPassMoreForEachGlow) {
    GiveText(&text);
    MeshesAfterFrame();
    const struct {
        int32_t boom, globalBoom;
        int passes;
    } cases[] = {{0, 0, 1}, {1, 0, 2}, {0, 1, 2}, {1, 1, 3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.boom << c.globalBoom);
        Give("enable_boom", c.boom);
        Give("enable_global_boom", c.globalBoom);
        const int before = own->renderCount;
        MeshesAfterFrame();
        EXPECT_EQ(own->renderCount - before, c.passes);
    }
    EXPECT_EQ(own->Count("SetRenderTarget(0"), 2) << "behind what glows";
    EXPECT_EQ(own->Count("SetRenderTarget(1"), 2) << "behind what glows far around";
}

TEST_F(SolidText, WithHostDecorationIsFlatAndStill) {
    text.hasDecoration = text.hasBox = true;
    GiveText(&text);
    Give("AnimationType", 3);
    MeshesAfterFrame();
    EXPECT_THAT(own->variants, testing::ElementsAre(0, 0));
    EXPECT_EQ(own->blendMode, kBlendOver);
}

}  // namespace
}  // namespace kelmo
