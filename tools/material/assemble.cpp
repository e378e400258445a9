// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/assemble.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <vector>

namespace kelmo::material {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

std::vector<fs::path> DescriptionFiles(const fs::path& material) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(material)) {
        if (entry.is_regular_file() && entry.path().filename() == "filter.conf") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string ReadText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace

std::string AssembleCatalogue(const std::string& resources, int& entries) {
    const fs::path root(resources);
    const fs::path material = root / "qor_effect" / "material";
    std::error_code error;
    if (!fs::is_directory(material, error)) return "no folder " + material.string();

    Json all = Json::array();
    std::map<std::string, std::string> fileOfGuid;
    for (const fs::path& file : DescriptionFiles(material)) {
        Json entry = Json::parse(ReadText(file), nullptr, false);
        if (!entry.is_object()) return file.string() + ": not a JSON object";
        const auto guid = entry.find("GUID");
        if (guid == entry.end() || !guid->is_string()) return file.string() + ": no GUID";
        const auto [known, isNew] = fileOfGuid.emplace(guid->get<std::string>(), file.string());
        if (!isNew) return file.string() + ": the GUID of " + known->second;
        entry["DATAPATH"] = "/" + fs::relative(file.parent_path(), root).generic_string() + "/";
        all.push_back(std::move(entry));
    }
    entries = static_cast<int>(all.size());

    const fs::path target = material / "OpenGLFilter.conf";
    const std::string text = all.dump(1) + "\n";
    if (ReadText(target) == text) return {};
    const fs::path part = target.string() + ".part";
    {
        std::ofstream file(part, std::ios::binary);
        file << text;
        if (!file.flush()) return "cannot write " + part.string();
    }
    fs::rename(part, target, error);
    return error ? "cannot write " + target.string() + ": " + error.message() : std::string();
}

}  // namespace kelmo::material
