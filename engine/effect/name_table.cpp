// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/effect/name_table.h"

namespace kelmo {
namespace {

/// FNV-1a: short names, no setup.
uint64_t Hash(const char* name) {
    uint64_t hash = 14695981039346656037ULL;
    for (; *name; ++name) hash = (hash ^ static_cast<unsigned char>(*name)) * 1099511628211ULL;
    return hash;
}

}  // namespace

size_t NameTable::Place(const char* name, uint64_t hash) const {
    const size_t mask = places.size() - 1;
    size_t place = static_cast<size_t>(hash) & mask;
    while (places[place] != 0) {
        const Entry& entry = names[static_cast<size_t>(places[place]) - 1];
        if (entry.hash == hash && entry.text == name) break;
        place = (place + 1) & mask;
    }
    return place;
}

int NameTable::Find(const char* name) const {
    return places.empty() ? -1 : places[Place(name, Hash(name))] - 1;
}

int NameTable::FindOrAdd(const char* name) {
    const uint64_t hash = Hash(name);
    if (!places.empty()) {
        const int number = places[Place(name, hash)] - 1;
        if (number >= 0) return number;
    }
    if ((names.size() + 1) * 2 > places.size()) Grow();
    names.push_back({name, hash});
    places[Place(name, hash)] = Count();
    return Count() - 1;
}

void NameTable::Grow() {
    const size_t size = places.empty() ? 32 : places.size() * 2;
    places.assign(size, 0);
    for (size_t i = 0; i < names.size(); ++i) {
        places[Place(names[i].text.c_str(), names[i].hash)] = static_cast<int32_t>(i) + 1;
    }
}

}  // namespace kelmo
