// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugin/value_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "tests/support/fake_render_context.h"

namespace kelmo {
namespace {

TEST(ValueConversionTest, EachHostTypeHasItsOwnInternalType) {
    int object = 0;
    NLEParamValue value;
    ASSERT_TRUE(ConvertHostValue(test::HostInt(-5), value));
    EXPECT_EQ(value.type, 5);
    EXPECT_EQ(value.AsInt(), -5);
    ASSERT_TRUE(ConvertHostValue(test::HostFloat(0.5F), value));
    EXPECT_EQ(value.type, 3);
    EXPECT_EQ(value.AsFloat(), 0.5F);
    ASSERT_TRUE(ConvertHostValue(test::HostDouble(0.25), value));
    EXPECT_EQ(value.type, 2);
    EXPECT_EQ(value.AsDouble(), 0.25);
    ASSERT_TRUE(ConvertHostValue(test::HostBool(true), value));
    EXPECT_EQ(value.type, 1);
    EXPECT_TRUE(value.AsBool());
    ASSERT_TRUE(ConvertHostValue(test::HostText("text"), value));
    EXPECT_EQ(value.type, 6);
    EXPECT_STREQ(value.AsText(), "text");
    EXPECT_EQ(value.text, "text");
    ASSERT_TRUE(ConvertHostValue(test::HostPointer(&object), value));
    EXPECT_EQ(value.type, 7);
    EXPECT_EQ(value.AsPointer(), &object);
}

TEST(ValueConversionTest, ATypeOutsideTheTableChangesNothing) {
    for (const int32_t type : {0, 1, 2, 4, 10, -1}) {
        NLEParamValue value = NLEParamValue::Int(42);
        QorValue record;
        record.type = type;
        EXPECT_FALSE(ConvertHostValue(record, value)) << type;
        EXPECT_EQ(value.AsInt(), 42) << type;
    }
}

TEST(ValueConversionTest, ALongTextIsCutInDataAndWholeInText) {
    for (const std::size_t length : {511U, 512U, 513U, 2000U}) {
        const std::string text(length, 'x');
        NLEParamValue value;
        ASSERT_TRUE(ConvertHostValue(test::HostText(text.c_str()), value));
        EXPECT_EQ(std::strlen(value.AsText()), std::min<std::size_t>(length, 511)) << length;
        EXPECT_EQ(value.text, text) << length;
    }
    NLEParamValue value;
    EXPECT_TRUE(ConvertHostValue(test::HostText(nullptr), value));
    EXPECT_STREQ(value.AsText(), "");
}

TEST(ValueConversionTest, NothingOfAnEarlierValueShinesThrough) {
    NLEParamValue value;
    ConvertHostValue(test::HostText(std::string(600, 'x').c_str()), value);
    ConvertHostValue(test::HostBool(true), value);
    EXPECT_TRUE(value.text.empty());
    EXPECT_EQ(value.data[0], 1);
    EXPECT_TRUE(std::all_of(value.data + 1, value.data + NLEParamValue::kDataSize,
                            [](unsigned char byte) { return byte == 0; }));
}

}  // namespace
}  // namespace kelmo
