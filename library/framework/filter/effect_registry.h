// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/nle_filter_info.h"

namespace kelmo {

class NLEOpenGLFilter;

/// Builds one effect from its description. `subGuid` is the description's second class key, or null
/// when that is empty; it is borrowed for the call.
using EffectFactory =
    std::function<std::unique_ptr<NLEOpenGLFilter>(std::shared_ptr<NLEFilterInfo>, const char*)>;

/// Which class runs which filter.
///
/// Keys are GUIDs of filters and class keys that a description may give as its type, in one name
/// space. Static initialisers beside the effect classes fill it through `RegisterEffect` before any
/// other thread can reach it; afterwards it is only read, without a lock.
class EffectRegistry {
public:
    struct Entry {
        std::string className;
        EffectFactory factory;
    };

    /// Made on first use, so that the order of static initialisation does not matter.
    static EffectRegistry& Instance();

    /// The same key again replaces the entry; for another class that is a mistake, which
    /// `Conflicts` tells.
    void Set(const std::string& key, Entry entry);
    /// Null when the key is not registered. The entry stays the registry's.
    const Entry* Find(std::string_view key) const;
    const std::map<std::string, Entry, std::less<>>& Entries() const { return entries; }
    /// Keys that two classes have registered.
    const std::vector<std::string>& Conflicts() const { return conflicts; }

private:
    std::map<std::string, Entry, std::less<>> entries;
    std::vector<std::string> conflicts;
};

/// Registers a factory under one or more keys. Returns true, so that a namespace-scope constant can
/// run it:
///
///     const bool registered = RegisterEffect("NLEOpenGLWaveFill", MakeEffect<NLEOpenGLWaveFill>,
///                                            {"7DD640A1-44C0-4F8F-9129-24DB9BE20B20"});
bool RegisterEffect(const char* className, const EffectFactory& factory,
                    std::initializer_list<const char*> keys);

/// The factory of a class whose constructor takes the description alone.
template <typename Effect>
std::unique_ptr<NLEOpenGLFilter> MakeEffect(std::shared_ptr<NLEFilterInfo> info, const char*) {
    return std::make_unique<Effect>(std::move(info));
}

/// A new filter for a description, or null for a null description. The type of the description wins
/// over its GUID; then a parameter with the alias "stickerPath" makes it a sticker filter (that
/// parameter's `name` becomes "stickerPath" too); everything else runs on the plain class. What a
/// constructor throws goes on to the caller.
std::unique_ptr<NLEOpenGLFilter> CreateFilter(const std::shared_ptr<NLEFilterInfo>& info);

}  // namespace kelmo
