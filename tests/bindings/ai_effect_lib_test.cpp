// SPDX-License-Identifier: GPL-3.0-or-later
#include "bindings/ai_effect_lib.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "bindings/ai_filter_handle.h"
#include "platform/host_access.h"
#include "tests/support/recording_host.h"

namespace kelmo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AIEffectLibTest : public ::testing::Test {
protected:
    AIEffectLibTest() { host.resourceFolder = "/the/resources"; }
    ~AIEffectLibTest() override { ForgetAIEffectLibForTesting(); }

    bool Install(const std::string& folder) {
        host.pluginFolder = KELMO_FAKE_AI_FOLDER "/" + folder;
        return InstallAIEffectLib();
    }

    test::AcquiredHost host;
};

TEST_F(AIEffectLibTest, AMissingOrIncompleteLibraryLeavesStubsAndOneLine) {
    for (const char* folder : {"no_such_folder", "without_result"}) {
        host.ClearLines();
        EXPECT_FALSE(Install(folder));
        EXPECT_THAT(host.Texts(kLogError),
                    ElementsAre("NLEAIEffectLib::InitLoadNLEAIEffectFilterLib failed"));
        EXPECT_THAT(host.Texts(kLogInfo), IsEmpty()) << "nothing of a refused library runs";
        const NLEAIEffectLib& lib = AIEffectLib();
        EXPECT_EQ(lib.createFilter(kAIMaskFilter), nullptr);
        std::vector<uint8_t> pixels(16, 5);
        EXPECT_EQ(lib.transform(nullptr, {pixels.data(), 2, 2, 8}, {}, {}), 0);
        EXPECT_EQ(pixels, std::vector<uint8_t>(16, 5));
        EXPECT_EQ(lib.setParameter(nullptr, "x", kParamFloat, NLEParamValue::Float(1.0F)), 0);
        std::shared_ptr<AIDATA::BaseAIDATA> data;
        EXPECT_EQ(lib.getResult(nullptr, data), 0);
        EXPECT_EQ(data, nullptr);
        void* handle = nullptr;
        lib.deleteFilter(&handle);
    }
}

TEST_F(AIEffectLibTest, AHandleDrivesItsFilterThroughTheLibrary) {
    ASSERT_TRUE(Install("whole"));
    {
        const AIFilterHandle handle(kAIPoseFilter);
        ASSERT_TRUE(handle);
        handle.SetFloat("Edge Feather", 0.5F);
        std::vector<uint8_t> pixels(16);
        const auto poses =
            handle.Analyse<AIDATA::HumanPoseDatas>({nullptr, 4, 3, 16}, {pixels.data(), 2, 2, 8});
        ASSERT_NE(poses, nullptr);
        EXPECT_EQ(poses->persons.size(), 1U);
        EXPECT_EQ(handle.Analyse<AIDATA::HumanFaceInfoMultiDatas>({}, {}), nullptr)
            << "a record of another class";
    }
    EXPECT_THAT(host.Texts(kLogInfo),
                ElementsAre("log set", "create 02E5BBF3-8C49-4392-9B0F-5B72E56FC762 /the/resources",
                            "Edge Feather 3 0.5", "transform 4x3 16 <- 2x2 8",
                            "transform 0x0 0 <- 0x0 0", "delete"));
}

TEST_F(AIEffectLibTest, TheDeleteAndLogExportsMayBeMissing) {
    ASSERT_TRUE(Install("without_delete"));
    { const AIFilterHandle dropped(kAIMaskFilter); }
    ForgetAIEffectLibForTesting();
    ASSERT_TRUE(Install("without_log"));
    std::vector<uint8_t> mask(16);
    const AIFilterHandle handle(kAIMaskFilter);
    AIEffectLib().transform(handle.Get(), {mask.data(), 2, 2, 8}, {}, {});
    EXPECT_EQ(mask, std::vector<uint8_t>(16, 33));
}

TEST_F(AIEffectLibTest, AKnownLibraryIsNotLoadedAgain) {
    ASSERT_TRUE(Install("whole"));
    EXPECT_TRUE(InitLoadNLEAIEffectFilterLib("/no/such/folder", ForwardLibraryLog));
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("log set"));
}

}  // namespace
}  // namespace kelmo
