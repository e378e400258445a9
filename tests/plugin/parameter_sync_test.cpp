// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/parameter_sync.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>

#include "tests/support/fake_render_context.h"
#include "tests/support/filter_descriptions.h"

namespace kelmo {
namespace {

using test::AddParam;
using test::MakeInfo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

/// A filter that holds clones of its description's parameters without an engine.
class BareFilter : public NLEOpenGLFilter {
public:
    explicit BareFilter(std::shared_ptr<NLEFilterInfo> filterInfo)
        : NLEOpenGLFilter(std::move(filterInfo)) {
        for (int32_t i = 0; i < info->paramCount; ++i) {
            params.push_back(CloneParam(*info->GetParam(i)));
        }
    }
};

class ParameterSyncTest : public ::testing::Test {
protected:
    void Sync(NLEOpenGLFilter& filter) { sync.Run(context, *filter.Info(), filter); }

    std::shared_ptr<NLEFilterInfo> info = MakeInfo("guid");
    test::FakeRenderContext context;
    test::FakeFrame frame{8, 8};
    ParameterSync sync;
};

TEST_F(ParameterSyncTest, CatalogueParametersAreAskedWithTheirTypeAtThePosition) {
    AddParam(*info, "f", NLEParamValue::Float(1.0F));
    AddParam(*info, "i", NLEParamValue::Int(1));
    AddParam(*info, "d", NLEParamValue::Double(1.0));
    AddParam(*info, "t", NLEParamValue::Text("1"));
    AddParam(*info, "p", NLEParamValue::Pointer(nullptr));
    info->AddParam(5, nullptr);
    info->paramCount = 6;
    context.position = 17;
    context.values["f"] = test::HostFloat(2.0F);
    context.values["i"] = test::HostText("no number");
    context.values["d"] = test::HostInt(3);
    context.values["t"] = test::HostInt(3);
    context.values["p"] = test::HostText("a path");
    auto clone = MakeInfo("clone");
    NLEOpenGLFilter filter(info);
    Sync(filter);
    EXPECT_THAT(context.asked,
                ElementsAre(Pair("f", 5), Pair("i", 3), Pair("d", 6), Pair("t", 8), Pair("p", 9)));
    EXPECT_THAT(context.askedPositions, ::testing::Each(17));
    EXPECT_EQ(filter.FloatOr("f", 0.0F), 2.0F);
    EXPECT_EQ(filter.FloatOr("d", 0.0F), 3.0F) << "a host may answer with another number type";
    EXPECT_STREQ(filter.FindParam("p")->value.AsText(), "a path");
    EXPECT_EQ(filter.Params().size(), 3U) << "what has no answer, or a wrong one, is not set";
}

TEST_F(ParameterSyncTest, AParameterWithoutAnswerKeepsItsValue) {
    AddParam(*info, "f", NLEParamValue::Float(1.5F));
    BareFilter filter(info);
    context.values["f"] = test::HostFloat(2.0F);
    Sync(filter);
    context.values.clear();
    Sync(filter);
    EXPECT_EQ(filter.FloatOr("f", 0.0F), 2.0F);
}

TEST_F(ParameterSyncTest, ANameThatAnEffectMissesIsFetchedFromTheNextFrameOnForGood) {
    NLEOpenGLFilter filter(info);
    filter.FindParam("late");
    Sync(filter);
    EXPECT_EQ(filter.FindParam("late"), nullptr);
    context.values["late"] = test::HostInt(4);
    Sync(filter);
    EXPECT_EQ(filter.IntOr("late", 0), 4);
    context.values["late"] = test::HostInt(5);
    Sync(filter);
    EXPECT_EQ(filter.IntOr("late", 0), 5);
    EXPECT_THAT(context.asked, ElementsAre(Pair("late", 9), Pair("late", 9), Pair("late", 9)));
}

TEST_F(ParameterSyncTest, TextComesFromTheInputFrame) {
    static_assert(offsetof(TextUserData, textIsUpdate) == 24);
    int textObject = 0;
    TextUserData data;
    data.textPath = reinterpret_cast<TextPath*>(&textObject);
    frame.properties["TextUserData"] = test::HostPointer(&data);
    context.first = &frame;
    NLEOpenGLFilter filter(info);
    filter.FindParam("TextPath");
    filter.FindParam("TextIsUpdate");
    for (const uint8_t changed : {0, 1, 77, 0}) {
        data.textIsUpdate = changed;
        Sync(filter);
        EXPECT_EQ(filter.FindParam("TextPath")->value.AsPointer(), &textObject);
        EXPECT_EQ(filter.FindParam("TextIsUpdate")->value.AsInt(), changed != 0 ? 1 : 0);
        EXPECT_EQ(filter.FindParam("TextIsUpdate")->value.type, kParamPointer);
    }
    EXPECT_THAT(context.asked, IsEmpty());
    EXPECT_THAT(frame.written, IsEmpty());
}

TEST_F(ParameterSyncTest, ATransformTurnsOffTheHostsOwn) {
    int matrix = 0;
    context.first = &frame;
    NLEOpenGLFilter filter(info);
    filter.FindParam("TransformParam");
    Sync(filter);
    EXPECT_THAT(frame.written, IsEmpty()) << "not found, not skipped";
    frame.properties["TransformParam"] = test::HostPointer(&matrix);
    Sync(filter);
    EXPECT_EQ(filter.FindParam("TransformParam")->value.AsPointer(), &matrix);
    ASSERT_EQ(frame.written.count("SkipGroupTransform"), 1U);
    EXPECT_EQ(frame.written["SkipGroupTransform"].type, 7);
    EXPECT_EQ(frame.written["SkipGroupTransform"].b, 1);

    frame.written.clear();
    QorValue unknown;
    unknown.type = 99;
    frame.properties["TransformParam"] = unknown;
    Sync(filter);
    EXPECT_EQ(frame.written.count("SkipGroupTransform"), 1U) << "whether or not it converts";
}

TEST_F(ParameterSyncTest, WithoutTextDataOnlyThePathFallsBackToTheHost) {
    int textObject = 0;
    NLEOpenGLFilter filter(info);
    for (const char* name : {"TextPath", "TextIsUpdate", "TransformParam"}) {
        filter.FindParam(name);
        context.values[name] = test::HostPointer(&textObject);
    }
    Sync(filter);
    EXPECT_THAT(context.asked, IsEmpty()) << "without an input frame nothing is asked";
    context.first = &frame;
    Sync(filter);
    EXPECT_THAT(context.asked, ElementsAre(Pair("TextPath", 9)));
    EXPECT_EQ(filter.FindParam("TextPath")->value.AsPointer(), &textObject) << "unchanged";
    EXPECT_EQ(filter.FindParam("TextIsUpdate"), nullptr);
    EXPECT_EQ(filter.FindParam("TransformParam"), nullptr);
}

TEST_F(ParameterSyncTest, ANullTextDataPointerStaysNull) {
    context.first = &frame;
    frame.properties["TextUserData"] = test::HostPointer(nullptr);
    NLEOpenGLFilter filter(info);
    filter.FindParam("TextPath");
    filter.FindParam("TextIsUpdate");
    Sync(filter);
    EXPECT_EQ(filter.FindParam("TextPath")->value.AsPointer(), nullptr);
    EXPECT_EQ(filter.FindParam("TextIsUpdate")->value.AsInt(), 0);
}

}  // namespace
}  // namespace kelmo
