// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/filter/nle_opengl_combine_filter.h"

#include <gtest/gtest.h>

#include "bindings/ai_effect_lib.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

using test::MakeInfo;

/// A host object with a mask whose first channel is `coverage`.
class FakeTransfer : public ObjectAiDataTransfer {
public:
    FakeTransfer(int32_t width, int32_t height, uint8_t coverage)
        : mask(height, width, CV_8UC4, cv::Scalar(coverage, coverage, coverage, 255)) {}
    bool GetMaskImage(void** pixels, int32_t* width, int32_t* height, int32_t* stride) override {
        if (!hasMask) return false;
        *pixels = mask.data;
        *width = mask.cols;
        *height = mask.rows;
        *stride = static_cast<int32_t>(mask.step);
        return true;
    }
    bool GetPoseBlock(void**, int32_t*) override { return false; }
    void GetPosePoint(int32_t, PosePointReference*) override {}

    cv::Mat mask;
    bool hasMask = true;
};

class CombineFilterTest : public ::testing::Test {
protected:
    ~CombineFilterTest() override { ForgetAIEffectLibForTesting(); }

    /// An AI library whose masks are `coverage` everywhere.
    void InstallMaskLibrary(uint8_t coverage) {
        NLEAIEffectLib table = NLEAIEffectLib::Stubs();
        table.transform = [this, coverage](void* handle, const AIImage& output, const AIImage&,
                                           const AIImage& input) {
            ++transforms;
            lastHandle = handle;
            lastInput = input;
            cv::Mat(output.height, output.width, CV_8UC4, output.pixels,
                    static_cast<std::size_t>(output.stride))
                .setTo(cv::Scalar::all(coverage));
            return 0;
        };
        SetAIEffectLibForTesting(table);
    }
    FrameRecord InputFrame(int32_t width, int32_t height) {
        pixels.assign(static_cast<std::size_t>(width * height * 4), 9);
        FrameRecord record = FrameRecord::TargetLess(width, height, width * 4);
        record.pixels = pixels.data();
        return record;
    }
    void GiveTransfer(ObjectAiDataTransfer* transfer) {
        filter.SetParam(kAiTransferParam, kParamPointer, NLEParamValue::Pointer(transfer));
    }

    NLEOpenGLCombineFilter filter{MakeInfo("combine")};
    std::vector<uint8_t> pixels;
    FrameRecord maskOut;
    cv::Mat maskMat;
    cv::Size target{8, 6};
    int transforms = 0;
    void* lastHandle = nullptr;
    AIImage lastInput;
};

TEST_F(CombineFilterTest, KeepsThePointerOfTheFrameAndRefusesOtherTypes) {
    FakeTransfer transfer(4, 4, 1);
    EXPECT_EQ(filter.SetParam(kAiTransferParam, kParamPointer, NLEParamValue::Pointer(&transfer)),
              1);
    EXPECT_EQ(filter.GetAiTransfer(), &transfer);
    EXPECT_EQ(filter.SetParam(kAiTransferParam, kParamInt, NLEParamValue::Int(1)), 4);
    EXPECT_EQ(filter.GetAiTransfer(), &transfer);
    EXPECT_EQ(filter.FindParam(kAiTransferParam)->value.AsPointer(), &transfer);
    EXPECT_EQ(filter.SetParam(kAiTransferParam, kParamPointer, NLEParamValue::Pointer(nullptr)), 0);
    EXPECT_EQ(filter.GetAiTransfer(), nullptr);
    EXPECT_EQ(filter.SetParam("other", kParamInt, NLEParamValue::Int(1)), 1);
}

TEST_F(CombineFilterTest, TheHostsMaskComesAsItIsScaledOrGrey) {
    FakeTransfer transfer(4, 3, 200);
    GiveTransfer(&transfer);
    struct {
        bool resize;
        int channels;
        cv::Size size;
        bool hostMemory;
    } const cases[] = {{false, 4, {4, 3}, true},
                       {true, 4, {8, 6}, false},
                       {true, 1, {8, 6}, false},
                       {false, 1, {4, 3}, false}};
    for (const auto& c : cases) {
        ASSERT_TRUE(filter.GetHumanMask(maskOut, nullptr, maskMat, InputFrame(2, 2), c.resize, true,
                                        &target, true, c.channels));
        EXPECT_EQ(cv::Size(maskOut.width, maskOut.height), c.size);
        EXPECT_EQ(maskOut.channels, c.channels);
        EXPECT_EQ(maskOut.pixels == transfer.mask.data, c.hostMemory);
        EXPECT_EQ(maskMat.data, maskOut.pixels);
        EXPECT_EQ(maskMat.channels(), c.channels);
        EXPECT_EQ(maskMat.data[0], 200);
    }
    EXPECT_EQ(transforms, 0);
}

TEST_F(CombineFilterTest, WithoutAHostMaskTheAiFilterRunsOnTheScaledInput) {
    InstallMaskLibrary(77);
    FakeTransfer transfer(4, 3, 200);
    transfer.hasMask = false;
    GiveTransfer(&transfer);
    int handle = 0;
    for (const int channels : {4, 1}) {
        for (const bool resize : {true, false}) {
            ASSERT_TRUE(filter.GetHumanMask(maskOut, &handle, maskMat, InputFrame(16, 4), false,
                                            resize, &target, false, channels));
            const cv::Size size = resize ? target : cv::Size(16, 4);
            EXPECT_EQ(cv::Size(lastInput.width, lastInput.height), size);
            EXPECT_EQ(maskMat.size(), size);
            EXPECT_EQ(maskOut.channels, channels);
            EXPECT_EQ(maskMat.channels(), channels);
            EXPECT_EQ(maskOut.pixels, maskMat.data);
            EXPECT_EQ(maskMat.data[0], 77);
        }
    }
    EXPECT_EQ(transforms, 4);
    EXPECT_EQ(lastHandle, &handle);
}

TEST_F(CombineFilterTest, WithoutAnyLibraryTheMaskIsEmptyButThere) {
    ASSERT_TRUE(filter.GetHumanMask(maskOut, nullptr, maskMat, InputFrame(5, 4), true, true,
                                    nullptr, true, 4));
    EXPECT_EQ(maskMat.size(), cv::Size(5, 4));
    EXPECT_EQ(cv::countNonZero(maskMat.reshape(1)), 0);
}

TEST_F(CombineFilterTest, WithoutAPictureThereIsNoMask) {
    EXPECT_FALSE(filter.GetHumanMask(maskOut, nullptr, maskMat, FrameRecord(), true, true, &target,
                                     true, 4));
}

TEST_F(CombineFilterTest, AMaskOfTheHostIsNeverWrittenToAfterItsFrame) {
    InstallMaskLibrary(77);
    for (const int channels : {4, 1}) {
        FakeTransfer transfer(8, 6, 200);
        GiveTransfer(&transfer);
        filter.GetHumanMask(maskOut, nullptr, maskMat, InputFrame(8, 6), false, false, &target,
                            true, 4);
        ASSERT_EQ(maskMat.data, transfer.mask.data);
        GiveTransfer(nullptr);
        filter.GetHumanMask(maskOut, nullptr, maskMat, InputFrame(8, 6), false, false, &target,
                            true, channels);
        EXPECT_NE(maskMat.data, transfer.mask.data);
        EXPECT_EQ(transfer.mask.data[0], 200);
        EXPECT_EQ(maskMat.data[0], 77);
    }
}

}  // namespace
}  // namespace kelmo
