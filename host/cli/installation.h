// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

namespace kelmo::host {

/// Where everything lies. Found beside the program, the same way in a build tree and in an
/// installation, unless a folder is given.
struct Installation {
    std::filesystem::path programs;
    std::filesystem::path plugins;
    std::filesystem::path resources;

    /// Empty texts: not given.
    static Installation Find(const std::string& plugins, const std::string& resources);

    std::string PluginFile() const;
    /// A library beside the plug-in by its name without ending.
    std::string PathOfLibrary(const std::string& name) const;
    std::string MaterialFolder() const;
};

}  // namespace kelmo::host
