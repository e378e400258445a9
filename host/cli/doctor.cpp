// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/doctor.h"

#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <functional>

#include <fmt/format.h>

#include "contract/engine.h"
#include "host/cli/plugin_runtime.h"
#include "host/media/codecs.h"
#include "host/session/dynamic_library.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

constexpr const char* kOwnContextEngine = "TZOpenGLEffectMgr-mesa";
constexpr const char* kHostContextEngine = "TZOpenGLEffectMgr";
constexpr const char* kInstallAdvice = "install the project completely, or name --plugins DIR";
constexpr const char* kCreateAiFilter = "CreateNLEAIEffectFilterFromGUID";

/// The last error line of an engine that is being tried.
std::string engineError;

void KeepEngineError(int32_t level, const char* format, va_list arguments) {
    if (level < kLogError) return;
    char text[512];
    std::vsnprintf(text, sizeof text, format, arguments);
    engineError = text;
}

Finding ExaminePlugin(const Installation& where, int* effects) {
    Finding finding{"plug-in", Health::kGood, where.PluginFile(), ""};
    try {
        HostServices services({where.resources.string(), where.plugins.string()}, {}, false);
        const auto plugin = PluginLibrary::Load(where.PluginFile());
        plugin->Startup(services);
        *effects = plugin->Info().effectCount;
        finding.detail += fmt::format(
            " ({}, {} effects)", plugin->Info().name ? plugin->Info().name : "no name", *effects);
    } catch (const std::exception& error) {
        finding = {"plug-in", Health::kBroken, error.what(), kInstallAdvice};
    }
    return finding;
}

Finding ExamineMaterial(const Installation& where, int effects) {
    const std::string folder = where.MaterialFolder();
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        return {"material", Health::kBroken, folder + " does not exist",
                "install the material, or name the folder above qor_effect with --resources DIR"};
    }
    if (effects > 0) {
        return {"material", Health::kGood, fmt::format("{} ({} entries)", folder, effects), ""};
    }
    return {"material", Health::kBroken, folder + " gives no entries",
            "look at `kelmo list -vv` for the entries that were refused"};
}

/// Loads an engine and has it made; `noDevice` as its export takes it.
void TryEngine(const std::string& file, uint8_t noDevice) {
    DynamicLibrary library = DynamicLibrary::Load(file);
    const auto create = library.FindFunction<CreateNLEOpenGLEffectEngineInstanceFn>(kCreateEngine);
    const auto destroy =
        library.FindFunction<DestroyNLEOpenGLEffectEngineInstanceFn>(kDestroyEngine);
    if (create == nullptr || destroy == nullptr) {
        throw HostError(file + " has not the exports of an engine");
    }
    library.KeepLoaded();
    engineError.clear();
    NLEOpenGLEffectEngine* engine = nullptr;
    const int32_t result = create(&engine, KeepEngineError, noDevice, 0);
    if (result != 0 || engine == nullptr) {
        throw HostError(fmt::format("{} does not start ({}{}{})", file, result,
                                    engineError.empty() ? "" : ": ", engineError));
    }
    destroy(engine);
}

Finding ExamineEngine(const Installation& where, const char* name, bool ownContext) {
    Finding finding{ownContext ? "engine" : "engine for --gpu", Health::kGood,
                    where.LibraryFile(name), ""};
    try {
        TryEngine(where.LibraryFile(name), ownContext ? 1 : 0);
    } catch (const std::exception& error) {
        finding.health = ownContext ? Health::kBroken : Health::kReduced;
        finding.detail = error.what();
        finding.advice = kInstallAdvice;
    }
    return finding;
}

Finding ExamineOpenGl(std::unique_ptr<GlDevice>& device) {
    try {
        device = GlDevice::Create();
        const GlInfo& info = device->Info();
        return {"OpenGL", Health::kGood,
                fmt::format("{}, {}, through EGL {}, pictures up to {}", info.renderer,
                            info.version, info.platform, device->LargestSide()),
                ""};
    } catch (const std::exception&) {
        return {"OpenGL", Health::kBroken, "no OpenGL 3.3 context without a window",
                "install a graphics driver with EGL (Debian: libegl-mesa0, libgl1-mesa-dri)"};
    }
}

Finding ExamineAi(const Installation& where) {
    const std::string file = (where.plugins / "qorAiFilterPlugin.qor").string();
    const char* advice =
        "effects that need a mask or body points find none; the others are not affected";
    try {
        const DynamicLibrary library = DynamicLibrary::Load(file);
        if (library.Find(kCreateAiFilter) == nullptr) {
            throw HostError(fmt::format("{} has no export {}", file, kCreateAiFilter));
        }
        return {"AI library", Health::kGood, file, ""};
    } catch (const std::exception& error) {
        return {"AI library", Health::kReduced, error.what(), advice};
    }
}

/// The networks that our AI library looks for; another library may bring its own and need none.
Finding ExamineModels(const Installation& where) {
    const std::filesystem::path folder = where.resources / "qor_effect" / "models";
    std::error_code error;
    int networks = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder, error)) {
        networks += file.path().extension() == ".tflite";
    }
    if (networks > 0) {
        return {"AI models", Health::kGood, fmt::format("{} ({})", folder.string(), networks), ""};
    }
    return {"AI models", Health::kReduced, folder.string() + " has none: nobody is found",
            "get them with scripts/fetch-models"};
}

void ExamineCodecs(std::vector<Finding>& findings) {
    std::vector<std::string> present;
    for (const CodecEntry& codec : Codecs()) {
        const char* kind = codec.encoder ? "encoder" : "decoder";
        if (codec.available) {
            present.push_back(codec.name);
            continue;
        }
        findings.push_back({fmt::format("{} {}", kind, codec.name), Health::kReduced,
                            "missing: " + codec.purpose,
                            "install a libavcodec that has it, or choose another --codec"});
    }
    findings.push_back({"codecs", present.empty() ? Health::kBroken : Health::kGood,
                        fmt::format("{}; {}", fmt::join(present, " "), MediaLibraries()), ""});
}

}  // namespace

const char* HealthName(Health health) {
    switch (health) {
        case Health::kReduced:
            return "missing";
        case Health::kBroken:
            return "broken";
        case Health::kGood:
            break;
    }
    return "ok";
}

std::vector<Finding> Examine(const Installation& where) {
    std::vector<Finding> findings;
    int effects = 0;
    findings.push_back(ExaminePlugin(where, &effects));
    findings.push_back(ExamineMaterial(where, effects));
    findings.push_back(ExamineEngine(where, kOwnContextEngine, true));
    std::unique_ptr<GlDevice> device;
    findings.push_back(ExamineOpenGl(device));
    // This engine works in the host's context, which is current now.
    findings.push_back(ExamineEngine(where, kHostContextEngine, false));
    findings.push_back(ExamineAi(where));
    findings.push_back(ExamineModels(where));
    ExamineCodecs(findings);
    return findings;
}

}  // namespace kelmo::host
