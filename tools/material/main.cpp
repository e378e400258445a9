// SPDX-License-Identifier: GPL-3.0-or-later
// kelmo-material: assembles the catalogue from its folders, and checks descriptions and shaders.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "catalogue/description_check.h"
#include "catalogue/filter_catalogue.h"
#include "framework/filter/effect_registry.h"
#include "tools/material/assemble.h"
#include "tools/material/shader_compiler.h"
#include "tools/material/shader_loops.h"
#include "tools/material/unused_params.h"

namespace {

namespace fs = std::filesystem;
using namespace kelmo;

constexpr const char* kUsage =
    "usage: kelmo-material assemble RESOURCES\n"
    "       kelmo-material check RESOURCES [--engine LIBRARY]\n"
    "\n"
    "assemble  writes RESOURCES/qor_effect/material/OpenGLFilter.conf from the folders below it\n"
    "check     reads that catalogue, validates every description and compiles every shader\n";

/// Where this program lies; a call through PATH does not tell.
fs::path OwnFolder(const char* called) {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return (error ? fs::absolute(called) : program).parent_path();
}

int Assemble(const std::string& resources) {
    int entries = 0;
    const std::string error = material::AssembleCatalogue(resources, entries);
    if (!error.empty()) {
        std::fprintf(stderr, "kelmo-material: %s\n", error.c_str());
        return 1;
    }
    std::printf("%d filters assembled\n", entries);
    return 0;
}

/// A class may read parameters on the CPU, and a sub-filter gets those of its owner.
bool HasOwnClass(const NLEFilterInfo& info) {
    if (!info.passes.empty()) return false;
    const EffectRegistry& registry = EffectRegistry::Instance();
    return registry.Find(info.typeName) != nullptr || registry.Find(info.guid) != nullptr ||
           !info.subGuid.empty();
}

int CheckAll(const std::string& resources, const std::string& enginePath) {
    material::ShaderCompiler compiler;
    const std::string error = compiler.Open(enginePath);
    if (!error.empty()) {
        std::fprintf(stderr, "kelmo-material: %s\n", error.c_str());
        return 1;
    }
    FilterCatalogue catalogue;
    LoadCatalogueInto(catalogue, resources);
    const std::string commonFolder = resources + "/qor_effect/material/common";
    int problems = 0;
    for (const auto& info : catalogue.All()) {
        const auto report = [&](const std::string& text) {
            std::printf("%s (%s): %s\n", info->name.c_str(), info->guid.c_str(), text.c_str());
            ++problems;
        };
        for (const auto& problem : CheckDescription(*info)) {
            report(problem.key + ": " + problem.message);
        }
        for (const std::string& line : compiler.Compile(*info)) report(line);
        for (const std::string& file : material::ShaderFiles(*info)) {
            const std::string text = material::WithIncludes(file, commonFolder);
            for (const std::string& loop : material::UnboundedLoops(text)) {
                report(file + ": a loop without a bound that is constant: " + loop);
            }
        }
        if (HasOwnClass(*info)) continue;
        for (const std::string& name : material::UnusedParams(*info, commonFolder)) {
            report("no shader declares the parameter " + name);
        }
    }
    std::printf("%zu filters checked, %d problems\n", catalogue.Count(), problems);
    return problems == 0 && catalogue.Count() > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.size() == 2 && args[0] == "assemble") return Assemble(args[1]);
    if (args.size() >= 2 && args[0] == "check") {
        const fs::path own = OwnFolder(argv[0]);
        std::string engine =
            (own / KELMO_RELATIVE_PLUGIN_DIR / "TZOpenGLEffectMgr-mesa.so").lexically_normal();
        if (args.size() == 4 && args[2] == "--engine") engine = args[3];
        // Includes are found by their whole paths.
        return CheckAll(fs::absolute(args[1]).lexically_normal(), engine);
    }
    std::fputs(kUsage, stderr);
    return 2;
}
