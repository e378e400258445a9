// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>

/// Typed access to the fields of a description, for the readers of this room alone.
namespace kelmo {

/// A field that spoils its entry. `what` names the key and the fault.
class DescriptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The member of an object, or null; also null for a value that is no object.
const nlohmann::json* FieldOf(const nlohmann::json& object, const char* key);

/// The fields below throw a DescriptionError on a value of the wrong type. The first two take the
/// value of a field that exists; `key` is for the message.
const std::string& TextOf(const nlohmann::json& value, const char* key);
int32_t DecimalTextOf(const nlohmann::json& value, const char* key);

/// The field of an object, or the default when the key is missing.
std::string TextField(const nlohmann::json& object, const char* key);
int32_t IntField(const nlohmann::json& object, const char* key);
float FloatField(const nlohmann::json& object, const char* key);
double DoubleField(const nlohmann::json& object, const char* key);

/// The number at the start of a text, base 10, clamped to 32 bits; 0 for a text without one.
int32_t DecimalText(const std::string& text);

/// Throws when a text is longer than a limit in bytes.
void RequireLength(const std::string& text, std::size_t limit, const char* key);

/// The text cut to a number of bytes without splitting a UTF-8 character.
std::string CutUtf8(const std::string& text, std::size_t limit);

}  // namespace kelmo
