// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kelmo {

/// Reads a FlexBuffers map of numbers and lists of numbers: the options of the face network's own
/// operations. A view: the bytes must outlive it. The bytes are foreign; whatever they hold,
/// nothing is read outside them, and what does not fit reads as absent.
class FlexMap {
public:
    FlexMap(const void* bytes, size_t size);

    std::optional<double> Number(std::string_view key) const;
    /// A number as a whole one, cut towards zero; absent beyond a thousand million.
    std::optional<int> Integer(std::string_view key) const;
    /// A list of such numbers; empty when there is none, or when one of them is none.
    std::vector<int> Integers(std::string_view key) const;

private:
    /// A value of the buffer: where it lies, how wide it is and its packed type.
    struct Value {
        size_t position = 0;
        size_t width = 0;
        uint8_t type = 0;
        size_t childWidth = 0;
    };

    std::optional<uint64_t> Unsigned(size_t position, size_t width) const;
    /// Where an offset value points to: offsets count backwards.
    std::optional<size_t> Follow(const Value& value) const;
    std::optional<double> NumberOf(Value value) const;
    std::optional<Value> Find(std::string_view key) const;
    bool KeyIs(size_t position, std::string_view key) const;

    std::span<const uint8_t> bytes;
    size_t map = 0;  ///< position of the map's first value; 0: no map
    size_t mapWidth = 0;
    size_t mapSize = 0;
};

}  // namespace kelmo
