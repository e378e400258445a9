// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/nle_filter_info.h"

#include <cstring>
#include <utility>

namespace kelmo {
namespace {

constexpr int32_t kIndexedParams = 4096;
constexpr std::string_view kFilePrefix = "file:/";

struct NamedCode {
    std::string_view text;
    int32_t code;
};

constexpr NamedCode kUiTypes[] = {
    {"Color", kUiColor},           {"CheckBox", kUiCheckBox},
    {"9Palaces", kUi9Palaces},     {"NoShow", kUiNoShow},
    {"ListMask", kUiListMask},     {"GradientColor", kUiGradientColor},
    {"ListMosaic", kUiListMosaic}, {"ColorStart", kUiColorStart},
    {"ColorEnd", kUiColorEnd},     {"Mult100", kUiMult100},
};

constexpr NamedCode kParamTypes[] = {
    {"float", kParamFloat}, {"double", kParamDouble}, {"int", kParamInt},
    {"point", kParamInt},   {"string", kParamText},   {"pointer", kParamPointer},
};

template <std::size_t N>
int32_t CodeOf(const NamedCode (&table)[N], std::string_view text) {
    for (const NamedCode& row : table) {
        if (row.text == text) {
            return row.code;
        }
    }
    return 0;
}

std::string IndexedKey(std::string_view prefix, int32_t index) {
    return std::string(prefix) + std::to_string(index) + "]";
}

// The whole text of a value: `text` when the sender filled it, else what fits into `data`, which a
// careless sender may have left without its NUL.
std::string_view WholeText(const NLEParamValue& value) {
    if (!value.text.empty()) {
        return value.text;
    }
    const char* const data = value.AsText();
    const void* const end = std::memchr(data, 0, NLEParamValue::kDataSize);
    return {data, end == nullptr ? NLEParamValue::kDataSize
                                 : static_cast<std::size_t>(static_cast<const char*>(end) - data)};
}

}  // namespace

int32_t UiTypeOf(std::string_view text) {
    return CodeOf(kUiTypes, text);
}

int32_t ParamTypeOf(std::string_view text) {
    return CodeOf(kParamTypes, text);
}

void NLEFilterParams::SetValue(const NLEParamValue& newValue) {
    if (type != kParamText) {
        value = newValue;
        return;
    }
    std::string bare(WholeText(newValue));
    if (const std::size_t prefix = bare.find(kFilePrefix); prefix != std::string::npos) {
        bare.erase(prefix, kFilePrefix.size());
    }
    value = newValue;
    std::memset(value.data, 0, sizeof value.data);
    value.SetDataText(bare);
}

void NLEFilterParams::ParamLimits(NLEParamValue& minimum, NLEParamValue& maximum) const {
    minimum = minValue;
    maximum = maxValue;
}

std::shared_ptr<NLEFilterParams> CloneParam(const NLEFilterParams& param) {
    return std::make_shared<NLEFilterParams>(param);
}

void NLEFilterInfo::AddParam(int32_t index, std::shared_ptr<NLEFilterParams> param) {
    const std::lock_guard guard(lock);
    if (index >= 0 && index < kIndexedParams) {
        const auto place = static_cast<std::size_t>(index);
        if (paramsByIndex.size() <= place) {
            paramsByIndex.resize(place + 1);
        }
        paramsByIndex[place] = param;
    }
    params[IndexedKey("Param[", index)] = std::move(param);
}

std::shared_ptr<NLEFilterParams> NLEFilterInfo::GetParam(int32_t index) const {
    const std::lock_guard guard(lock);
    if (index >= 0 && index < kIndexedParams) {
        const auto place = static_cast<std::size_t>(index);
        return place < paramsByIndex.size() ? paramsByIndex[place] : nullptr;
    }
    const auto found = params.find(IndexedKey("Param[", index));
    return found == params.end() ? nullptr : found->second;
}

std::string NLEFilterInfo::TextureKey(int32_t index) const {
    return IndexedKey(textureKeyPrefix, index);
}

void NLEFilterInfo::AddTexture(int32_t index, std::string_view path) {
    const std::lock_guard guard(lock);
    textures[TextureKey(index)] = path;
}

std::string NLEFilterInfo::GetTexture(int32_t index) const {
    const std::lock_guard guard(lock);
    const auto found = textures.find(TextureKey(index));
    return found == textures.end() ? std::string() : found->second;
}

}  // namespace kelmo
