// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/installation.h"

#include "host/session/plugin_library.h"

namespace kelmo::host {

namespace {

std::filesystem::path ProgramFolder() {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : program.parent_path();
}

std::filesystem::path Chosen(const std::string& given, const std::filesystem::path& usual) {
    const std::filesystem::path path = given.empty() ? usual : std::filesystem::path(given);
    // The plug-in may change the working folder's meaning for us: nothing stays relative.
    return std::filesystem::absolute(path).lexically_normal();
}

}  // namespace

Installation Installation::Find(const std::string& plugins, const std::string& resources) {
    Installation found;
    found.programs = ProgramFolder();
    found.plugins = Chosen(plugins, found.programs / KELMO_BIN_TO_PLUGINS);
    found.resources = Chosen(resources, found.programs / KELMO_BIN_TO_DATA);
    return found;
}

std::string Installation::PluginFile() const {
    return (plugins / kPluginFileName).string();
}

std::string Installation::PathOfLibrary(const std::string& name) const {
    return (plugins / (name + KELMO_LIBRARY_SUFFIX)).string();
}

std::string Installation::MaterialFolder() const {
    return (resources / "qor_effect" / "material").string();
}

}  // namespace kelmo::host
