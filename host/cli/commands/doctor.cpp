// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/commands/doctor.h"

#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <set>

#include <fmt/format.h>

#include "contract/engine.h"
#include "host/cli/plugin_runtime.h"
#include "host/media/common/codecs.h"
#include "host/people/ai_library.h"
#include "host/session/dynamic_library.h"
#include "host/session/host_error.h"

namespace kelmo::host {

namespace {

constexpr const char* kOwnContextEngine = "TZOpenGLEffectMgr-mesa";
constexpr const char* kHostContextEngine = "TZOpenGLEffectMgr";
constexpr const char* kInstallAdvice = "install the project completely, or name --plugins DIR";

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

/// How many folders of the material hold the description of an effect.
int DescribedFolders(const std::string& folder) {
    namespace fs = std::filesystem;
    std::set<fs::path> described;
    std::error_code error;
    fs::recursive_directory_iterator place(folder, fs::directory_options::follow_directory_symlink,
                                           error);
    for (; !error && place != fs::recursive_directory_iterator(); place.increment(error)) {
        std::error_code unknownKind;
        const std::string name = place->path().filename().string();
        if (place->is_regular_file(unknownKind) && name == "filter.conf") {
            described.insert(place->path().parent_path());
        }
    }
    return static_cast<int>(described.size());
}

Finding ExamineMaterial(const Installation& where, int effects) {
    const std::string folder = where.MaterialFolder();
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        return {"material", Health::kBroken, folder + " does not exist",
                "install the material, or name the folder above qor_effect with --resources DIR"};
    }
    const int described = DescribedFolders(folder);
    if (effects > 0 && effects < described) {
        return {"material", Health::kReduced,
                fmt::format("{} ({} entries, but {} folders with a filter.conf)", folder, effects,
                            described),
                "look at `kelmo list -vv` for the entries that were refused"};
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
                    where.PathOfLibrary(name), ""};
    try {
        TryEngine(where.PathOfLibrary(name), ownContext ? 1 : 0);
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

/// The last error line of the AI library, which may come from a thread that loads a network.
class LastReason {
public:
    void Keep(int32_t level, std::string_view text) {
        const std::lock_guard<std::mutex> lock(mutex);
        if (level >= kLogError) line = text;
    }
    std::string Line() const {
        const std::lock_guard<std::mutex> lock(mutex);
        return line;
    }

private:
    mutable std::mutex mutex;
    std::string line;
};

/// Whether a filter is made and takes a picture.
bool Works(const AiLibrary& library, const char* guid) {
    Picture picture;
    picture.Resize(64, 64);
    try {
        const auto filter = library.Make(guid);
        Picture mask;
        if (std::string_view(guid) == kAiMaskFilter) return filter->Mask(picture, mask);
        return filter->Analyse<AIDATA::BaseAIDATA>(picture) != nullptr;
    } catch (const HostError&) {
        return false;  // the library has said why
    }
}

/// What the library needs besides itself: ours the runtime and the networks of qor_effect/models.
Finding ExamineModels(const AiLibrary& library, const LastReason& reason) {
    std::vector<std::string> found;
    std::vector<std::string> missing;
    for (const auto& [what, guid] :
         {std::pair("masks", kAiMaskFilter), {"faces", kAiFaceFilter}, {"bodies", kAiBodyFilter}}) {
        (Works(library, guid) ? found : missing).emplace_back(what);
    }
    if (missing.empty()) {
        return {"AI models", Health::kGood, fmt::format("{}", fmt::join(found, ", ")), ""};
    }
    return {"AI models", Health::kReduced,
            fmt::format("no {}: {}", fmt::join(missing, ", "), reason.Line()),
            "get them with scripts/fetch-models"};
}

void ExamineAi(const Installation& where, std::vector<Finding>& findings) {
    LastReason reason;
    try {
        const AiLibrary library(
            where.plugins.string(), where.resources.string(),
            [&reason](int32_t level, std::string_view text) { reason.Keep(level, text); });
        findings.push_back(
            {"AI library", Health::kGood, (where.plugins / "qorAiFilterPlugin.qor").string(), ""});
        findings.push_back(ExamineModels(library, reason));
    } catch (const std::exception& error) {
        findings.push_back(
            {"AI library", Health::kReduced, error.what(),
             "effects that need a mask or body points find none; the others are not affected"});
        findings.push_back({"AI models", Health::kReduced, "of no use without the AI library",
                            "get the library first, then run `kelmo doctor` again"});
    }
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
    ExamineAi(where, findings);
    ExamineCodecs(findings);
    return findings;
}

}  // namespace kelmo::host
