// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/session/catalogue.h"

#include <fmt/format.h>

#include "host/session/description_registrar.h"
#include "host/session/host_error.h"
#include "host/session/plugin_library.h"
#include "host/session/suggestion.h"
#include "host/session/text_values.h"

namespace kelmo::host {

Catalogue Catalogue::Of(PluginLibrary& plugin) {
    std::vector<EffectDescription> all;
    for (int32_t index = 0; index < plugin.Info().effectCount; ++index) {
        DescriptionRegistrar registrar;
        if (plugin.Register(index, registrar)) all.push_back(registrar.Take());
    }
    return Catalogue(std::move(all));
}

const EffectDescription& Catalogue::Find(std::string_view guidOrName) const {
    const std::string wanted = LowerCase(Trimmed(guidOrName));
    std::vector<const EffectDescription*> named;
    for (const EffectDescription& effect : effects) {
        if (LowerCase(effect.guid) == wanted) return effect;
        if (LowerCase(effect.name) == wanted) named.push_back(&effect);
    }
    if (named.size() == 1) return *named.front();
    if (named.size() > 1) {
        std::vector<std::string> guids;
        for (const EffectDescription* effect : named) guids.push_back(effect->guid);
        throw HostError(fmt::format("{} effects are called \"{}\"; say which by its GUID: {}",
                                    named.size(), guidOrName, fmt::join(guids, ", ")));
    }
    std::vector<std::string> names;
    for (const EffectDescription& effect : effects) {
        names.push_back(effect.name);
        names.push_back(effect.guid);
    }
    throw HostError(fmt::format("unknown effect \"{}\"{} (`kelmo list` shows all {})", guidOrName,
                                DidYouMean(guidOrName, names), effects.size()));
}

}  // namespace kelmo::host
