// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "bindings/ai_filter_handle.h"
#include "tests/effects/support/material_effect.h"
#include "tests/support/allocation_count.h"
#include "tests/support/pose_transfer.h"

namespace kelmo {
namespace {

/// An AI library that gives the same record again and again.
NLEAIEffectLib LibraryWithOneFace() {
    auto faces = std::make_shared<AIDATA::HumanFaceInfoMultiDatas>();
    AIDATA::HumanFaceInfo& face = faces->faces.emplace_back();
    face.rect[2] = face.rect[3] = 0.5F;
    NLEAIEffectLib table = NLEAIEffectLib::Stubs();
    table.createFilter = [](const char*) {
        static char handle;
        return static_cast<void*>(&handle);
    };
    table.getResult = [faces](void*, std::shared_ptr<AIDATA::BaseAIDATA>& data) {
        data = faces;
        return 0;
    };
    return table;
}

TEST(EffectsOfPeople, AllocateNothingWhileFramesAreAlike) {
    SetAIEffectLibForTesting(LibraryWithOneFace());
    {
        test::MaterialEffects effects;
        effects.Engine().recording = false;
        test::PoseTransfer transfer;
        transfer.block = test::PoseBlock({test::PosePoints(19, {0.5F, 0.25F})});
        cv::Mat clip(36, 64, CV_8UC4, cv::Scalar::all(9));
        for (const char* guid : {"81316C1E-0D2D-4217-8200-261275619483",     // stickers
                                 "3089700B-E68F-45DA-ACBE-C254739B8B17"}) {  // the magnifier
            const auto effect = effects.Make(guid);
            effect->SetParam(kAiTransferParam, kParamPointer, NLEParamValue::Pointer(&transfer));
            ASSERT_EQ(test::DrawFrame(*effect, 0, test::RecordOf(clip)), kFilterOk) << guid;
            const int64_t before = test::AllocationCount();
            for (int frame = 1; frame < 5; ++frame) {
                test::DrawFrame(*effect, frame, test::RecordOf(clip));
            }
            EXPECT_EQ(test::AllocationCount(), before) << guid;
        }
    }
    ForgetAIEffectLibForTesting();
}

}  // namespace
}  // namespace kelmo
