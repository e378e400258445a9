// SPDX-License-Identifier: GPL-3.0-or-later
// A frame in the steady state costs no memory: neither numbers, nor names that the host does not
// know, nor sound.
#include <gtest/gtest.h>

#include "plugin/qor_opengl_filter_effect.h"
#include "tests/support/allocation_count.h"
#include "tests/support/engine_session.h"
#include "tests/support/fake_render_context.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

/// Asks on every frame for a name that nobody has, as effects with optional parameters do.
class Asking : public NLEOpenGLFilter {
public:
    using NLEOpenGLFilter::NLEOpenGLFilter;
    int32_t DoEffect(const FrameRecord& s, const FrameRecord& f, FrameRecord& o, int32_t w,
                     int32_t h, int32_t st) override {
        NLEParamValue value;
        FindParamValue("a name that is longer than a short string holds", value);
        FloatOr("parameter number 3 with a long name", 0.0F);
        return NLEOpenGLFilter::DoEffect(s, f, o, w, h, st);
    }
};

TEST(SteadyFrameTest, AllocatesNothing) {
    test::EngineSession engine;
    engine.recording = false;
    test::FakeRenderContext context;
    context.recording = false;
    test::FakeFrame input(64, 32), output(64, 32);
    test::FakeAudio audio;
    context.first = &input;
    context.output = &output;
    context.audio = &audio;
    const auto info = test::MakeInfo("steady");
    info->hasAudio = 1;
    for (int i = 0; i < 20; ++i) {
        const std::string name = "parameter number " + std::to_string(i) + " with a long name";
        test::AddParam(*info, name, i % 2 ? NLEParamValue::Float(0.0F) : NLEParamValue::Int(0));
        context.values[name] = i % 2 ? test::HostFloat(1.0F) : test::HostInt(1);
    }
    QorOpenglFilterEffect effect(info);
    effect.SetFilter(std::make_shared<Asking>(info));
    ASSERT_EQ(effect.PrepareResource(&context), 0);
    const auto frame = [&] {
        ++context.position;
        ASSERT_EQ(effect.SyncFrame(&context), 0);
        ASSERT_EQ(effect.GLRender(&context), 0);
    };
    for (int warmUp = 0; warmUp < 3; ++warmUp) frame();
    const int64_t before = test::AllocationCount();
    for (int i = 0; i < 10; ++i) frame();
    EXPECT_EQ(test::AllocationCount(), before);
}

}  // namespace
}  // namespace kelmo
