// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/material/unused_params.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "catalogue/description_check.h"

namespace kelmo::material {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kAudioSettings[] = {"audio_min",     "audio_max",      "frequency_min",
                                               "frequency_max", "compress_ratio", "audio_type"};

bool IsAudioSetting(std::string_view name) {
    return std::find(std::begin(kAudioSettings), std::end(kAudioSettings), name) !=
           std::end(kAudioSettings);
}

void Append(const fs::path& path, const fs::path& common, std::set<fs::path>& seen,
            std::string& text) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(path, error);
    std::ifstream file(path, std::ios::binary);
    if (!file || !fs::is_regular_file(path, error) || !seen.insert(whole).second) return;
    static const std::regex kInclude("^\\s*#\\s*include\\s*\"([^\"]+)\".*");
    for (std::string line; std::getline(file, line);) {
        std::smatch match;
        if (!std::regex_match(line, match, kInclude)) {
            text += line + "\n";
            continue;
        }
        const fs::path beside = path.parent_path() / match[1].str();
        Append(fs::exists(beside, error) ? beside : common / match[1].str(), common, seen, text);
    }
}

std::set<std::string> UniformsOf(const NLEFilterInfo& info, const std::string& commonFolder) {
    std::set<std::string> uniforms;
    for (const std::string& file : ShaderFiles(info)) {
        uniforms.merge(DeclaredUniforms(WithIncludes(file, commonFolder)));
    }
    return uniforms;
}

}  // namespace

std::string WithoutComments(std::string_view source) {
    std::string text;
    for (std::size_t i = 0; i < source.size();) {
        std::size_t end = i;
        if (source.substr(i, 2) == "//") {
            end = std::min(source.find('\n', i), source.size());
        } else if (source.substr(i, 2) == "/*") {
            const std::size_t close = source.find("*/", i + 2);
            end = close == std::string_view::npos ? source.size() : close + 2;
        }
        if (end != i) {
            text += ' ';
            i = end;
        } else {
            text += source[i++];
        }
    }
    return text;
}

std::vector<std::string> ShaderFiles(const NLEFilterInfo& info) {
    std::vector<std::string> files = {info.openglPath, info.vertexPath};
    for (const FilterPass& pass : info.passes) files.push_back(pass.fragmentPath);
    for (const auto* groups : {&info.fragmentExterns, &info.vertexExterns}) {
        for (const auto& group : *groups) files.insert(files.end(), group.begin(), group.end());
    }
    return files;
}

std::set<std::string> DeclaredUniforms(std::string_view source) {
    const std::string text = WithoutComments(source);
    static const std::regex kDeclaration(
        "\\buniform\\s+(?:(?:lowp|mediump|highp)\\s+)?\\w+\\s+([^;]*);");
    static const std::regex kName("\\s*(\\w+)[^,]*(?:,|$)");
    std::set<std::string> names;
    for (std::sregex_iterator it(text.begin(), text.end(), kDeclaration), end; it != end; ++it) {
        const std::string list = (*it)[1];
        for (std::sregex_iterator name(list.begin(), list.end(), kName); name != end; ++name) {
            names.insert((*name)[1]);
        }
    }
    return names;
}

std::string WithIncludes(const std::string& path, const std::string& commonFolder) {
    std::set<fs::path> seen;
    std::string text;
    if (!path.empty()) Append(path, commonFolder, seen, text);
    return text;
}

std::vector<std::string> UnusedParams(const NLEFilterInfo& info, const std::string& commonFolder) {
    const std::set<std::string> uniforms = UniformsOf(info, commonFolder);
    std::vector<std::string> unused;
    for (int32_t i = 0; i < info.paramCount; ++i) {
        const auto param = info.GetParam(i);
        if (!param || param->type == kParamText || param->type == kParamPointer) continue;
        if (info.hasAudio != 0 && IsAudioSetting(param->name)) continue;
        if (!uniforms.contains(UniformName(param->name))) unused.push_back(param->name);
    }
    return unused;
}

}  // namespace kelmo::material
