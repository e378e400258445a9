// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/nle_opengl_filter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/engine_session.h"
#include "tests/support/filter_descriptions.h"
#include "tests/support/recording_host.h"
#include "tests/support/temporary_folder.h"

namespace kelmo {
namespace {

using test::AddParam;
using test::MakeInfo;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

FrameRecord GpuFrame(int32_t texture, int32_t width, int32_t height) {
    FrameRecord record = FrameRecord::TargetLess(width, height, width * 4);
    record.tag = -1;
    record.texture = texture;
    record.isCpu = 0;
    return record;
}

FrameRecord CpuFrame(std::vector<uint8_t>& pixels, int32_t width, int32_t height) {
    pixels.resize(static_cast<std::size_t>(width * height * 4));
    FrameRecord record = FrameRecord::TargetLess(width, height, width * 4);
    record.pixels = pixels.data();
    return record;
}

class FilterTest : public ::testing::Test {
protected:
    test::AcquiredHost host;
    test::EngineSession engine;
    std::shared_ptr<NLEFilterInfo> info = MakeInfo("guid", "Plain");
    FrameRecord none;
    FrameRecord out = FrameRecord::TargetLess(64, 32, 256);
};

TEST_F(FilterTest, DeclaresInputsThenCommonUniformsThenParameters) {
    AddParam(*info, "amount", NLEParamValue::Float(0.5F));
    AddParam(*info, "steps", NLEParamValue::Int(3));
    AddParam(*info, "precise", NLEParamValue::Double(1.0));
    info->transition = 1;
    NLEOpenGLFilter filter(info);
    ASSERT_EQ(filter.InitEffect(), kFilterOk);
    EXPECT_THAT(
        engine.Effect(0).Calls(),
        ElementsAre("AddInputTexture(16, 16, 64, true)", "AddInputTexture(16, 16, 64, true)",
                    "AddUniformFloat(global_time, 0)", "AddUniformFloat(total_time, 0)",
                    "AddUniformFloat(fade, 1)", "AddUniformFloat(current_pos, 0)",
                    "AddUniformFloat(total_len, 1)", "AddUniformFloat(frame_rate, 25)",
                    "AddUniformVec4(orig_roi, 0, 0, 1, 1)",
                    "AddUniformVec4(result_roi, 0, 0, 1, 1)", "AddUniformFloat(roi_angle, 0)",
                    "AddUniformFloat(amount, 0.5)", "AddUniformInt(steps, 3)",
                    "CreateProgram(self)"));
}

TEST_F(FilterTest, ADerivedClassDeclaresBeforeTheInputs) {
    struct Declaring : NLEOpenGLFilter {
        using NLEOpenGLFilter::NLEOpenGLFilter;
        int32_t InitParams() override {
            engine->AddRenderTarget();
            return 0;
        }
    } filter(info);
    ASSERT_EQ(filter.InitEffect(), kFilterOk);
    EXPECT_EQ(engine.Effect(0).Calls()[0], "AddRenderTarget()");
    EXPECT_EQ(engine.Effect(0).Calls()[1], "AddInputTexture(16, 16, 64, true)");
}

TEST_F(FilterTest, HandsTheDescriptionToTheEngine) {
    info->hasVertex = 1;
    info->vertexPath = "a.vert";
    info->encrypt = 2;
    info->fragmentExterns = {{"x", "y"}};
    struct Smooth : NLEOpenGLFilter {
        explicit Smooth(std::shared_ptr<NLEFilterInfo> i) : NLEOpenGLFilter(std::move(i)) {
            engineFlag = 1;
        }
    } filter(info);
    filter.InitEffect();
    const test::EffectRecord& effect = engine.Effect(0);
    EXPECT_EQ(effect.fragmentPath, "guid.frag");
    EXPECT_EQ(effect.vertexPath, "a.vert");
    EXPECT_EQ(effect.encrypt, 2);
    EXPECT_TRUE(effect.multisample);
    EXPECT_THAT(effect.fragmentExterns, ElementsAre(ElementsAre("x", "y")));
    EXPECT_EQ(effect.width, 16);
    EXPECT_EQ(effect.stride, 64);
}

TEST_F(FilterTest, MaterialSlotsAreDeclaredAsMaterialOnlyWhenTheyHoldAPicture) {
    const test::TemporaryFolder folder;
    // Portable grey maps: the smallest files that a decoder takes.
    info->AddTexture(0, folder.Write("real.pgm", "P5 3 1 255\n\x10\x20\x30"));
    info->AddTexture(1, folder.Write("tiny.pgm", "P5 2 2 255\n\x10\x20\x30\x40"));
    info->AddTexture(2, folder.Path("missing.png"));
    info->textureCount = 3;
    NLEOpenGLFilter filter(info);
    ASSERT_EQ(filter.InitEffect(), kFilterOk);
    EXPECT_THAT(
        engine.Effect(0).Calls("AddInputTexture"),
        ElementsAre("AddInputTexture(16, 16, 64, true)", "AddInputTexture(16, 16, 64, false)",
                    "AddInputTexture(16, 16, 64, true)", "AddInputTexture(16, 16, 64, true)"));
    engine.ClearCalls();
    ASSERT_EQ(filter.DoEffect(none, GpuFrame(7, 64, 32), out, 64, 32, 256), kFilterOk);
    EXPECT_THAT(engine.Effect(0).Calls("SetInput"),
                ElementsAre("SetInputTexture(0, 7, 64, 32, 256)",
                            "SetInputMaterial(1, pixels, 3, 1, 12, 4, 0, 0)",
                            "SetInputMaterial(2, pixels, 2, 2, 8, 4, 0, 0)",
                            "SetInputMaterial(3, null, 0, 0, 0, 4, 0, 0)"));
}

TEST_F(FilterTest, AFrameGoesThroughInputsTimeParametersAndRender) {
    AddParam(*info, "amount", NLEParamValue::Float(0.5F));
    info->transition = 1;
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    filter.SetPosition(10);
    filter.SetDuration(50);
    filter.SetFrameRate(20.0F);
    engine.ClearCalls();
    std::vector<uint8_t> pixels;
    ASSERT_EQ(filter.DoEffect(CpuFrame(pixels, 64, 32), GpuFrame(9, 64, 32), out, 64, 32, 256), 0);
    EXPECT_THAT(
        engine.Effect(0).Calls(),
        ElementsAre("SetInputTexture(0, 9, 64, 32, 256)",
                    "SetInputImage(1, pixels, 64, 32, 256, 4)", "SetUniformFloat(global_time, 0.5)",
                    "SetUniformFloat(total_time, 2.5)", "SetUniformFloat(current_pos, 0.5)",
                    "SetUniformFloat(total_len, 2.5)", "SetUniformFloat(frame_rate, 20)",
                    "SetUniformFloat(amount, 0.5)", "Render(no picture, self)"));
}

TEST_F(FilterTest, AnAbsentFirstClipLeavesItsSlotToTheNext) {
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    engine.ClearCalls();
    filter.DoEffect(GpuFrame(5, 8, 8), none, out, 64, 32, 256);
    EXPECT_THAT(engine.Effect(0).Calls("SetInput"), ElementsAre("SetInputTexture(0, 5, 8, 8, 32)"));
}

TEST_F(FilterTest, ResizeTouchesTheEngineOnlyWhenASizeDiffers) {
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    engine.ClearCalls();
    struct {
        int32_t width, height, stride;
        bool changes;
    } const cases[] = {{16, 16, 64, false},
                       {32, 16, 128, true},
                       {32, 16, 128, false},
                       {32, 8, 128, true},
                       {32, 8, 160, true}};
    for (const auto& c : cases) {
        engine.ClearCalls();
        EXPECT_EQ(filter.Resize(c.width, c.height, c.stride), kFilterOk);
        EXPECT_EQ(filter.SizeChanged(), c.changes);
        EXPECT_EQ(engine.Effect(0).Count("Resize"), c.changes ? 1 : 0);
    }
}

TEST_F(FilterTest, ResizeOfAFilterThatWasNeverPreparedMakesItsEngineSide) {
    NLEOpenGLFilter filter(info);
    EXPECT_EQ(filter.Resize(64, 32, 256), kFilterOk);
    ASSERT_EQ(engine.Effects().size(), 1U);
    EXPECT_EQ(engine.Effect(0).width, 64);
}

TEST_F(FilterTest, FailuresAreReportedAndLeaveTheStateThatIsPromised) {
    {
        NLEOpenGLFilter filter(info);
        EXPECT_EQ(filter.DoEffect(none, none, out, 64, 32, 256), kFilterFailed) << "no engine side";
        engine.failCreateEffect = true;
        EXPECT_EQ(filter.InitEffect(), kFilterFailed);
        EXPECT_EQ(filter.Engine(), nullptr);
        EXPECT_THAT(host.Texts(kLogError), IsEmpty());
    }
    engine.failCreateEffect = false;
    {
        NLEOpenGLFilter filter(info);
        engine.failProgram = true;
        EXPECT_EQ(filter.InitEffect(), kFilterFailed);
        EXPECT_NE(filter.Engine(), nullptr);
        EXPECT_THAT(host.Texts(kLogError),
                    ElementsAre("kelmo:CreateEffect Create OpenGL Effect Failed: Plain"));
    }
    engine.failProgram = false;
    host.ClearLines();
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    engine.failResize = true;
    EXPECT_EQ(filter.Resize(32, 32, 128), kFilterFailed);
    EXPECT_TRUE(filter.SizeChanged());
    engine.failRender = true;
    EXPECT_EQ(filter.DoEffect(none, none, out, 64, 32, 256), kFilterFailed);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("kelmo:DoEffect Failed: Plain"));
    engine.failRender = false;
    EXPECT_EQ(filter.DoEffect(none, none, out, 64, 32, 256), kFilterOk) << "the next frame";
}

TEST(FilterWithoutEngineTest, InitEffectSaysThatThereIsNoEngine) {
    test::AcquiredHost host;
    SetEngineFolderForTesting("/nowhere");
    NLEOpenGLFilter filter(MakeInfo("guid"));
    EXPECT_EQ(filter.InitEffect(), kFilterNoEngine);
    EXPECT_EQ(host.Texts(kLogError).back(),
              "kelmo::InitEffect CreateNLEOpenGLEffectEngineInstance is failed!");
    SetEngineFolderForTesting("");
}

TEST_F(FilterTest, TheEngineSideDiesWithTheFilter) {
    {
        NLEOpenGLFilter filter(info);
        filter.InitEffect();
        EXPECT_TRUE(engine.Effect(0).alive);
    }
    EXPECT_FALSE(engine.Effect(0).alive);
}

TEST_F(FilterTest, ParametersAreDeepCopies) {
    AddParam(*info, "amount", NLEParamValue::Float(0.5F));
    NLEOpenGLFilter one(info);
    NLEOpenGLFilter two(info);
    one.InitEffect();
    two.InitEffect();
    EXPECT_EQ(one.SetParam("amount", kParamFloat, NLEParamValue::Float(2.0F)), 0);
    EXPECT_EQ(one.FloatOr("amount", 0.0F), 2.0F);
    EXPECT_EQ(two.FloatOr("amount", 0.0F), 0.5F);
}

TEST_F(FilterTest, AnUnknownNameIsRememberedOnceAndLaterSetSentUndeclared) {
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    NLEParamValue value;
    EXPECT_FALSE(filter.FindParamValue("late", value));
    EXPECT_FALSE(filter.FindParamValue("late", value));
    EXPECT_THAT(filter.RequestedParams(), ElementsAre("late"));
    EXPECT_EQ(filter.SetParam("late", kParamInt, NLEParamValue::Int(4)), 1);
    EXPECT_TRUE(filter.FindParamValue("late", value));
    EXPECT_EQ(value.AsInt(), 4);
    filter.DoEffect(none, none, out, 64, 32, 256);
    EXPECT_TRUE(engine.Effect(0).Has("SetUniformInt(late, 4)"));
    EXPECT_THAT(engine.Effect(0).Calls("AddUniformInt(late"), IsEmpty());
}

TEST_F(FilterTest, FindParamRangeGivesTheLimits) {
    AddParam(*info, "amount", NLEParamValue::Float(0.5F), NLEParamValue::Float(-1.0F),
             NLEParamValue::Float(2.0F));
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    NLEParamValue value, minimum, maximum;
    ASSERT_TRUE(filter.FindParamRange("amount", value, minimum, maximum));
    EXPECT_EQ(value.AsFloat(), 0.5F);
    EXPECT_EQ(minimum.AsFloat(), -1.0F);
    EXPECT_EQ(maximum.AsFloat(), 2.0F);
    EXPECT_FALSE(filter.FindParamRange("other", value, minimum, maximum));
    EXPECT_THAT(filter.RequestedParams(), ElementsAre("other"));
}

TEST_F(FilterTest, ATextLosesItsFilePrefixAndANumberKeepsItsType) {
    NLEOpenGLFilter filter(info);
    filter.SetParam("path", kParamText, NLEParamValue::Text("file:/a/b"));
    filter.SetParam("count", kParamInt, NLEParamValue::Float(3.7F));
    EXPECT_STREQ(filter.FindParam("path")->value.AsText(), "a/b");
    EXPECT_EQ(filter.FindParam("path")->value.text, "file:/a/b");
    EXPECT_EQ(filter.FindParam("count")->value.AsFloat(), 3.7F);
    EXPECT_EQ(filter.IntOr("count", 0), 3);
}

TEST_F(FilterTest, TheFrameRateIsThatOfTheTopmostOwner) {
    NLEOpenGLFilter top(info), middle(info), bottom(info);
    bottom.SetParent(&middle);
    middle.SetParent(&top);
    top.SetFrameRate(50.0F);
    bottom.SetPosition(25);
    EXPECT_EQ(bottom.GetFrameRate(), 50.0F);
    EXPECT_EQ(bottom.Time().position, 0.5F);
}

TEST_F(FilterTest, GetMatTellsThreeKindsOfFrames) {
    std::vector<uint8_t> pixels;
    const FrameRecord cpu = CpuFrame(pixels, 4, 3);
    FrameRecord grey = cpu;
    grey.channels = 1;
    FrameRecord both = GpuFrame(3, 4, 3);
    both.pixels = pixels.data();
    struct {
        const char* what;
        FrameRecord frame;
        cv::Size size;
        int type;
        bool shares;
        bool needsCpu;
    } const cases[] = {{"pixels", cpu, {4, 3}, CV_8UC4, true, true},
                       {"grey", grey, {4, 3}, CV_8UC1, true, true},
                       {"texture with pixels", both, {4, 3}, CV_8UC4, true, true},
                       {"texture alone", GpuFrame(3, 4, 3), {4, 3}, CV_8UC4, false, true},
                       {"nothing", FrameRecord(), {0, 0}, CV_8UC4, false, false}};
    for (const auto& c : cases) {
        NLEOpenGLFilter filter(info);
        cv::Mat mat;
        filter.GetMat(mat, c.frame);
        EXPECT_EQ(mat.size(), c.size) << c.what;
        EXPECT_EQ(mat.type(), c.type) << c.what;
        EXPECT_EQ(mat.data == pixels.data(), c.shares) << c.what;
        EXPECT_EQ(filter.NeedsCpuFrame(), c.needsCpu) << c.what;
    }
}

TEST_F(FilterTest, GetMatOfAGpuFrameWarnsFromTheSecondTimeOn) {
    NLEOpenGLFilter filter(info);
    cv::Mat mat;
    filter.GetMat(mat, GpuFrame(3, 4, 3));
    EXPECT_THAT(host.Texts(kLogWarning), IsEmpty());
    filter.GetMat(mat, GpuFrame(3, 4, 3));
    EXPECT_THAT(host.Texts(kLogWarning), ElementsAre("GetMat: OpenGL Effect Need Cpu Frame"));
}

TEST_F(FilterTest, GetMatRefusesRowsThatAreTooShort) {
    NLEOpenGLFilter filter(info);
    std::vector<uint8_t> pixels;
    FrameRecord frame = CpuFrame(pixels, 4, 3);
    frame.stride = 15;
    cv::Mat mat;
    filter.GetMat(mat, frame);
    EXPECT_TRUE(mat.empty());
    EXPECT_EQ(host.Texts(kLogError).size(), 1U);
}

TEST_F(FilterTest, AFilterWithoutAudioRefusesSamples) {
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    EXPECT_EQ(filter.SetAudioInput(2, 4, 16, 7, nullptr), kFilterFailed);
    filter.DoEffect(none, none, out, 64, 32, 256);
    EXPECT_EQ(engine.Effect(0).Count("AddAudioBuffer"), 0);
    EXPECT_EQ(engine.Effect(0).Count("SetAudioBuffer"), 0);
}

TEST_F(FilterTest, AFilterWithAudioSendsASpectrumAndAsksForItsType) {
    info->hasAudio = 1;
    NLEOpenGLFilter filter(info);
    filter.InitEffect();
    EXPECT_EQ(engine.Effect(0).Count("AddAudioBuffer"), 1);
    EXPECT_TRUE(engine.Effect(0).Has("AddUniformFloat(audio_intensity, 0)"));
    std::vector<int16_t> samples(2 * 1764, 12000);
    EXPECT_EQ(filter.SetAudioInput(2, 1764, 7056, 7, samples.data()), kFilterOk);
    filter.DoEffect(none, none, out, 64, 32, 256);
    EXPECT_THAT(engine.Effect(0).Calls("SetAudioBuffer"), ElementsAre("SetAudioBuffer(1, 2048)"));
    EXPECT_GT(engine.Effect(0).UniformFloat("audio_intensity"), 0.0F);
    EXPECT_THAT(filter.RequestedParams(), ElementsAre("audio_type"));
}

TEST_F(FilterTest, AudioTypeOneNarrowsTheBandAndOtherTypesTakeTheParameters) {
    // A bin is 22050 / 2048 Hz wide: 15000 Hz lie in bin 1393, 1000 Hz in bin 92, and one more bin
    // is taken at the end.
    struct {
        int32_t type;
        float frequencyMax;
        int bins;
    } const cases[] = {{1, 1000.0F, 1395}, {0, 1000.0F, 94}};
    for (const auto& c : cases) {
        auto audio = MakeInfo("audio");
        audio->hasAudio = 1;
        AddParam(*audio, "audio_type", NLEParamValue::Int(c.type));
        AddParam(*audio, "frequency_max", NLEParamValue::Float(c.frequencyMax));
        NLEOpenGLFilter filter(audio);
        filter.InitEffect();
        std::vector<int16_t> samples(2 * 1764);
        filter.SetAudioInput(2, 1764, 7056, 7, samples.data());
        filter.DoEffect(none, none, out, 64, 32, 256);
        EXPECT_THAT(engine.Effects().back()->Calls("SetAudioBuffer"),
                    ElementsAre("SetAudioBuffer(1, " + std::to_string(c.bins) + ")"));
        EXPECT_THAT(filter.RequestedParams(), IsEmpty());
    }
}

}  // namespace
}  // namespace kelmo
