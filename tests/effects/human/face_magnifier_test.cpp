// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/human/face_magnifier.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "tests/effects/support/material_effect.h"

namespace kelmo {
namespace {

using Box = std::array<float, 4>;

constexpr const char* kMagnifierGuid = "3089700B-E68F-45DA-ACBE-C254739B8B17";
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Frames of 64 x 36 in which the AI library finds what the test says.
class FaceMagnifier : public ::testing::Test {
protected:
    FaceMagnifier() {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.createFilter = [this](const char* guid) {
            filterGuid = guid;
            return static_cast<void*>(this);
        };
        table.transform = [this](void*, const AIImage& output, const AIImage& middle,
                                 const AIImage& input) {
            lastOutput = output;
            lastInput = input;
            EXPECT_EQ(middle.pixels, nullptr);
            return 0;
        };
        table.getResult = [this](void*, std::shared_ptr<AIDATA::BaseAIDATA>& data) {
            data = found;
            return result;
        };
        SetAIEffectLibForTesting(table);
        effect = effects.Make(kMagnifierGuid);
        record = &effects.Engine().Effect(0);
    }
    ~FaceMagnifier() override {
        effect.reset();
        ForgetAIEffectLibForTesting();
    }

    void Find(const std::vector<Box>& boxes) {
        auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
        for (const Box& box : boxes) {
            std::copy(box.begin(), box.end(), faces->faces.emplace_back().rect);
        }
        found = faces;
    }
    void Hold(int32_t on) { effect->SetParam("hold", kParamInt, NLEParamValue::Int(on)); }
    /// Center x, y and radius of the next frame.
    std::array<float, 3> Lens() {
        EXPECT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk);
        return {record->UniformFloat("centerX"), record->UniformFloat("centerY"),
                record->UniformFloat("radius")};
    }

    cv::Mat clip = cv::Mat(36, 64, CV_8UC4, cv::Scalar::all(0));
    std::string filterGuid;
    AIImage lastOutput, lastInput;
    std::shared_ptr<AIDATA::BaseAIDATA> found;
    int32_t result = 0;
    test::MaterialEffects effects;
    std::unique_ptr<NLEOpenGLFilter> effect;
    test::EffectRecord* record = nullptr;
};

constexpr std::array<float, 3> kNowhere = {0.0F, 0.0F, 0.01F};
constexpr Box kLeft = {0.0F, 0.25F, 0.25F, 0.75F};
constexpr Box kRight = {0.75F, 0.25F, 1.0F, 0.75F};
constexpr std::array<float, 3> kOnLeft = {8.0F, 18.0F, 0.5F};
constexpr std::array<float, 3> kOnRight = {56.0F, 18.0F, 0.5F};

TEST_F(FaceMagnifier, LooksAtTheBiggestFace) {
    const struct {
        const char* name;
        std::vector<Box> boxes;
        std::array<float, 3> lens;
    } cases[] = {
        {"one", {{0.25F, 0.0F, 0.75F, 0.25F}}, {32.0F, 4.5F, 0.5F}},
        {"the larger one behind", {kLeft, {0.5F, 0.0F, 1.0F, 1.0F}}, {48.0F, 18.0F, 1.0F}},
        {"the larger one before", {{0.5F, 0.0F, 1.0F, 1.0F}, kLeft}, {48.0F, 18.0F, 1.0F}},
        {"alike: the first", {kRight, kLeft}, kOnRight},
        {"sides exchanged", {{0.25F, 0.75F, 0.0F, 0.25F}}, kOnLeft},
        {"without area", {{0.5F, 0.0F, 0.5F, 1.0F}, kRight}, kOnRight},
        {"endless", {{-kInfinity, 0.0F, kInfinity, 1.0F}, kLeft}, kOnLeft},
    };
    for (const auto& c : cases) {
        Find(c.boxes);
        EXPECT_EQ(Lens(), c.lens) << c.name;
    }
    EXPECT_EQ(filterGuid, kAIFaceFilter);
    EXPECT_EQ(lastInput.pixels, clip.data);
    EXPECT_EQ(lastOutput.pixels, nullptr);
    EXPECT_EQ(lastOutput.width, 64);
    EXPECT_EQ(lastOutput.stride, 256);
    EXPECT_EQ(record->blendMode, kBlendOver);
}

TEST_F(FaceMagnifier, StaysWhereItWasWithoutAFace) {
    const struct {
        const char* name;
        std::shared_ptr<AIDATA::BaseAIDATA> found;
        int32_t result;
    } cases[] = {
        {"no face", std::make_shared<AIDATA::HumanFaceInfoMultiDatas>(), 0},
        {"another record", std::make_shared<AIDATA::HumanPoseDatas>(), 0},
        {"nothing", nullptr, 0},
        {"a failure", std::make_shared<AIDATA::HumanFaceInfoMultiDatas>(), 1},
    };
    for (const auto& expected : {kNowhere, kOnLeft}) {
        for (const auto& c : cases) {
            found = c.found;
            result = c.result;
            EXPECT_EQ(Lens(), expected) << c.name;
        }
        result = 0;
        Find({kLeft});
        EXPECT_EQ(Lens(), kOnLeft);
    }
    Find({kRight});
    result = 1;
    EXPECT_EQ(Lens(), kOnLeft) << "what comes with a failure does not count";
}

TEST_F(FaceMagnifier, HoldsTheLastPlaceBeforeItWasTold) {
    Hold(1);
    Find({kRight});
    EXPECT_EQ(Lens(), kNowhere) << "held before the first face";
    Hold(0);
    Find({kLeft});
    EXPECT_EQ(Lens(), kOnLeft);
    Hold(-3);
    Find({kRight});
    EXPECT_EQ(Lens(), kOnLeft);
    Find({});
    EXPECT_EQ(Lens(), kOnLeft);
    Hold(0);
    EXPECT_EQ(Lens(), kOnLeft) << "nobody is there to go to";
    Find({kRight});
    EXPECT_EQ(Lens(), kOnRight);
}

TEST_F(FaceMagnifier, DrawsWithoutALibrary) {
    effect.reset();
    SetAIEffectLibForTesting(NLEAIEffectLib::Stubs());
    effect = effects.Make(kMagnifierGuid);
    record = effects.Engine().Effects().back().get();
    lastInput = {};
    EXPECT_EQ(Lens(), kNowhere);
    EXPECT_EQ(lastInput.pixels, nullptr) << "no filter, no question";
}

}  // namespace
}  // namespace kelmo
