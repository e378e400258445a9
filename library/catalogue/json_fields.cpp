// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/json_fields.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>

namespace kelmo {
namespace {

[[noreturn]] void FailType(const char* key, const char* expected, const nlohmann::json& value) {
    throw DescriptionError(std::string("\"") + key + "\" must be " + expected + ", not " +
                           value.type_name());
}

// Null when the key is missing.
const nlohmann::json* NumberField(const nlohmann::json& object, const char* key) {
    const nlohmann::json* const value = FieldOf(object, key);
    if (value != nullptr && !value->is_number()) {
        FailType(key, "a number", *value);
    }
    return value;
}

}  // namespace

const nlohmann::json* FieldOf(const nlohmann::json& object, const char* key) {
    if (!object.is_object()) {
        return nullptr;
    }
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

const std::string& TextOf(const nlohmann::json& value, const char* key) {
    if (!value.is_string()) {
        FailType(key, "a text", value);
    }
    const auto& text = value.get_ref<const std::string&>();
    if (text.find('\0') != std::string::npos) {
        throw DescriptionError(std::string("\"") + key + "\" holds a NUL character");
    }
    return text;
}

int32_t DecimalTextOf(const nlohmann::json& value, const char* key) {
    return DecimalText(TextOf(value, key));
}

std::string TextField(const nlohmann::json& object, const char* key) {
    const nlohmann::json* const value = FieldOf(object, key);
    return value == nullptr ? std::string() : TextOf(*value, key);
}

int32_t IntField(const nlohmann::json& object, const char* key) {
    const nlohmann::json* const value = NumberField(object, key);
    if (value == nullptr) {
        return 0;
    }
    if (value->is_number_float()) {
        // A float outside the range has no defined conversion.
        constexpr double kLowest = std::numeric_limits<int32_t>::min();
        constexpr double kLargest = std::numeric_limits<int32_t>::max();
        return static_cast<int32_t>(std::clamp(value->get<double>(), kLowest, kLargest));
    }
    return static_cast<int32_t>(value->get<int64_t>());
}

float FloatField(const nlohmann::json& object, const char* key) {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(DoubleField(object, key), -kLargest, kLargest));
}

double DoubleField(const nlohmann::json& object, const char* key) {
    const nlohmann::json* const value = NumberField(object, key);
    return value == nullptr ? 0.0 : value->get<double>();
}

int32_t DecimalText(const std::string& text) {
    constexpr long long kLowest = std::numeric_limits<int32_t>::min();
    constexpr long long kLargest = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(
        std::clamp(std::strtoll(text.c_str(), nullptr, 10), kLowest, kLargest));
}

void RequireLength(const std::string& text, std::size_t limit, const char* key) {
    if (text.size() > limit) {
        throw DescriptionError(std::string("\"") + key + "\" is " + std::to_string(text.size()) +
                               " bytes long, at most " + std::to_string(limit) + " fit: " + text);
    }
}

std::string CutUtf8(const std::string& text, std::size_t limit) {
    if (text.size() <= limit) {
        return text;
    }
    // Step back over continuation bytes (10xxxxxx): the cut must fall before a first byte.
    while (limit > 0 && (static_cast<unsigned char>(text[limit]) & 0xc0) == 0x80) {
        --limit;
    }
    return text.substr(0, limit);
}

}  // namespace kelmo
