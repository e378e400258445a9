// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/nle_filter_info.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kelmo {
namespace {

NLEFilterParams ParamOfType(int32_t type) {
    NLEFilterParams param;
    param.type = type;
    return param;
}

TEST(FilterParams, MapTheTextOfTheUserInterfaceExactly) {
    struct Case {
        const char* text;
        int32_t code;
    };
    constexpr Case kCases[] = {
        {"Color", 1},       {"CheckBox", 2},    {"9Palaces", 3},
        {"NoShow", 9},      {"ListMask", 13},   {"GradientColor", 14},
        {"ListMosaic", 21}, {"ColorStart", 22}, {"ColorEnd", 23},
        {"Mult100", 25},    {"color", 0},       {"Mult10", 0},
        {"Mult1000", 0},    {" Color", 0},      {"", 0},
    };
    for (const Case& c : kCases) {
        EXPECT_EQ(UiTypeOf(c.text), c.code) << c.text;
    }
}

TEST(FilterParams, MapTheTextOfTheTypeExactly) {
    struct Case {
        const char* text;
        int32_t code;
    };
    constexpr Case kCases[] = {{"double", 2}, {"float", 3},   {"int", 5},    {"point", 5},
                               {"string", 6}, {"pointer", 7}, {"vector", 0}, {"bool", 0},
                               {"Float", 0},  {"", 0}};
    for (const Case& c : kCases) {
        EXPECT_EQ(ParamTypeOf(c.text), c.code) << c.text;
    }
}

TEST(FilterParams, DropTheFirstFilePrefixOfATextWhereverItStands) {
    struct Case {
        std::string given;
        std::string stored;
    };
    const Case kCases[] = {
        {"file:/a/b.png", "a/b.png"},
        {"a;file:/b;file:/c", "a;b;file:/c"},
        {"file:///a", "//a"},
        {"FILE:/a", "FILE:/a"},
        {"file:", "file:"},
        {"file:/", ""},
        {"fifile:/le:/x", "file:/x"},
        {"", ""},
        // Room for the rest is measured after the prefix has gone.
        {"file:/" + std::string(511, 'x'), std::string(511, 'x')},
        {std::string(600, 'y'), std::string(511, 'y')},
    };
    for (const Case& c : kCases) {
        NLEFilterParams param = ParamOfType(kParamText);
        param.SetValue(NLEParamValue::Text(c.given));
        EXPECT_EQ(param.value.AsText(), c.stored);
        EXPECT_EQ(param.value.text, c.given);
        EXPECT_EQ(param.value.type, kParamText);
    }
}

TEST(FilterParams, ReadATextThatStandsInTheBytesAlone) {
    NLEFilterParams param = ParamOfType(kParamText);
    NLEParamValue value;
    value.SetDataText("file:/a.png");
    param.SetValue(value);
    EXPECT_STREQ(param.value.AsText(), "a.png");
    EXPECT_EQ(param.value.text, "");

    std::fill(std::begin(value.data), std::end(value.data), 'z');  // no NUL anywhere
    param.SetValue(value);
    EXPECT_EQ(param.value.AsText(), std::string(511, 'z'));
}

TEST(FilterParams, LeaveNoBytesOfALongerTextBehind) {
    NLEFilterParams param = ParamOfType(kParamText);
    param.SetValue(NLEParamValue::Text("a long text"));
    param.SetValue(NLEParamValue::Text("ab"));
    EXPECT_TRUE(std::all_of(param.value.data + 2, std::end(param.value.data),
                            [](unsigned char byte) { return byte == 0; }));
}

TEST(FilterParams, TakeTheirOwnValueAgain) {
    NLEFilterParams param = ParamOfType(kParamText);
    param.SetValue(NLEParamValue::Text("file:/a"));
    param.SetValue(param.value);
    EXPECT_STREQ(param.value.AsText(), "a");
    EXPECT_EQ(param.value.text, "file:/a");
}

TEST(FilterParams, StoreValuesOfOtherTypesUnchanged) {
    for (const int32_t type : {kParamNone, kParamBool, kParamDouble, kParamFloat, kParamInt}) {
        NLEFilterParams param = ParamOfType(type);
        param.SetValue(NLEParamValue::Text("file:/a"));
        EXPECT_STREQ(param.ParamValue().AsText(), "file:/a") << "type " << type;
    }
}

TEST(FilterParams, GiveTheirLimits) {
    NLEFilterParams param = ParamOfType(kParamInt);
    param.minValue = NLEParamValue::Int(-1);
    param.maxValue = NLEParamValue::Int(9);
    NLEParamValue minimum;
    NLEParamValue maximum;
    param.ParamLimits(minimum, maximum);
    EXPECT_EQ(minimum.AsInt(), -1);
    EXPECT_EQ(maximum.AsInt(), 9);
}

TEST(FilterParams, OfOneEffectDoNotReachAnother) {
    NLEFilterParams description = ParamOfType(kParamText);
    description.name = "uPicture";
    description.SetValue(NLEParamValue::Text("default"));
    const auto first = CloneParam(description);
    const auto second = CloneParam(description);
    EXPECT_EQ(first->name, "uPicture");
    first->SetValue(NLEParamValue::Text("other"));
    EXPECT_STREQ(second->value.AsText(), "default");
    EXPECT_STREQ(description.value.AsText(), "default");
}

TEST(FilterInfo, KeepsParametersByIndex) {
    NLEFilterInfo info;
    EXPECT_EQ(info.GetParam(0), nullptr);
    // Far apart and negative, so that both the short and the long way are walked.
    for (const int32_t index : {3, 0, 4095, 4096, 2000000000, -1}) {
        const auto param = std::make_shared<NLEFilterParams>();
        info.AddParam(index, param);
        EXPECT_EQ(info.GetParam(index), param) << index;
        EXPECT_EQ(info.params.at("Param[" + std::to_string(index) + "]"), param);
    }
    EXPECT_EQ(info.GetParam(1), nullptr);
    EXPECT_EQ(info.GetParam(4097), nullptr);
    EXPECT_EQ(info.GetParam(-2), nullptr);
    EXPECT_EQ(info.paramCount, 0);
}

TEST(FilterInfo, ReplacesWhatStoodAtAnIndex) {
    NLEFilterInfo info;
    const auto second = std::make_shared<NLEFilterParams>();
    info.AddParam(0, std::make_shared<NLEFilterParams>());
    info.AddParam(0, second);
    EXPECT_EQ(info.GetParam(0), second);
    info.AddTexture(1, "a.png");
    info.AddTexture(1, "b.png");
    EXPECT_EQ(info.GetTexture(1), "b.png");
    EXPECT_EQ(info.GetTexture(7), "");
    EXPECT_EQ(info.textures.at("Texture[1]"), "b.png");
    EXPECT_EQ(info.textureCount, 0);
}

}  // namespace
}  // namespace kelmo
