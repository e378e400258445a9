// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/param_value.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

TEST(ParamValue, IsAllZeroWhenEmpty) {
    const NLEParamValue value;
    for (const unsigned char byte : value.data) {
        ASSERT_EQ(byte, 0);
    }
    EXPECT_EQ(value.type, 0);
    EXPECT_TRUE(value.text.empty());
}

TEST(ParamValue, KeepsEachTypeAtTheStartOfItsBytes) {
    int target = 0;
    EXPECT_EQ(NLEParamValue::Bool(true).data[0], 1);
    EXPECT_EQ(NLEParamValue::Double(-0.1).AsDouble(), -0.1);
    EXPECT_EQ(NLEParamValue::Float(0.1f).AsFloat(), 0.1f);
    EXPECT_EQ(NLEParamValue::Int(-7).AsInt(), -7);
    EXPECT_EQ(NLEParamValue::Pointer(&target).AsPointer(), &target);
    EXPECT_STREQ(NLEParamValue::Text("words").AsText(), "words");
}

TEST(ParamValue, CutsALongTextInItsBytesAlone) {
    const std::string text(600, 'x');
    const NLEParamValue value = NLEParamValue::Text(text);
    EXPECT_EQ(std::string(value.AsText()), text.substr(0, 511));
    EXPECT_EQ(value.text, text);
}

TEST(ParamValue, MapsEveryTypeToTheNumberOfTheHost) {
    struct Case {
        int32_t param;
        int32_t host;
    };
    constexpr Case kCases[] = {{1, 7}, {2, 6}, {3, 5}, {5, 3}, {6, 8}, {7, 9}, {0, 0}, {4, 0}};
    for (const Case& c : kCases) {
        EXPECT_EQ(HostTypeOf(c.param), c.host) << "type " << c.param;
    }
}

}  // namespace
}  // namespace kelmo
