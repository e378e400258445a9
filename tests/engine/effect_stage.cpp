// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect_stage.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace kelmo::test {

std::mutex EngineLogLines::mutex;
std::string EngineLogLines::lines;

void EngineLogLines::Callback(int32_t level, const char* format, va_list args) {
    char text[4096];
    std::vsnprintf(text, sizeof text, format, args);
    if (level < kLogWarning) return;
    const std::lock_guard lock(mutex);
    lines += text;
    lines += '\n';
}

std::string EngineLogLines::Take() {
    const std::lock_guard lock(mutex);
    return std::exchange(lines, {});
}

EffectStage::EffectStage() : engine(MakeOwnContextEngine(EngineLogLines::Callback)) {
    EXPECT_TRUE(engine) << "no EGL device on this machine: " << EngineLogLines::Take();
    EngineLogLines::Take();
}

EffectPointer EffectStage::MakeUnbuilt(int width, int height, const std::string& fragment,
                                       const std::string& vertex, bool multisample) {
    const std::string stem = "material/shader" + std::to_string(files++);
    const std::string fragmentPath = folder.Write(stem + ".frag", fragment);
    const std::string vertexPath = vertex.empty() ? "" : folder.Write(stem + ".vert", vertex);
    EffectPointer effect;
    engine->CreateEngineEffect(width, height, width * 4, multisample, fragmentPath.c_str(), effect,
                               0, vertexPath.c_str(), {}, {});
    EXPECT_TRUE(effect) << EngineLogLines::Take();
    return effect;
}

void EffectStage::Build(const EffectPointer& effect) {
    EXPECT_EQ(effect->CreateProgram(effect), 0) << EngineLogLines::Take();
}

FrameRecord TargetOf(Pixels& pixels, int width, int height) {
    pixels.resize(static_cast<size_t>(width) * height);
    FrameRecord target = FrameRecord::TargetLess(width, height, width * 4);
    target.pixels = pixels.data();
    return target;
}

Pixels RenderPixels(const EffectPointer& effect) {
    Pixels pixels;
    FrameRecord target = TargetOf(pixels, effect->GetWidth(), effect->GetHeight());
    EXPECT_EQ(effect->Render(target, effect, 0), 0) << EngineLogLines::Take();
    return pixels;
}

void RenderInside(const EffectPointer& effect) {
    FrameRecord target =
        FrameRecord::TargetLess(effect->GetWidth(), effect->GetHeight(), effect->GetStride());
    EXPECT_EQ(effect->Render(target, effect, 0), 0) << EngineLogLines::Take();
}

Pixels PixelsOf(const EffectPointer& effect, const FrameRecord& frame) {
    Pixels pixels(static_cast<size_t>(frame.width) * frame.height);
    EXPECT_TRUE(effect->ReadTexture(frame.texture, frame.width, frame.height, frame.width * 4,
                                    pixels.data()))
        << EngineLogLines::Take();
    return pixels;
}

void SetImage(const EffectPointer& effect, int slot, const Pixels& pixels, int width, int height) {
    effect->SetInputImage(slot, pixels.data(), width, height, width * 4, 4, false, 0);
}

Pixels Filled(int count, Pixel pixel) {
    return Pixels(static_cast<size_t>(count), pixel);
}

}  // namespace kelmo::test
