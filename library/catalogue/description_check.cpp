// SPDX-License-Identifier: GPL-3.0-or-later
#include "catalogue/description_check.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "catalogue/texture_path.h"
#include "platform/file_system.h"

namespace kelmo {
namespace {

// Words that GLSL 3.30 keeps for itself and that yet are good names for a parameter: the engine
// maps them to a uniform with an underscore behind it.
constexpr std::string_view kReservedWords[] = {
    "active", "cast",      "common",   "default", "discard", "external", "filter",
    "fixed",  "flat",      "half",     "input",   "inline",  "long",     "output",
    "packed", "partition", "public",   "sample",  "short",   "smooth",   "static",
    "superp", "switch",    "template", "this",    "union",   "using",    "volatile"};

// Its other keywords; of the long families of sampler and matrix types only the common ones, since
// nobody calls a parameter "isamplerCubeArray".
constexpr std::string_view kKeywords[] = {"asm",
                                          "attribute",
                                          "bool",
                                          "break",
                                          "bvec2",
                                          "bvec3",
                                          "bvec4",
                                          "case",
                                          "centroid",
                                          "class",
                                          "const",
                                          "continue",
                                          "do",
                                          "double",
                                          "else",
                                          "enum",
                                          "extern",
                                          "false",
                                          "float",
                                          "for",
                                          "goto",
                                          "highp",
                                          "if",
                                          "in",
                                          "inout",
                                          "int",
                                          "interface",
                                          "invariant",
                                          "isampler2D",
                                          "ivec2",
                                          "ivec3",
                                          "ivec4",
                                          "layout",
                                          "lowp",
                                          "mat2",
                                          "mat3",
                                          "mat4",
                                          "mediump",
                                          "namespace",
                                          "noinline",
                                          "noperspective",
                                          "out",
                                          "precision",
                                          "resource",
                                          "return",
                                          "sampler1D",
                                          "sampler2D",
                                          "sampler2DArray",
                                          "sampler2DRect",
                                          "sampler3D",
                                          "samplerBuffer",
                                          "samplerCube",
                                          "sizeof",
                                          "struct",
                                          "subroutine",
                                          "true",
                                          "typedef",
                                          "uint",
                                          "uniform",
                                          "unsigned",
                                          "usampler2D",
                                          "uvec2",
                                          "uvec3",
                                          "uvec4",
                                          "varying",
                                          "vec2",
                                          "vec3",
                                          "vec4",
                                          "void",
                                          "while"};

template <std::size_t N>
bool IsOneOf(const std::string_view (&words)[N], std::string_view text) {
    return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsColor(int32_t uiType) {
    return uiType == kUiColor || uiType == kUiColorStart || uiType == kUiColorEnd;
}

std::string Indexed(const char* key, std::size_t index) {
    return std::string(key) + "[" + std::to_string(index) + "]";
}

class DescriptionCheck {
public:
    explicit DescriptionCheck(const NLEFilterInfo& info) : info(info) {}

    std::vector<DescriptionProblem> Run() {
        CheckIdentity();
        CheckShaders();
        CheckTextures();
        CheckParams();
        return std::move(problems);
    }

private:
    void Report(std::string key, std::string message) {
        problems.push_back({std::move(key), std::move(message)});
    }

    bool RequireFile(const std::string& key, const std::string& path) {
        if (FileExists(path)) {
            return true;
        }
        Report(key, "no such file: " + path);
        return false;
    }

    void CheckIdentity() {
        if (info.guid.empty()) {
            Report("GUID", "is missing");
        } else if (!IsGuid(info.guid)) {
            Report("GUID", "is not of the form 8-4-4-4-12 hexadecimal digits: " + info.guid);
        }
        if (info.name.empty()) {
            Report("NAME", "is missing");
        }
    }

    void CheckShaders() {
        if (info.hasOpengl == 0) {
            Report("OPENGL", "is missing");
        } else {
            RequireFile("OPENGL", info.openglPath);
        }
        if (info.hasVertex != 0) {
            RequireFile("OPENGL_VERTEX", info.vertexPath);
        }
        if (info.hasOpencl != 0) {
            RequireFile("OPENCL", info.openclPath);
        }
        for (std::size_t i = 0; i < info.passes.size(); ++i) {
            const FilterPass& pass = info.passes[i];
            RequireFile(Indexed("PASSES", i), pass.fragmentPath);
            for (const std::string& name : pass.needs) CheckNeeded(Indexed("PASSES", i), name);
        }
        CheckGroups("OPENGL_EXTERN", info.fragmentExterns);
        CheckGroups("OPENGL_VERTEX_EXTERN", info.vertexExterns);
    }

    void CheckNeeded(const std::string& key, const std::string& name) {
        for (int32_t i = 0; i < info.paramCount; ++i) {
            const auto param = info.GetParam(i);
            if (param && param->name == name) return;
        }
        Report(key, "NEEDS " + name + ", which is no parameter");
    }

    void CheckGroups(const char* key, const std::vector<std::vector<std::string>>& groups) {
        for (std::size_t g = 0; g < groups.size(); ++g) {
            if (groups[g].empty()) {
                Report(Indexed(key, g), "is a group without files");
            }
            for (const std::string& path : groups[g]) {
                RequireFile(Indexed(key, g), path);
            }
        }
    }

    void CheckTextures() {
        for (int32_t i = 0; i < info.textureCount; ++i) {
            const std::string key = Indexed("TEXTURES", static_cast<std::size_t>(i));
            const std::string path = info.GetTexture(i);
            // A slot that is no image carries its type in front of the folder.
            if (const std::size_t bar = path.find('|');
                bar != std::string::npos && !path.starts_with(info.dataPath)) {
                Report(key, "TYPE is " + path.substr(0, bar) +
                                ", and only image is loaded (clips and sequences too)");
                continue;
            }
            const std::vector<std::string> files = ExpandTexturePath(path);
            if (files.empty()) {
                Report(key, "is a sequence without files: " + path);
            }
            // A missing sequence is one problem, not a thousand.
            for (const std::string& file : files) {
                if (!RequireFile(key, file)) {
                    break;
                }
            }
        }
    }

    void CheckParams() {
        std::set<std::string> names;
        for (int32_t i = 0; i < info.paramCount; ++i) {
            const std::string key = Indexed("PARAMS", static_cast<std::size_t>(i));
            const std::shared_ptr<NLEFilterParams> param = info.GetParam(i);
            if (param == nullptr) {
                Report(key, "is missing");
                continue;
            }
            CheckParamName(key, *param, names);
            CheckLimits(key, *param);
        }
    }

    void CheckParamName(const std::string& key, const NLEFilterParams& param,
                        std::set<std::string>& names) {
        if (param.name.empty()) {
            Report(key, "has no NAME");
        } else if (!IsGlslIdentifier(UniformName(param.name))) {
            Report(key, "NAME cannot be a uniform: " + param.name);
        } else if (!names.insert(param.name).second) {
            Report(key, "NAME stands twice: " + param.name);
        }
    }

    void CheckLimits(const std::string& key, const NLEFilterParams& param) {
        switch (param.type) {
            case kParamFloat:
                return CheckOrder(key, param, param.minValue.AsFloat(),
                                  param.defaultValue.AsFloat(), param.maxValue.AsFloat());
            case kParamDouble:
                return CheckOrder(key, param, param.minValue.AsDouble(),
                                  param.defaultValue.AsDouble(), param.maxValue.AsDouble());
            case kParamInt:
                // Colours are 0xAARRGGBB: with an alpha they are negative numbers here.
                if (IsColor(param.uiType)) {
                    return CheckOrder(key, param, static_cast<uint32_t>(param.minValue.AsInt()),
                                      static_cast<uint32_t>(param.defaultValue.AsInt()),
                                      static_cast<uint32_t>(param.maxValue.AsInt()));
                }
                return CheckOrder(key, param, param.minValue.AsInt(), param.defaultValue.AsInt(),
                                  param.maxValue.AsInt());
            default:
                return;
        }
    }

    template <typename T>
    void CheckOrder(const std::string& key, const NLEFilterParams& param, T minimum, T value,
                    T maximum) {
        // Written so that a NaN fails too.
        if (!(minimum <= value && value <= maximum)) {
            Report(key, param.name + ": DEFAULT " + std::to_string(value) + " is not within MIN " +
                            std::to_string(minimum) + " and MAX " + std::to_string(maximum));
        }
    }

    const NLEFilterInfo& info;
    std::vector<DescriptionProblem> problems;
};

}  // namespace

std::vector<DescriptionProblem> CheckDescription(const NLEFilterInfo& info) {
    return DescriptionCheck(info).Run();
}

bool IsGuid(std::string_view text) {
    constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                      [](char c, char form) { return form == 'x' ? IsHexDigit(c) : c == form; });
}

bool IsGlslIdentifier(std::string_view text) {
    return !text.empty() && !IsDigit(text[0]) &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return IsLetter(c) || IsDigit(c); }) &&
           !text.starts_with("gl_") && text.find("__") == std::string_view::npos &&
           !IsOneOf(kReservedWords, text) && !IsOneOf(kKeywords, text);
}

std::string UniformName(std::string_view parameter) {
    return std::string(parameter) + (IsOneOf(kReservedWords, parameter) ? "_" : "");
}

}  // namespace kelmo
