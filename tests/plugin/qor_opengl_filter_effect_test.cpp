// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/qor_opengl_filter_effect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "framework/filter/filter_guids.h"
#include "framework/filter/nle_opengl_combine_filter.h"
#include "tests/support/engine_session.h"
#include "tests/support/fake_render_context.h"
#include "tests/support/filter_descriptions.h"
#include "tests/support/recording_host.h"

namespace kelmo {
namespace {

using test::MakeInfo;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A filter that keeps what arrives.
class ProbeFilter : public NLEOpenGLCombineFilter {
public:
    using NLEOpenGLCombineFilter::NLEOpenGLCombineFilter;
    int32_t DoEffect(const FrameRecord& s, const FrameRecord& f, FrameRecord& o, int32_t w,
                     int32_t h, int32_t st) override {
        second = s;
        first = f;
        out = o;
        if (throws) throw std::runtime_error("a broken frame");
        return NLEOpenGLCombineFilter::DoEffect(s, f, o, w, h, st);
    }
    int32_t InitEffect() override {
        if (throws) throw std::runtime_error("a broken start");
        return NLEOpenGLCombineFilter::InitEffect();
    }
    void NeedCpuFrames() { needCpuFrame = 1; }
    int32_t AudioSamples() const { return audioSamples; }
    int32_t AudioFormat() const { return audioFormat; }
    const void* AudioData() const { return audioData; }

    FrameRecord second, first, out;
    bool throws = false;
};

class EffectObjectTest : public ::testing::Test {
protected:
    EffectObjectTest() {
        context.first = &input;
        context.output = &output;
        effect.SetFilter(filter);
    }
    ~EffectObjectTest() override {
        effect.ReleaseResource(nullptr);
        filter.reset();
        SetOpenGLDevice(false);
    }

    test::AcquiredHost host;
    test::EngineSession engine;
    test::FakeRenderContext context;
    test::FakeFrame input{32, 16};
    test::FakeFrame output{32, 16};
    std::shared_ptr<NLEFilterInfo> info = MakeInfo("probe", "Probe");
    std::shared_ptr<ProbeFilter> filter = std::make_shared<ProbeFilter>(info);
    QorOpenglFilterEffect effect{info};
};

TEST_F(EffectObjectTest, WithoutAFilterNothingRuns) {
    QorOpenglFilterEffect empty(info);
    EXPECT_EQ(empty.SetFilter(nullptr), 4);
    EXPECT_EQ(empty.PrepareResource(&context), 4);
    EXPECT_EQ(empty.SyncFrame(&context), 0);
    EXPECT_EQ(empty.GLRender(&context), 4);
    EXPECT_EQ(empty.Reserved1(nullptr) + empty.Reserved2(nullptr) + empty.Reserved3(nullptr) +
                  empty.Reserved4(nullptr),
              0);
    empty.ReleaseResource(nullptr);
    EXPECT_THAT(host.Lines(), IsEmpty());
}

TEST_F(EffectObjectTest, PreparationTellsTheHostWhetherPixelsAreReadAndRunsOnce) {
    filter->NeedCpuFrames();
    EXPECT_EQ(effect.PrepareResource(&context), 0);
    EXPECT_EQ(context.needCpuFrame, true);
    context.needCpuFrame.reset();
    EXPECT_EQ(effect.PrepareResource(&context), 4);
    EXPECT_EQ(context.needCpuFrame, true);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("PrepareResource:multiple initialization"));
    EXPECT_EQ(effect.SyncFrame(&context), 0);
    EXPECT_EQ(effect.GLRender(&context), 0) << "still prepared";
}

TEST_F(EffectObjectTest, AMissingEngineMayComeLaterAnyOtherFailureReleases) {
    SetEngineForTesting(nullptr);
    SetEngineFolderForTesting("/nowhere");
    EXPECT_EQ(effect.PrepareResource(&context), 4);
    SetEngineFolderForTesting("");
    SetEngineForTesting(&engine);
    EXPECT_EQ(effect.PrepareResource(&context), 0);

    QorOpenglFilterEffect other(info);
    other.SetFilter(std::make_shared<ProbeFilter>(info));
    engine.failProgram = true;
    EXPECT_EQ(other.PrepareResource(&context), 4);
    engine.failProgram = false;
    EXPECT_EQ(other.PrepareResource(&context), 4);
    EXPECT_EQ(other.GLRender(&context), 4);
    EXPECT_FALSE(engine.Effects().back()->alive);
}

TEST_F(EffectObjectTest, TheFrameRateIsTheIntegerQuotient) {
    struct {
        int64_t numerator, denominator;
        float expected;
    } const cases[] = {{25, 1, 25.0F}, {30000, 1001, 29.0F}, {24, 0, 24.0F}, {24, -3, 24.0F},
                       {0, 0, 25.0F},  {1, 2, 25.0F}};  // none that counts: 25
    for (const auto& c : cases) {
        context.rateNumerator = c.numerator;
        context.rateDenominator = c.denominator;
        context.position = 12;
        context.duration = 34;
        EXPECT_EQ(effect.SyncFrame(&context), 0);
        EXPECT_EQ(filter->GetFrameRate(), c.expected);
        EXPECT_EQ(filter->GetPosition(), 12);
        EXPECT_EQ(filter->GetDuration(), 34);
    }
}

TEST_F(EffectObjectTest, HostFramesBecomeRecords) {
    int surfaces[3] = {};
    host.surfaceTextures = {{&surfaces[0], 41}, {&surfaces[1], 42}, {&surfaces[2], 43}};
    struct {
        const char* what;
        bool pixels;
        void* surface;
        int32_t tag, texture;
        uint8_t isCpu;
        bool inputPixels, outputPixels;
        int32_t width;
    } const cases[] = {
        {"pixels", true, nullptr, 0, 0, 1, true, true, 32},
        {"surface", false, &surfaces[0], -1, 41, 0, false, false, 32},
        {"surface with pixels", true, &surfaces[0], -1, 41, 0, true, false, 32},
        {"neither", false, nullptr, 0, 0, 1, false, false, 0},
    };
    effect.PrepareResource(&context);
    for (const auto& c : cases) {
        for (test::FakeFrame* frame : {&input, &output}) {
            frame->hasPixels = c.pixels;
            frame->surface = c.surface;
        }
        effect.GLRender(&context);
        for (const FrameRecord* record : {&filter->first, &filter->out}) {
            EXPECT_EQ(record->tag, c.tag) << c.what;
            EXPECT_EQ(record->texture, c.texture) << c.what;
            EXPECT_EQ(record->isCpu, c.isCpu) << c.what;
            EXPECT_EQ(record->width, c.width) << c.what;
            EXPECT_EQ(record->renderable, 1) << c.what;
            EXPECT_EQ(record->channels, 4) << c.what;
        }
        EXPECT_EQ(filter->first.pixels, c.inputPixels ? input.pixels.data() : nullptr) << c.what;
        EXPECT_EQ(filter->out.pixels, c.outputPixels ? output.pixels.data() : nullptr) << c.what;
        EXPECT_EQ(filter->second.pixels, nullptr);
        EXPECT_EQ(filter->second.width, 0);
    }
}

TEST_F(EffectObjectTest, TheFirstFrameBringsTheFilterToItsSize) {
    effect.PrepareResource(&context);
    EXPECT_EQ(engine.Effect(0).width, 16);
    EXPECT_EQ(effect.GLRender(&context), 0);
    EXPECT_EQ(engine.Effect(0).width, 32);
    EXPECT_EQ(engine.Effect(0).stride, 128);
    EXPECT_EQ(effect.GLRenderAlt(&context), 0);
    EXPECT_EQ(engine.Effect(0).Count("Resize"), 1);
    EXPECT_EQ(engine.Effect(0).renderCount, 2);
}

TEST_F(EffectObjectTest, AnUnpreparedFilterStillRenders) {
    EXPECT_EQ(effect.GLRender(&context), 0);
}

TEST_F(EffectObjectTest, FailuresOfAFrameAreReported) {
    effect.PrepareResource(&context);
    engine.failResize = true;
    EXPECT_EQ(effect.GLRender(&context), 4);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("GLRender:Prepare failed!"));
    engine.failResize = false;
    EXPECT_EQ(effect.GLRender(&context), 0);
    engine.failRender = true;
    EXPECT_EQ(effect.GLRender(&context), 4);
    engine.failRender = false;
    context.output = nullptr;
    EXPECT_EQ(effect.GLRender(&context), 4);
    EXPECT_EQ(effect.GLRender(nullptr), 4);
    EXPECT_EQ(effect.SyncFrame(nullptr), 0);
}

TEST_F(EffectObjectTest, NoExceptionOfAnEffectReachesTheHost) {
    effect.PrepareResource(&context);
    filter->throws = true;
    EXPECT_EQ(effect.GLRender(&context), 4);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("kelmo:GLRender: a broken frame"));
    filter->throws = false;
    EXPECT_EQ(effect.GLRender(&context), 0);

    QorOpenglFilterEffect other(info);
    auto broken = std::make_shared<ProbeFilter>(info);
    broken->throws = true;
    other.SetFilter(broken);
    EXPECT_EQ(other.PrepareResource(&context), 4);
    EXPECT_EQ(other.GLRender(&context), 4) << "released";
}

TEST_F(EffectObjectTest, TheAiObjectOfAFrameReplacesTheOneBefore) {
    int object = 0;
    effect.PrepareResource(&context);
    context.aiTransfer = &object;
    effect.GLRender(&context);
    EXPECT_EQ(static_cast<void*>(filter->GetAiTransfer()), &object);
    context.aiTransfer = nullptr;
    effect.GLRender(&context);
    EXPECT_EQ(filter->GetAiTransfer(), nullptr);
}

TEST_F(EffectObjectTest, SoundOrSilenceReachesAFilterWithAudio) {
    info->hasAudio = 1;
    effect.PrepareResource(&context);
    effect.GLRender(&context);
    EXPECT_EQ(filter->AudioSamples(), 1764);
    EXPECT_EQ(filter->AudioFormat(), 7);
    ASSERT_NE(filter->AudioData(), nullptr);
    EXPECT_EQ(static_cast<const uint8_t*>(filter->AudioData())[7055], 0);

    test::FakeAudio audio;
    audio.samples.resize(2 * 100);
    context.audio = &audio;
    struct {
        int32_t given, arrives;
    } const formats[] = {{2, 2}, {10, 10}, {11, 7}, {-1, -1}};
    for (const auto& format : formats) {
        audio.format = format.given;
        effect.GLRender(&context);
        EXPECT_EQ(filter->AudioFormat(), format.arrives);
        EXPECT_EQ(filter->AudioSamples(), 100);
        EXPECT_EQ(filter->AudioData(), audio.samples.data());
    }
}

TEST_F(EffectObjectTest, WithADeviceFramesOfAnotherThreadAreRefused) {
    SetOpenGLDevice(true);
    EXPECT_EQ(effect.GLRender(&context), 4) << "never prepared on any thread";
    effect.PrepareResource(&context);
    EXPECT_EQ(effect.GLRender(&context), 0);
    host.ClearLines();
    filter->first = FrameRecord();
    int32_t result = 0;
    std::thread([&] { result = effect.GLRender(&context); }).join();
    EXPECT_EQ(result, 4);
    EXPECT_EQ(filter->first.pixels, nullptr) << "nothing of the frame was done";
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("GLRender:ThreadID is changed!"));
    EXPECT_EQ(effect.GLRender(&context), 0);

    SetOpenGLDevice(false);
    std::thread([&] { result = effect.GLRender(&context); }).join();
    EXPECT_EQ(result, 0) << "without a device the thread does not matter";
}

TEST_F(EffectObjectTest, TheCornerPinStepRunsForItsFilterAlone) {
    const auto pinInfo = MakeInfo(kCornerPinGuid);
    const auto pin = std::make_shared<NLEOpenGLFilter>(pinInfo);
    QorOpenglFilterEffect pinEffect(pinInfo);
    pinEffect.SetFilter(pin);
    pinEffect.SyncFrame(&context);
    EXPECT_NE(pin->FindParam("cornerpin_roiw"), nullptr);
    effect.SyncFrame(&context);
    EXPECT_EQ(filter->FindParam("cornerpin_roiw"), nullptr);
}

}  // namespace
}  // namespace kelmo
