// SPDX-License-Identifier: GPL-3.0-or-later
// The registry against the list of effects that projects of users name: no key at the wrong class,
// none twice. Effects beyond the list have keys and classes of their own. Counts what is built.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <map>
#include <set>
#include <string>

#include "framework/filter/effect_registry.h"

namespace kelmo {
namespace {

/// Key to class, from effect_keys.txt.
std::map<std::string, std::string> ReadTable() {
    std::ifstream file(KELMO_SOURCE_DIR "/tests/plugin/effect_keys/effect_keys.txt");
    std::map<std::string, std::string> table;
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t space = line.find(' ');
        if (line.starts_with("#") || space == std::string::npos) continue;
        const bool isNew = table.emplace(line.substr(space + 1), line.substr(0, space)).second;
        EXPECT_TRUE(isNew) << line;
    }
    return table;
}

bool IsGuid(const std::string& key) {
    return key.size() == 36 && key.find('-') != std::string::npos;
}

TEST(EffectKeysTest, TheTableIsWhole) {
    const auto table = ReadTable();
    std::set<std::string> classes;
    std::size_t guids = 0;
    for (const auto& [key, name] : table) {
        classes.insert(name);
        guids += IsGuid(key) ? 1 : 0;
    }
    EXPECT_EQ(table.size(), 230U);
    EXPECT_EQ(guids, 204U);
    EXPECT_EQ(classes.size(), 105U);
}

TEST(EffectKeysTest, EveryRegisteredKeyStandsAtItsClass) {
    const auto table = ReadTable();
    std::set<std::string> listed;
    for (const auto& [key, name] : table) listed.insert(name);
    std::set<std::string> built;
    std::size_t keys = 0;
    for (const auto& [key, entry] : EffectRegistry::Instance().Entries()) {
        const auto row = table.find(key);
        if (row == table.end()) {
            EXPECT_FALSE(listed.contains(entry.className))
                << key << " is no key of " << entry.className;
            continue;
        }
        EXPECT_EQ(entry.className, row->second) << key;
        built.insert(entry.className);
        ++keys;
    }
    EXPECT_THAT(EffectRegistry::Instance().Conflicts(), ::testing::IsEmpty());
    std::cout << built.size() << " of 105 classes and " << keys << " of 230 keys are registered\n";
}

TEST(EffectKeysTest, AClassRegistersAllOfItsKeysOrNone) {
    const auto& registry = EffectRegistry::Instance();
    std::set<std::string> built;
    for (const auto& [key, entry] : registry.Entries()) built.insert(entry.className);
    for (const auto& [key, name] : ReadTable()) {
        if (!built.contains(name)) continue;
        EXPECT_NE(registry.Find(key), nullptr) << key << " of " << name;
    }
}

}  // namespace
}  // namespace kelmo
