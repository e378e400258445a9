// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/publication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catalogue/filter_catalogue.h"
#include "framework/engine/effect_engine.h"
#include "plugin/parameter_publication.h"
#include "tests/plugin/exports.h"
#include "tests/support/filter_descriptions.h"
#include "tests/support/recording_host.h"
#include "tests/support/recording_registrar.h"
#include "tests/support/temporary_folder.h"

namespace kelmo {
namespace {

using test::AddParam;
using test::MakeInfo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FilterFlagsTest, EachTraitSetsItsBits) {
    struct {
        const char* what;
        bool device;
        int32_t audio, transition, dynamic, blank;
        uint32_t expected;
    } const cases[] = {
        {"plain on the CPU", false, 0, 0, 0, 0, 0x810 | 0x20 | 0x2},
        {"plain on the GPU", true, 0, 0, 0, 0, 0x810 | 0x100 | 0x2},
        {"with audio", true, 1, 0, 0, 0, 0x810 | 0x100 | 0x2 | 0x8000},
        {"a transition", true, 0, 1, 0, 0, 0x810 | 0x100 | 0x4},
        {"dynamic", true, 0, 0, 5, 0, 0x810 | 0x100 | 0x2 | 0x800000},
        {"blank frames", true, 0, 0, 0, 1, 0x810 | 0x100 | 0x2 | 0x8},
    };
    for (const auto& c : cases) {
        const auto info = MakeInfo("guid");
        info->hasAudio = c.audio;
        info->transition = c.transition;
        info->dynamic = c.dynamic;
        info->blankFrameRender = c.blank;
        EXPECT_EQ(FilterFlags(*info, c.device), c.expected) << c.what;
    }
}

/// The calls that one parameter makes.
std::vector<std::string> CallsOf(const NLEParamValue& def, const NLEParamValue& min,
                                 const NLEParamValue& max, int32_t uiType) {
    NLEFilterInfo info;
    test::RecordingRegistrar registrar;
    PublishParam(AddParam(info, "p", def, min, max, uiType), 4, registrar);
    return registrar.calls;
}

TEST(PublishParamTest, TypeAndUiTypeChooseTheOperation) {
    const auto d = [](double v) { return NLEParamValue::Double(v); };
    const auto f = [](float v) { return NLEParamValue::Float(v); };
    const auto i = [](int32_t v) { return NLEParamValue::Int(v); };
    const auto t = NLEParamValue::Text("text");
    struct {
        NLEParamValue def, min, max;
        int32_t uiType;
        std::string expected;
    } const cases[] = {
        {d(1), d(0), d(2), kUiPlain, "AddDoubleParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {d(1), d(0), d(2), kUiNoShow, "AddDoubleParam(-1, 4, p, p, 0, 2, 1, 1)"},
        {f(1), f(0), f(2), kUiPlain, "AddFloatParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {f(1), f(0), f(2), kUiNoShow, "AddFloatParam(-1, 4, p, p, 0, 2, 1, 1)"},
        {f(1), f(0), f(2), kUiColor, "AddFloatParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {f(1), f(0), f(2), kUiMult100, "AddMult100Param(-1, 4, p, p, 0, 2, 1, 2)"},
        {i(1), i(0), i(2), kUiPlain, "AddIntParam(-1, 4, p, p, 0, 2, 1, 1, 2)"},
        {i(1), i(0), i(2), kUiNoShow, "AddIntParam(-1, 4, p, p, 0, 2, 1, 1, 1)"},
        {i(1), i(0), i(2), kUiColor, "AddColorParam(-1, 4, p, p, 1, 0, 2, 2)"},
        {i(1), i(0), i(2), kUiCheckBox, "AddCheckBoxParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {i(1), i(0), i(2), kUi9Palaces, "AddPalacesParam(-1, 4, p, p, 0, 2, 1, 0)"},
        {i(1), i(0), i(2), kUiListMosaic, "AddListMosaicParam(-1, 4, p, p, 0, 2, 1, 0)"},
        {i(1), i(0), i(2), kUiColorStart, "AddColorStartParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {i(1), i(0), i(2), kUiColorEnd, "AddColorEndParam(-1, 4, p, p, 0, 2, 1, 2)"},
        {i(1), i(0), i(2), kUiListMask, ""},
        {i(1), i(0), i(2), kUiMult100, ""},
        {t, t, t, kUiPlain, "AddStringParam(-1, 4, p, p, null, 0)"},
        {t, t, t, kUiNoShow, "AddStringParam(-1, 4, p, p, null, 0)"},
        {t, t, t, kUiListMask, "AddListMaskParam(-1, 4, p, p, null, 0)"},
        {t, t, t, kUiGradientColor, "AddGradientColorParam(-1, 4, p, p, text, 0)"},
        {NLEParamValue::Pointer(nullptr), {}, {}, kUiPlain, "AddStringParam(-1, 4, p, p, null, 0)"},
        {NLEParamValue::Bool(true), {}, {}, kUiPlain, ""},
    };
    for (const auto& c : cases) {
        const std::vector<std::string> expected =
            c.expected.empty() ? std::vector<std::string>() : std::vector{c.expected};
        EXPECT_EQ(CallsOf(c.def, c.min, c.max, c.uiType), expected)
            << "type " << c.def.type << " shown as " << c.uiType;
    }
}

class PublicationTest : public ::testing::Test {
protected:
    PublicationTest() { host.resourceFolder = "/the/resources"; }
    ~PublicationTest() override { SetOpenGLDevice(false); }

    test::AcquiredHost host;
    test::RecordingRegistrar registrar;
};

TEST_F(PublicationTest, AFilterIsDescribedInOneFixedOrder) {
    const auto info = MakeInfo("published", "A name");
    info->typeName = "VectorText3D";
    AddParam(*info, "x", NLEParamValue::Float(0.0F));
    PublishFilter(info, registrar);
    EXPECT_THAT(registrar.calls,
                ElementsAre("SetIdentity(published, A name)", "SetFlags(2098)", "SetReserved(0)",
                            "SetTextKind(1)", "AddFloatParam(-1, 0, x, x, 0, 0, 0, 2)"));
    EXPECT_EQ(info->resourcePath, "/the/resources");
    EXPECT_EQ(GetCatalogue().FindFilter("published"), info);
    EXPECT_THAT(host.Texts(kLogInfo),
                ElementsAre("Register OpenGLFilter Success: published A name"));
}

TEST_F(PublicationTest, TheKindOfTextFollowsTheExactType) {
    struct {
        const char* type;
        const char* expected;
    } const cases[] = {{"VectorText3D", "SetTextKind(1)"},
                       {"VectorText3DAudioVisual", "SetTextKind(1)"},
                       {"SingleChar", "SetTextKind(2)"},
                       {"VectorText3DEdgeSaber", ""},
                       {"singlechar", ""},
                       {"", ""}};
    for (const auto& c : cases) {
        registrar.calls.clear();
        const auto info = MakeInfo("text kind");
        info->typeName = c.type;
        PublishFilter(info, registrar);
        const bool called = registrar.calls.size() > 3;
        EXPECT_EQ(called ? registrar.calls[3] : "", c.expected) << c.type;
    }
}

TEST_F(PublicationTest, AnAstralFilterPublishesThreeMoreParameters) {
    const auto info = MakeInfo("astral");
    info->subGuid = "Astral";
    AddParam(*info, "own", NLEParamValue::Int(1));
    PublishFilter(info, registrar);
    EXPECT_THAT(std::vector(registrar.calls.begin() + 3, registrar.calls.end()),
                ElementsAre("AddIntParam(-1, 0, own, own, 0, 0, 1, 1, 2)",
                            "AddFloatParam(-1, 0, density, density, 30, 100, 60, 2)",
                            "AddFloatParam(-1, 1, size, size, 10, 100, 50, 2)",
                            "AddIntParam(-1, 2, alpha, alpha, 0, 100, 100, 1, 2)"));
}

TEST_F(PublicationTest, TheExportRefusesWhatItCannotPublish) {
    GetCatalogue().AddFilter(MakeInfo("first of all"));
    EXPECT_EQ(RegisterQorEffect(-1, &registrar), 2);
    EXPECT_EQ(RegisterQorEffect(0, nullptr), 2);
    EXPECT_EQ(RegisterQorEffect(1000000, &registrar), 2);
    EXPECT_THAT(registrar.calls, IsEmpty());
    EXPECT_EQ(RegisterQorEffect(0, &registrar), 0);
}

TEST_F(PublicationTest, AFolderGivesItsFirstFilter) {
    const test::TemporaryFolder folder;
    EXPECT_EQ(RegisterQorEffectFromConfPath(folder.Path().c_str(), &registrar), 2);
    EXPECT_THAT(host.Texts(kLogError),
                ElementsAre("Register OpenGLFilter Failed: " + folder.Path()));
    folder.Write("a/a.conf", R"({"GUID": "from-folder-a", "OPENGL": "a.frag"})");
    folder.Write("b/b.conf", R"({"GUID": "from-folder-b", "OPENGL": "b.frag"})");
    EXPECT_EQ(RegisterQorEffectFromConfPath(folder.Path().c_str(), &registrar), 0);
    EXPECT_EQ(registrar.calls[0], "SetIdentity(from-folder-a, a)");
    EXPECT_NE(GetCatalogue().FindFilter("from-folder-a"), nullptr);
    EXPECT_EQ(GetCatalogue().FindFilter("from-folder-b"), nullptr);
    EXPECT_EQ(RegisterQorEffectFromConfPath(nullptr, &registrar), 2);
}

}  // namespace
}  // namespace kelmo
