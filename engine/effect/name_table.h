// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelmo {

/// Numbers names in the order of their first appearance: 0, 1, 2...
///
/// An open-addressed hash table that grows by doubling; looking a known name up costs one hash and
/// one comparison and allocates nothing. Not synchronised.
class NameTable {
public:
    /// The number of `name`, or -1.
    int Find(const char* name) const;
    /// The number of `name`, which it now has if it had none.
    int FindOrAdd(const char* name);
    const std::string& Name(int number) const { return names[static_cast<size_t>(number)].text; }
    int Count() const { return static_cast<int>(names.size()); }

private:
    struct Entry {
        std::string text;
        uint64_t hash;
    };

    /// The place of the name, or the free place where it belongs.
    size_t Place(const char* name, uint64_t hash) const;
    void Grow();

    std::vector<Entry> names;
    std::vector<int32_t> places;  ///< number + 1, 0 is free; a power of two, at most half full
};

}  // namespace kelmo
