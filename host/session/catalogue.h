// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/session/effect_description.h"

namespace kelmo::host {

class PluginLibrary;

/// All effects of a started plug-in, in its order. A value; unchanged once it is made, so that any
/// thread may read it.
class Catalogue {
public:
    Catalogue() = default;
    explicit Catalogue(std::vector<EffectDescription> all) : effects(std::move(all)) {}

    /// Has every effect of the plug-in described. Entries that the plug-in refuses are left out.
    static Catalogue Of(PluginLibrary& plugin);

    const std::vector<EffectDescription>& Effects() const { return effects; }

    /// By GUID or by name, letter case apart. Throws HostError: unknown (with the nearest name), or
    /// several effects of that name (with their GUIDs).
    const EffectDescription& Find(std::string_view guidOrName) const;

private:
    std::vector<EffectDescription> effects;
};

}  // namespace kelmo::host
