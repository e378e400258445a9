// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/runtime/flex_map.h"

#include <cstring>

namespace kelmo {

namespace {

enum FlexType : uint8_t {
    kInt = 1,
    kUnsigned = 2,
    kFloat = 3,
    kIndirectInt = 6,
    kIndirectUnsigned = 7,
    kIndirectFloat = 8,
    kMap = 9,
    kVector = 10,
    kVectorInt = 11,
    kVectorUnsigned = 12,
    kVectorFloat = 13,
    kBool = 26,
};

uint8_t TypeOf(uint8_t packed) {
    return packed >> 2;
}
size_t WidthOf(uint8_t packed) {
    return size_t{1} << (packed & 3);
}

int64_t SignExtended(uint64_t value, size_t width) {
    const int shift = 64 - 8 * static_cast<int>(width);
    return static_cast<int64_t>(value << shift) >> shift;
}

std::optional<double> FloatOf(uint64_t bits, size_t width) {
    if (width == 4) {
        const uint32_t low = static_cast<uint32_t>(bits);
        float value;
        std::memcpy(&value, &low, sizeof value);
        return value;
    }
    if (width != 8) return std::nullopt;
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::optional<int> Whole(std::optional<double> number) {
    if (!number || !(*number >= -1e9 && *number <= 1e9)) return std::nullopt;
    return static_cast<int>(*number);
}

}  // namespace

FlexMap::FlexMap(const void* data, size_t size)
    : bytes(static_cast<const uint8_t*>(data), data ? size : 0) {
    // The last byte is the width of the root value, the one before it its type, then the value.
    if (bytes.size() < 3) return;
    const size_t width = bytes[size - 1];
    const uint8_t packed = bytes[size - 2];
    if (TypeOf(packed) != kMap || width == 0 || width > 8 || width + 2 > size) return;
    const auto target = Follow({size - 2 - width, width, kMap, WidthOf(packed)});
    const size_t childWidth = WidthOf(packed);
    if (!target || *target < 3 * childWidth) return;
    const auto count = Unsigned(*target - childWidth, childWidth);
    if (!count || *count > (bytes.size() - *target) / (childWidth + 1)) return;
    map = *target;
    mapWidth = childWidth;
    mapSize = *count;
}

std::optional<uint64_t> FlexMap::Unsigned(size_t position, size_t width) const {
    if (width > 8 || position > bytes.size() || width > bytes.size() - position)
        return std::nullopt;
    uint64_t value = 0;
    for (size_t i = 0; i < width; ++i) value |= uint64_t{bytes[position + i]} << (8 * i);
    return value;
}

std::optional<size_t> FlexMap::Follow(const Value& value) const {
    const auto offset = Unsigned(value.position, value.width);
    if (!offset || *offset > value.position) return std::nullopt;
    return value.position - *offset;
}

std::optional<double> FlexMap::NumberOf(Value value) const {
    if (value.type == kIndirectInt || value.type == kIndirectUnsigned ||
        value.type == kIndirectFloat) {
        const auto target = Follow(value);
        if (!target) return std::nullopt;
        value.position = *target;
        value.width = value.childWidth;
        value.type -= kIndirectInt - kInt;
    }
    const auto bits = Unsigned(value.position, value.width);
    if (!bits) return std::nullopt;
    switch (value.type) {
        case kInt:
            return static_cast<double>(SignExtended(*bits, value.width));
        case kUnsigned:
        case kBool:
            return static_cast<double>(*bits);
        case kFloat:
            return FloatOf(*bits, value.width);
        default:
            return std::nullopt;
    }
}

bool FlexMap::KeyIs(size_t position, std::string_view key) const {
    if (position > bytes.size() || key.size() >= bytes.size() - position) return false;
    return std::memcmp(bytes.data() + position, key.data(), key.size()) == 0 &&
           bytes[position + key.size()] == 0;
}

std::optional<FlexMap::Value> FlexMap::Find(std::string_view key) const {
    if (map == 0) return std::nullopt;
    const auto keyWidth = Unsigned(map - 2 * mapWidth, mapWidth);
    const auto keys = Follow({map - 3 * mapWidth, mapWidth, kMap, 0});
    if (!keys || !keyWidth || *keyWidth == 0 || *keyWidth > 8) return std::nullopt;
    for (size_t i = 0; i < mapSize; ++i) {
        const auto text = Follow({*keys + i * *keyWidth, *keyWidth, 0, 0});
        if (!text || !KeyIs(*text, key)) continue;
        const uint8_t packed = bytes[map + mapSize * mapWidth + i];
        return Value{map + i * mapWidth, mapWidth, TypeOf(packed), WidthOf(packed)};
    }
    return std::nullopt;
}

std::optional<double> FlexMap::Number(std::string_view key) const {
    const auto value = Find(key);
    return value ? NumberOf(*value) : std::nullopt;
}

std::optional<int> FlexMap::Integer(std::string_view key) const {
    return Whole(Number(key));
}

std::vector<int> FlexMap::Integers(std::string_view key) const {
    const auto list = Find(key);
    if (!list || list->type < kVector || list->type > kVectorFloat) return {};
    const auto start = Follow(*list);
    const size_t width = list->childWidth;
    if (!start || *start < width) return {};
    const auto count = Unsigned(*start - width, width);
    if (!count || *count > (bytes.size() - *start) / width) return {};
    std::vector<int> numbers;
    numbers.reserve(*count);
    for (size_t i = 0; i < *count; ++i) {
        Value element{*start + i * width, width, 0, width};
        if (list->type == kVector) {
            const auto packed = Unsigned(*start + *count * width + i, 1);
            if (!packed) return {};
            element.type = TypeOf(static_cast<uint8_t>(*packed));
            element.childWidth = WidthOf(static_cast<uint8_t>(*packed));
        } else {
            element.type = list->type - kVectorInt + kInt;
        }
        const auto number = Whole(NumberOf(element));
        if (!number) return {};
        numbers.push_back(*number);
    }
    return numbers;
}

}  // namespace kelmo
