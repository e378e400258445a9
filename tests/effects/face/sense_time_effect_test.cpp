// SPDX-License-Identifier: GPL-3.0-or-later
// What the face library is told, in which order, by the effects that hand their frames to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "bindings/sense_time_wrapper.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/effect_registry.h"
#include "tests/effects/support/material_effect.h"
#include "tests/support/filter_descriptions.h"
#include "tests/support/temporary_folder.h"

namespace kelmo {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kBeauty = "B1D49A3C-A157-498E-A2C7-B7B5CFFC201F";
constexpr const char* kSticker = "229F9594-88C7-47A1-A403-2197CEB05CA8";

/// A face library that writes down its calls.
struct Recording {
    std::vector<std::string> calls;
    std::map<int32_t, float> strengths;
    std::string package;
    FaceSdkTexture input;
    FaceSdkTexture output;
    std::vector<double> timestamps;
    int32_t faces = 1;
    int32_t detectResult = 0;
    int32_t renderResult = 0;
};
Recording* recording = nullptr;
FaceSdkFace face;

void Note(std::string call) {
    recording->calls.push_back(std::move(call));
}

std::shared_ptr<THIRD_LIBRARY_IMPORT::SenseTimeSymbols> Double() {
    auto symbols = std::make_shared<THIRD_LIBRARY_IMPORT::SenseTimeSymbols>("double");
    symbols->st_mobile_set_external_opengl_lib_path = [](const char* name) {
        Note(std::string("library ") + name);
        return 0;
    };
    symbols->st_mobile_effect_create_handle = [](uint32_t reserved, void** handle) {
        Note("create " + std::to_string(reserved));
        *handle = recording;
        return 0;
    };
    symbols->st_mobile_effect_destroy_handle = [](void* handle) {
        Note(handle == recording ? "destroy" : "destroy nothing");
        return 0;
    };
    symbols->st_mobile_effect_set_beauty_param = [](void*, int32_t parameter, float value) {
        Note("param " + std::to_string(parameter) + " " + std::to_string(value).substr(0, 3));
        return 0;
    };
    symbols->st_mobile_effect_get_beauty_strength = [](void*, int32_t type, float* strength) {
        *strength = recording->strengths[type];
        return 0;
    };
    symbols->st_mobile_effect_set_beauty_strength = [](void*, int32_t type, float strength) {
        recording->strengths[type] = strength;
        Note("strength " + std::to_string(type));
        return 0;
    };
    symbols->st_mobile_human_action_create_from_buffer = [](const char*, int32_t size,
                                                            int32_t configuration, void** handle) {
        Note("model " + std::to_string(size) + " " + std::to_string(configuration));
        *handle = &face;
        return 0;
    };
    symbols->st_mobile_human_action_detect =
        [](void* handle, const void* pixels, int32_t format, int32_t width, int32_t height,
           int32_t stride, int32_t orientation, uint64_t configuration, FaceSdkResult* result) {
            EXPECT_EQ(handle, &face);
            EXPECT_NE(pixels, nullptr);
            EXPECT_EQ(stride, width * 4);
            EXPECT_EQ(orientation, 0);
            EXPECT_EQ(configuration, 1U);
            Note("detect " + std::to_string(format));
            *result = {&face, recording->faces, width, height};
            return recording->detectResult;
        };
    symbols->st_mobile_human_action_destroy = [](void* handle) {
        Note(handle == &face ? "end model" : "end nothing");
        return 0;
    };
    symbols->st_mobile_effect_render = [](void*, const FaceSdkRenderInput* input,
                                          FaceSdkRenderOutput* output) {
        Note("render");
        recording->input = *input->texture;
        recording->output = *output->texture;
        recording->timestamps.push_back(input->timestamp);
        return recording->renderResult;
    };
    symbols->st_mobile_effect_change_package_from_buffer = [](void*, const FaceSdkPackage* package,
                                                              int32_t* id) {
        EXPECT_EQ(id, nullptr);
        recording->package.assign(package->bytes, static_cast<std::size_t>(package->length));
        Note("package");
        return 0;
    };
    symbols->st_mobile_effect_release_cached_resource = [](void*) {
        Note("release cache");
        return 0;
    };
    return symbols;
}

/// Frames of 64 x 36 on the GPU whose pixels are there, too.
class FaceEffects : public ::testing::Test {
protected:
    FaceEffects() {
        recording = &calls;
        THIRD_LIBRARY_IMPORT::SetSenseTimeSymbolsForTesting(Double());
        testing::internal::CaptureStdout();
    }
    ~FaceEffects() override {
        effect.reset();
        printed = testing::internal::GetCapturedStdout();
        THIRD_LIBRARY_IMPORT::ForgetSenseTimeSymbolsForTesting();
        recording = nullptr;
    }

    void Make(const char* guid, EngineKind kind = EngineKind::kHost) {
        SetEngineForTesting(nullptr);
        SetEngineForTesting(&effects.Engine(), kind);
        effect = CreateFilter(test::MakeInfo(guid));
        ASSERT_EQ(effect->InitEffect(), kFilterOk);
        effect->Resize(64, 36, 256);
    }
    int32_t Draw() {
        FrameRecord first = test::RecordOf(clip);
        first.isCpu = 0;
        first.texture = 5;
        FrameRecord out = FrameRecord::TargetLess(64, 36, 256);
        out.isCpu = 0;
        out.texture = 6;
        calls.calls.clear();
        return effect->DoEffect({}, first, out, 64, 36, 256);
    }
    void SetInt(const char* name, int32_t value) {
        effect->SetParam(name, kParamInt, NLEParamValue::Int(value));
    }

    Recording calls;
    std::string printed;
    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar(10, 20, 30, 255));
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
};

TEST_F(FaceEffects, MakeTheirHandlesOnceAndEndThemOnce) {
    const struct {
        const char* guid;
        EngineKind kind;
        std::vector<std::string> calls;
    } cases[] = {{kBeauty, EngineKind::kHost, {"create 0", "param 0 1.0", "model 0 131072"}},
                 {kSticker, EngineKind::kHost, {"create 0", "release cache", "model 0 131072"}},
                 {kBeauty,
                  EngineKind::kMesa,
                  {"library MesaOpengl32.dll", "create 0", "param 0 1.0", "model 0 131072"}},
                 {kBeauty, EngineKind::kDx, {}}};
    for (const auto& c : cases) {
        calls.calls.clear();
        Make(c.guid, c.kind);
        EXPECT_EQ(calls.calls, c.calls);
        EXPECT_EQ(Draw(), c.kind == EngineKind::kDx ? kFilterFailed : kFilterOk);
        calls.calls.clear();
        effect.reset();
        const std::vector<std::string> ends = {"end model", "destroy"};
        EXPECT_EQ(calls.calls, c.calls.empty() ? std::vector<std::string>() : ends);
    }
}

TEST_F(FaceEffects, DetectThreeTimesAndTwiceThatWithoutAFace) {
    for (const char* guid : {kBeauty, kSticker}) {
        Make(guid);
        const std::string detect = guid == kBeauty ? "detect 6" : "detect 4";
        const std::vector<std::string> once = {detect, detect, detect, "render"};
        for (const int32_t faces : {1, 0, 2}) {
            calls.faces = faces;
            EXPECT_EQ(Draw(), kFilterOk);
            std::vector<std::string> expected = once;
            if (faces == 0) expected.insert(expected.end(), once.begin(), once.end());
            EXPECT_EQ(calls.calls, expected) << faces;
        }
        EXPECT_EQ(calls.input.id, 5);
        EXPECT_EQ(calls.output.id, 6);
        EXPECT_EQ(calls.output.format, guid == kBeauty ? 6 : 5);
        effect.reset();
    }
    const std::size_t drawn = calls.timestamps.size();
    EXPECT_EQ(calls.timestamps[drawn - 1] - calls.timestamps[drawn - 4], 3.0);
    EXPECT_EQ(calls.timestamps[0], 0.0);
}

TEST_F(FaceEffects, FailWithTheLibrary) {
    Make(kBeauty);
    calls.detectResult = -1;
    EXPECT_EQ(Draw(), kFilterFailed);
    EXPECT_THAT(calls.calls, SizeIs(3)) << "nothing is drawn";
    calls.detectResult = 0;
    calls.renderResult = -1;
    EXPECT_EQ(Draw(), kFilterFailed);
    calls.renderResult = 0;
    calls.faces = 0;
    EXPECT_EQ(Draw(), kFilterOk);
    effect.reset();
    THIRD_LIBRARY_IMPORT::SetSenseTimeSymbolsForTesting(nullptr);
    Make(kBeauty);
    EXPECT_EQ(Draw(), kFilterFailed);
    EXPECT_THAT(calls.calls, IsEmpty());
}

TEST_F(FaceEffects, SendAStrengthThatMoved) {
    Make(kBeauty);
    const struct {
        const char* name;
        int32_t percent;
        int32_t type;
        float before;
        float after;
        bool sent;
    } cases[] = {
        {"smooth_strength", 60, 103, 0.0F, 0.6F, true},
        {"smooth_strength", 60, 103, 0.6F, 0.6F, false},
        {"smooth_strength", 60, 103, 0.595F, 0.595F, false},
        {"smooth_strength", 60, 103, 0.58F, 0.6F, true},
        {"length_nose_ratio", 0, 307, 0.0F, -1.0F, true},
        {"length_nose_ratio", 50, 307, 0.0F, 0.0F, false},
        {"length_nose_ratio", 100, 307, 0.0F, 1.0F, true},
        {"shin_face_shape_ratio", 25, 323, 0.0F, 0.25F, true},
    };
    for (const auto& c : cases) {
        SetInt(c.name, c.percent);
        ASSERT_EQ(Draw(), kFilterOk);
        calls.strengths[c.type] = c.before;
        ASSERT_EQ(Draw(), kFilterOk);
        EXPECT_FLOAT_EQ(calls.strengths[c.type], c.after) << c.name << " " << c.percent;
        const std::string line = "strength " + std::to_string(c.type);
        EXPECT_EQ(std::count(calls.calls.begin(), calls.calls.end(), line), c.sent ? 1 : 0);
    }
}

TEST_F(FaceEffects, LoadAPackageOnce) {
    const test::TemporaryFolder folder;
    const std::string path = folder.Path() + "/package.zip";
    std::ofstream(path) << "bytes";
    Make(kSticker);
    EXPECT_EQ(Draw(), kFilterOk);
    EXPECT_EQ(std::count(calls.calls.begin(), calls.calls.end(), "package"), 0);
    for (const std::string& next : {path, path, folder.Path() + "/other.zip"}) {
        effect->SetParam("stickerPath", kParamText, NLEParamValue::Text(next));
        EXPECT_EQ(Draw(), kFilterOk);
    }
    EXPECT_EQ(calls.package, "bytes");
    EXPECT_THAT(calls.calls, SizeIs(4)) << "another path is not looked at";
}

}  // namespace
}  // namespace kelmo
