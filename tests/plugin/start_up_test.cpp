// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "catalogue/filter_catalogue.h"
#include "framework/engine/effect_engine.h"
#include "framework/filter/effect_registry.h"
#include "framework/filter/filter_guids.h"
#include "framework/filter/sub_filters.h"
#include "platform/host_access.h"
#include "tests/plugin/exports.h"
#include "tests/support/engine_session.h"
#include "tests/support/fake_render_context.h"
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

class Throwing : public NLEOpenGLFilter {
public:
    explicit Throwing(std::shared_ptr<NLEFilterInfo> info) : NLEOpenGLFilter(std::move(info)) {
        throw std::runtime_error("cannot be built");
    }
};
[[maybe_unused]] const bool registered =
    RegisterEffect("Throwing", MakeEffect<Throwing>, {"TestThrows"});

class StartUpTest : public ::testing::Test {
protected:
    StartUpTest() {
        host.resourceFolder = folder.Path();
        host.pluginFolder = folder.Path();
    }
    ~StartUpTest() override {
        ShutdownQor();
        SetOpenGLDevice(false);
        SetSubFilterCreation(nullptr);
        AcquireHostSuites(nullptr);
    }

    test::TemporaryFolder folder;
    test::RecordingHost host;
    QorPluginInfo info;
};

TEST_F(StartUpTest, FillsTheInfoAndCountsTheCatalogue) {
    folder.Write("qor_effect/material/OpenGLFilter.conf",
                 R"([{"GUID": "start-up-1", "OPENGL": "a.frag", "DATAPATH": "/a/"},
                     {"GUID": "start-up-2", "OPENGL": "b.frag", "DATAPATH": "/b/"}])");
    const std::size_t before = GetCatalogue().Count();
    EXPECT_EQ(StartupQor(&host, &info), 0);
    EXPECT_EQ(info.interfaceVersion, 1U);
    EXPECT_EQ(info.pluginVersion, 1U);
    EXPECT_STREQ(info.name, "OpenGL Filter");
    EXPECT_STREQ(info.description, "OpenGL Filter Desc");
    EXPECT_STREQ(info.extra, "");
    EXPECT_NE(info.vendor, nullptr);
    EXPECT_EQ(info.effectCount, static_cast<int32_t>(before) + 2);
    EXPECT_NE(CreateSubFilter("start-up-1", nullptr), nullptr);
    EXPECT_THAT(host.acquiredNames,
                ElementsAre("Memory Allocator Suite", "Image Buffer ALlocator Suite",
                            "Host Util Suite", "GPU Device Suite"));
}

TEST_F(StartUpTest, FindsAnOpenGLDeviceAmongOthers) {
    struct {
        std::vector<int32_t> devices;
        bool found;
    } const cases[] = {{{}, false}, {{1, 3}, false}, {{1, 2, 2}, true}};
    for (const auto& c : cases) {
        host.devices = c.devices;
        host.ClearLines();
        EXPECT_EQ(StartupQor(&host, nullptr), 0);
        EXPECT_EQ(HasOpenGLDevice(), c.found);
        EXPECT_EQ(NoOpenGLDevice(), c.found ? 0 : 1);
        if (c.found) {
            EXPECT_THAT(host.Texts(kLogInfo), Contains("kQorGPUDeviceTypeOpenGL success:0"));
        } else {
            EXPECT_THAT(host.Texts(kLogWarning), Contains("kQorGPUDeviceTypeOpenGL is Failed"));
        }
    }
}

TEST_F(StartUpTest, AMissingAiLibraryAndACatalogueThatIsNotThereAreNoErrors) {
    EXPECT_EQ(StartupQor(&host, &info), 0);
    EXPECT_THAT(host.Texts(kLogError),
                Contains("NLEAIEffectLib::InitLoadNLEAIEffectFilterLib failed"));
    host.missingSuites = {kGpuDeviceSuite, kHostUtilSuite};
    EXPECT_EQ(StartupQor(&host, &info), 0);
    EXPECT_EQ(StartupQor(nullptr, &info), 2);
}

TEST_F(StartUpTest, OnlyTheDeviceTypeOfTheStartIsServed) {
    GetCatalogue().AddFilter(MakeInfo("device-types"));
    struct {
        bool device;
        int32_t type;
        int32_t expected;
    } const cases[] = {{false, 0, 0}, {false, 2, 2}, {true, 0, 2}, {true, 2, 0}, {true, 1, 2}};
    for (const auto& c : cases) {
        SetOpenGLDevice(c.device);
        QorEffect* effect = nullptr;
        EXPECT_EQ(CreateQorEffect("device-types", c.type, &effect), c.expected);
        EXPECT_EQ(effect != nullptr, c.expected == 0);
        ReleaseQorEffect(effect);
    }
}

TEST_F(StartUpTest, AnUnknownGuidIsRefusedWithALine) {
    AcquireHostSuites(&host);
    QorEffect* effect = nullptr;
    EXPECT_EQ(CreateQorEffect("unknown", 0, &effect), 2);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("Create OpenGLFilter Failed: unknown"));
    EXPECT_EQ(CreateQorEffect(nullptr, 0, &effect), 2);
    EXPECT_EQ(CreateQorEffect("device-types", 0, nullptr), 2);
    EXPECT_EQ(effect, nullptr);
}

TEST_F(StartUpTest, AStickerTakesTheMastersShaderAndNeedsTheMaster) {
    AcquireHostSuites(&host);
    const auto sticker = MakeInfo("a-sticker");
    sticker->openglPath.clear();
    sticker->encrypt = 1;
    AddParam(*sticker, "path", NLEParamValue::Text("a.zip")).alias = "stickerPath";
    GetCatalogue().AddFilter(sticker);
    QorEffect* effect = nullptr;
    EXPECT_EQ(CreateQorEffect("a-sticker", 0, &effect), 2);
    EXPECT_EQ(host.Texts(kLogError).size(), 1U) << "says what is missing";

    GetCatalogue().AddFilter(MakeInfo(kStickerMasterGuid));
    EXPECT_EQ(CreateQorEffect("a-sticker", 0, &effect), 0);
    EXPECT_EQ(sticker->openglPath, std::string(kStickerMasterGuid) + ".frag");
    EXPECT_EQ(sticker->encrypt, 0);
    ReleaseQorEffect(effect);
}

TEST_F(StartUpTest, AnAstralVariantRunsAsItsMasterWithItsOwnTexture) {
    AcquireHostSuites(&host);
    const auto variant = MakeInfo("an-astral");
    variant->subGuid = "Astral";
    variant->AddTexture(0, "/variant.png");
    GetCatalogue().AddFilter(variant);
    QorEffect* effect = nullptr;
    EXPECT_EQ(CreateQorEffect("an-astral", 0, &effect), 2);
    EXPECT_THAT(host.Texts(kLogError), IsEmpty()) << "a missing Astral master is not logged";

    const auto master = MakeInfo(kAstralMasterGuid);
    GetCatalogue().AddFilter(master);
    EXPECT_EQ(CreateQorEffect("an-astral", 0, &effect), 0);
    EXPECT_EQ(master->GetTexture(0), "/variant.png");
    EXPECT_THAT(host.Texts(kLogInfo), ElementsAre("Create OpenGLFilter Success: an-astral"));
    ReleaseQorEffect(effect);

    variant->AddTexture(0, "");
    EXPECT_EQ(CreateQorEffect("an-astral", 0, &effect), 0);
    EXPECT_EQ(master->GetTexture(0), "") << "the star of an earlier variant";
    ReleaseQorEffect(effect);
}

TEST_F(StartUpTest, AfterTheShutdownTheLastEffectTakesTheHostAlong) {
    StartupQor(&host, nullptr);
    GetCatalogue().AddFilter(MakeInfo("an-effect"));
    QorEffect* first = nullptr;
    QorEffect* second = nullptr;
    ASSERT_EQ(CreateQorEffect("an-effect", 0, &first), 0);
    ASSERT_EQ(CreateQorEffect("an-effect", 0, &second), 0);
    ReleaseQorEffect(first);
    ShutdownQor();
    EXPECT_NE(HostUtil(), nullptr) << "an effect lives";
    ReleaseQorEffect(second);
    EXPECT_EQ(HostUtil(), nullptr);
}

TEST_F(StartUpTest, AForeignEffectObjectIsLeftAlone) {
    class Foreign : public QorEffect {
    public:
        explicit Foreign(bool& gone) : gone(gone) {}
        ~Foreign() override { gone = true; }
        int32_t PrepareResource(QorRenderContext*) override { return 0; }
        int32_t Reserved1(QorRenderContext*) override { return 0; }
        int32_t SyncFrame(QorRenderContext*) override { return 0; }
        int32_t GLRender(QorRenderContext*) override { return 0; }
        int32_t GLRenderAlt(QorRenderContext*) override { return 0; }
        int32_t Reserved2(QorRenderContext*) override { return 0; }
        void ReleaseResource(QorRenderContext*) override {}
        int32_t Reserved3(QorRenderContext*) override { return 0; }
        int32_t Reserved4(QorRenderContext*) override { return 0; }

    private:
        bool& gone;
    };
    bool gone = false;
    Foreign foreign(gone);
    ReleaseQorEffect(&foreign);
    EXPECT_FALSE(gone);
    ReleaseQorEffect(nullptr);
}

TEST_F(StartUpTest, AClassThatCannotBeBuiltIsRefusedWithoutAnException) {
    AcquireHostSuites(&host);
    const auto info = MakeInfo("throwing");
    info->typeName = "TestThrows";
    GetCatalogue().AddFilter(info);
    QorEffect* effect = nullptr;
    EXPECT_EQ(CreateQorEffect("throwing", 0, &effect), 2);
    EXPECT_EQ(effect, nullptr);
    EXPECT_THAT(host.Texts(kLogError), ElementsAre("kelmo:CreateQorEffect: cannot be built"));
}

}  // namespace
}  // namespace kelmo
