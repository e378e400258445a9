// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the AI library and the engine from the effects that work on cut out people.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "bindings/ai_effect_lib.h"
#include "bindings/ai_filter_handle.h"
#include "effects/human/human_map_effect.h"
#include "framework/filter/effect_registry.h"
#include "tests/effects/support/material_effect.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

using test::DrawFrame;
using test::EffectRecord;
using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::IsEmpty;
using ::testing::Pointwise;

constexpr const char* kCutouts[] = {
    "485E9E3C-2424-40D3-8DB0-39D0C1120B23", "6D15EA28-D52A-4021-BF43-678A2AA369FB",
    "A49C6C9D-551C-40B6-8E5B-9CDE310270F3", "3B5CCB74-D6E2-48AA-9743-E94F65FE5086",
    "2F8A23F6-E7DF-4840-944C-4A3B4B1C50E2"};
constexpr const char* kFastCutouts[] = {"674A02AB-6103-4848-9857-E8FAC858B1F0",
                                        "061CA55A-4E9F-4803-BAF4-8FF5EA0AFB06"};
constexpr const char* kEdgeEffects[] = {"BAFB0B38-BD3E-45EE-B369-8939FE33087A",
                                        "E080807D-C5B9-472B-93B3-A0E79D4C4458"};
constexpr const char* kMap = "974364C8-7F9A-27CA-FD3E-D544D57C8BBD";

constexpr int kWidth = 64;
constexpr int kHeight = 36;

/// Frames of 64 x 36; the AI library gives the test's mask, brought to the size that is asked for.
class HumanEffects : public ::testing::Test {
protected:
    HumanEffects() {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.createFilter = [this](const char* guid) {
            filterGuid = guid;
            return static_cast<void*>(this);
        };
        table.transform = [this](void*, const AIImage& output, const AIImage&,
                                 const AIImage& input) {
            asked = {input.width, input.height};
            cv::Mat out(output.height, output.width, CV_8UC4, output.pixels,
                        static_cast<std::size_t>(output.stride));
            EXPECT_EQ(out.size(), asked);
            const double x = static_cast<double>(mask.cols) / out.cols;
            for (int column = 0; column < out.cols; ++column) {
                mask.col(static_cast<int>(column * x))
                    .rowRange(0, out.rows)
                    .copyTo(out.col(column));
            }
            return 0;
        };
        table.setParameter = [this](void*, const char* name, int32_t type, NLEParamValue value) {
            EXPECT_EQ(type, kParamFloat);
            settings.emplace_back(name, value.AsFloat());
            return 0;
        };
        SetAIEffectLibForTesting(table);
    }
    ~HumanEffects() override {
        effect.reset();
        ForgetAIEffectLibForTesting();
    }

    void Make(const char* guid) {
        effect = effects.Make(guid, kWidth, kHeight);
        record = effects.Engine().Effects().back().get();
        record->ClearCalls();
    }
    void SetInt(const char* name, int32_t value) {
        effect->SetParam(name, kParamInt, NLEParamValue::Int(value));
    }
    void SetFloat(const char* name, float value) {
        effect->SetParam(name, kParamFloat, NLEParamValue::Float(value));
    }
    int32_t Draw() { return DrawFrame(*effect, 10, test::RecordOf(clip)); }
    void Cover(cv::Rect place, int level = 255) { mask(place).setTo(cv::Scalar::all(level)); }
    /// Calls in order, by the name of the operation or of the time uniform.
    std::vector<std::string> Steps() const {
        std::vector<std::string> steps;
        for (const std::string& call : record->Calls()) {
            if (call.find("SetUniform") == 0 && call.find("_time") == std::string::npos) continue;
            steps.push_back(call.substr(0, call.find_first_of(",)")));
        }
        return steps;
    }
    cv::Mat PictureAt(int32_t slot) const {
        const EffectRecord::Input input = record->InputAt(slot);
        return cv::Mat(input.height, input.width, input.channels == 1 ? CV_8UC1 : CV_8UC4,
                       const_cast<void*>(input.pixels), static_cast<std::size_t>(input.stride));
    }

    cv::Mat clip = cv::Mat(kHeight, kWidth, CV_8UC4, cv::Scalar(10, 200, 100, 255));
    cv::Mat mask = cv::Mat(kHeight, kWidth, CV_8UC4, cv::Scalar::all(0));
    std::string filterGuid;
    cv::Size asked;
    std::vector<std::pair<std::string, float>> settings;
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    EffectRecord* record = nullptr;
};

TEST_F(HumanEffects, GiveClipAndMaskToTheShaderAtTheSizeAskedFor) {
    const struct {
        int32_t ratio;
        cv::Size size;
    } cases[] = {{0, {64, 36}}, {-3, {64, 36}}, {1, {64, 36}},
                 {2, {32, 18}}, {5, {12, 7}},   {1000, {1, 1}}};
    std::vector<const char*> guids(std::begin(kCutouts), std::end(kCutouts));
    guids.insert(guids.end(), std::begin(kFastCutouts), std::end(kFastCutouts));
    Cover({0, 0, kWidth, kHeight}, 128);
    for (const char* guid : guids) {
        SCOPED_TRACE(guid);
        const bool fast = guids.end() - std::find(guids.begin(), guids.end(), guid) <= 2;
        Make(guid);
        EXPECT_EQ(filterGuid, fast ? kAIMaskFilter : kAIEdgeMaskFilter);
        for (const auto& c : cases) {
            SetInt("downsampleRatio", c.ratio);
            record->ClearCalls();
            ASSERT_EQ(Draw(), kFilterOk) << c.ratio;
            EXPECT_EQ(asked, c.size) << c.ratio;
            EXPECT_EQ(record->InputAt(0).pixels, clip.data);
            const cv::Vec4b second = PictureAt(1).at<cv::Vec4b>(0, 0);
            EXPECT_EQ(PictureAt(1).size(), c.size);
            EXPECT_EQ(second, fast ? cv::Vec4b(5, 100, 50, 128) : cv::Vec4b(128, 128, 128, 128));
            EXPECT_THAT(Steps(), ElementsAre("SetInputImage(0", "SetInputImage(1",
                                             "SetUniformFloat(global_time",
                                             "SetUniformFloat(total_time", "Render(no picture"));
        }
        EXPECT_FLOAT_EQ(record->UniformFloat("current_pos"), 0.4F);
        EXPECT_FLOAT_EQ(record->UniformFloat("total_len"), 4.0F);
        if (!fast) {
            EXPECT_EQ(record->Uniform("midHuman"), std::vector<float>{0.0F});
        }
    }
}

TEST_F(HumanEffects, FindTheMiddleOfTheLeftmostPerson) {
    const struct {
        const char* name;
        std::vector<cv::Rect> people;
        int level;
        float offset;
        float middle;
    } cases[] = {
        {"nobody", {}, 255, 0.5F, 0.0F},
        {"in the middle", {{20, 5, 11, 20}}, 255, 0.5F, 25.0F / 64},
        {"one column", {{20, 5, 1, 1}}, 255, 0.5F, 20.0F / 64},
        {"at the left edge", {{0, 0, 9, 36}}, 255, 0.5F, 4.0F / 64},
        {"at the right edge", {{40, 0, 24, 36}}, 255, 0.5F, 20.0F / 64},
        {"one short of the right edge", {{40, 0, 23, 36}}, 255, 0.5F, 51.0F / 64},
        {"two: the left one", {{10, 0, 5, 36}, {30, 0, 20, 36}}, 255, 0.5F, 12.0F / 64},
        {"two above each other", {{10, 0, 5, 9}, {12, 20, 7, 9}}, 255, 0.5F, 14.0F / 64},
        {"too faint", {{20, 0, 10, 36}}, 10, 0.5F, 0.0F},
        {"just seen", {{20, 0, 10, 36}}, 11, 0.5F, 24.5F / 64},
        {"not asked for", {{20, 0, 10, 36}}, 255, 0.2F, 1.0F},
        {"as good as not asked for", {{20, 0, 10, 36}}, 255, 0.200005F, 1.0F},
        {"asked for", {{20, 0, 10, 36}}, 255, 0.21F, 24.5F / 64},
    };
    for (const char* guid : kFastCutouts) {
        Make(guid);
        for (const auto& c : cases) {
            mask.setTo(cv::Scalar::all(0));
            for (const cv::Rect& person : c.people) Cover(person, c.level);
            SetFloat("offsetHalfHuman", c.offset);
            SetInt("downsampleRatio", 1);
            ASSERT_EQ(Draw(), kFilterOk);
            EXPECT_FLOAT_EQ(record->UniformFloat("midHuman"), c.middle) << c.name;
        }
    }
}

TEST_F(HumanEffects, KeepTheMiddleThatNobodyAsksFor) {
    auto info = test::MakeInfo(kFastCutouts[0]);
    effect = CreateFilter(info);
    ASSERT_EQ(effect->InitEffect(), kFilterOk);
    effect->Resize(kWidth, kHeight, kWidth * 4);
    record = effects.Engine().Effects().back().get();
    Cover({10, 0, 10, 36});
    Draw();
    EXPECT_EQ(record->UniformFloat("midHuman"), 0.0F);
    SetFloat("offsetHalfHuman", 0.5F);
    Draw();
    EXPECT_FLOAT_EQ(record->UniformFloat("midHuman"), 14.5F / 64);
}

TEST_F(HumanEffects, SendTheEdgeToTheAiFilterAndTheRestToTheShader) {
    for (const char* guid : kEdgeEffects) {
        Make(guid);
        EXPECT_EQ(filterGuid, kAIEdgeMaskFilter);
        ASSERT_EQ(effect->Params().size(), 4U);
        const std::string edges[] = {effect->Params()[2]->name, effect->Params()[3]->name};
        SetFloat(edges[0].c_str(), 12.5F);
        SetFloat(edges[1].c_str(), 3.0F);
        SetFloat("more", 1.0F);
        settings.clear();
        record->ClearCalls();
        ASSERT_EQ(Draw(), kFilterOk);
        EXPECT_THAT(settings, ElementsAre(std::pair("Edge Thickness", 12.5F),
                                          std::pair("Edge Feather", 3.0F)));
        EXPECT_EQ(record->Count("SetUniform"), 4 + 2) << "time and two parameters";
        EXPECT_EQ(record->Count("SetUniformFloat(" + edges[0]), 0);
        EXPECT_EQ(record->InputAt(0).pixels, clip.data);
        EXPECT_EQ(PictureAt(1).size(), clip.size());
    }
}

TEST_F(HumanEffects, PutTheMaterialRoundThePeople) {
    effect = CreateFilter(test::MakeInfo(kMap));
    ASSERT_EQ(effect->InitEffect(), kFilterOk);
    effect->Resize(kWidth, kHeight, kWidth * 4);
    record = effects.Engine().Effects().back().get();
    EXPECT_EQ(filterGuid, kAIMaskFilter);
    const struct {
        std::vector<cv::Rect> people;
        int level;
        float scale;
    } cases[] = {{{{20, 5, 10, 20}}, 255, 0.01F},
                 {{{20, 5, 10, 20}}, 101, 0.5F},
                 {{{0, 0, 4, 4}, {50, 30, 8, 6}}, 255, 1.0F},
                 {{{63, 35, 1, 1}}, 255, 1.0F},
                 {{{20, 5, 10, 20}}, 100, 1.0F},
                 {{}, 255, 1.0F}};
    for (const auto& c : cases) {
        mask.setTo(cv::Scalar::all(0));
        cv::Rect box;
        for (const cv::Rect& person : c.people) {
            Cover(person, c.level);
            box |= person;
        }
        SetFloat("scale", c.scale);
        SetFloat("center_x", 0.25F);
        ASSERT_EQ(Draw(), kFilterOk);
        EXPECT_THAT(record->Uniform("uCenter"), ElementsAre(0.25F, 0.0F, 0.0F));
        EXPECT_EQ(record->InputAt(1).channels, 1);
        std::vector<float> bound(std::begin(NLEOpenGLHumanMapEffect::kBoundOfNobody),
                                 std::end(NLEOpenGLHumanMapEffect::kBoundOfNobody));
        if (c.level > 100 && !box.empty()) {
            // The box stretched about its middle until it has the material's width and shape.
            const double s = c.scale * 1920.0 / box.width;
            const double a = (1080.0 / 1920.0) / (static_cast<double>(box.height) / box.width);
            const double cx = (box.x + box.width * 0.5) / kWidth;
            const double cy = (box.y + box.height * 0.5) / kHeight;
            const auto x = [&](int edge) { return (double(edge) / kWidth - cx) * s + cx; };
            const auto y = [&](int edge) { return (double(edge) / kHeight - cy) * s * a + cy; };
            bound = {float(x(box.x)), float(y(box.y)), float(x(box.br().x)), float(y(box.br().y))};
        }
        EXPECT_THAT(record->Uniform("uBound"), Pointwise(FloatNear(1e-4F), bound));
    }
}

TEST_F(HumanEffects, BindTheMaterialBehindTheMask) {
    Make(kMap);
    Cover({20, 5, 10, 20});
    SetFloat("scale", 0.5F);
    ASSERT_EQ(Draw(), kFilterOk);
    const EffectRecord::Input material = record->InputAt(2);
    EXPECT_EQ(material.kind, EffectRecord::Input::kMaterial);
    const std::vector<float> bound = record->Uniform("uBound");
    EXPECT_NEAR((bound[2] - bound[0]) * kWidth, 0.5F * material.width, 0.01F);
    EXPECT_NEAR((bound[3] - bound[1]) * kHeight, 0.5F * material.height, 0.01F);
    EXPECT_THAT(record->Calls("SetUniformFloat(global_time"), IsEmpty());
}

TEST_F(HumanEffects, DrawNothingWithoutAPictureAndAnEmptyMaskWithoutALibrary) {
    std::vector<const char*> guids(std::begin(kCutouts), std::end(kCutouts));
    guids.insert(guids.end(), std::begin(kFastCutouts), std::end(kFastCutouts));
    guids.insert(guids.end(), std::begin(kEdgeEffects), std::end(kEdgeEffects));
    guids.push_back(kMap);
    SetAIEffectLibForTesting(NLEAIEffectLib::Stubs());
    for (const char* guid : guids) {
        SCOPED_TRACE(guid);
        Make(guid);
        EXPECT_TRUE(effect->NeedsCpuFrame());
        EXPECT_EQ(DrawFrame(*effect, 0, FrameRecord()), kFilterFailed);
        EXPECT_EQ(record->renderCount, 0);
        ASSERT_EQ(Draw(), kFilterOk);
        EXPECT_EQ(record->renderCount, 1);
        EXPECT_EQ(cv::countNonZero(PictureAt(1).reshape(1)), 0);
        for (const float value : record->Uniform("midHuman")) EXPECT_EQ(value, 0.0F);
    }
}

}  // namespace
}  // namespace kelmo
