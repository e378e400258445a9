// SPDX-License-Identifier: GPL-3.0-or-later
// A frame like the one before allocates nothing of ours.
#include <gtest/gtest.h>

#include "engine/effect/name_table.h"
#include "engine/effect_stage.h"
#include "support/allocation_count.h"

namespace kelmo::test {
namespace {

TEST(EngineSteadyFrame, AllocatesNothing) {
    EffectStage stage;
    const EffectPointer effect = stage.Make(8, 4, R"(
        uniform samplerBuffer points; uniform float amount; uniform vec4 color;
        void main() {
            fragColor = Input0(vTexCoord) * amount + Input1(vTexCoord) + color + AudioAt(0.5)
                + ArrayAt(points, 3) + global_time;
        })",
                                            "in vec4 position; in vec2 place; uniform mat4 turn;"
                                            "void main() { gl_Position = turn * position + "
                                            "vec4(place, 0, 0); vTexCoord = position.xy; }",
                                            [](NLEOpenGLEngineEffect& it) {
                                                it.AddAudioBuffer();
                                                it.AddRenderTarget();
                                            });
    Pixels input = Filled(32, kRed);
    std::vector<uint8_t> material(9 * 3 * 5, 7);
    std::vector<float> floats(400, 0.5f);
    std::vector<float> position = {-1, -1, 0, 1, 1, -1, 0, 1, 0, 1, 0, 1};
    Pixels output;
    FrameRecord target = TargetOf(output, 8, 4);
    const std::vector<int32_t> variants = {0, 0};
    int failures = 0;
    const auto frame = [&](float time) {
        SetImage(effect, 0, input, 8, 4);
        effect->SetInputMaterial(1, material.data(), 9, 5, 27, 4, false, 0, 0, 0);
        effect->SetUniformFloat("global_time", time);
        effect->SetUniformFloat("amount", time);
        effect->SetUniformFloat("a_name_that_the_shader_does_not_know", time);
        effect->SetUniformVec4("color", time, 0, 0, 1);
        effect->SetUniformMat4("turn", floats.data());
        effect->SetUniformArrayVec4("points", floats.data(), 100);
        effect->SetInstanceArrayVec2("place", floats.data(), 200);
        effect->SetAudioBuffer(0, 64, floats.data());
        effect->AddVertexAttribute("position", 4, position.data(), false, false);
        effect->SetVertexCount(3);
        effect->SetVariantIndices(variants);
        failures += effect->Render(target, effect, 0);
        effect->SetRenderTarget(0);
        const FrameRecord kept = effect->GetRenderTarget(0);
        effect->SetInputTexture(2, kept, kept.width, kept.height, kept.stride);
    };
    for (int i = 0; i < 4; ++i) frame(0.1f * static_cast<float>(i));
    const int64_t before = AllocationCount();
    for (int i = 0; i < 10; ++i) frame(0.1f * static_cast<float>(i));
    EXPECT_EQ(AllocationCount() - before, 0);
    EXPECT_EQ(failures, 0);
}

TEST(EngineNameTable, NumbersManyNamesInOrderAndFindsThem) {
    NameTable table;
    EXPECT_EQ(table.Find("x"), -1);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(table.FindOrAdd(("name" + std::to_string(i)).c_str()), i);
    }
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "name" + std::to_string(i);
        EXPECT_EQ(table.Find(name.c_str()), i);
        EXPECT_EQ(table.FindOrAdd(name.c_str()), i);
        EXPECT_EQ(table.Name(i), name);
    }
    EXPECT_EQ(table.Find("name1000"), -1);
    EXPECT_EQ(table.Count(), 1000);
}

}  // namespace
}  // namespace kelmo::test
