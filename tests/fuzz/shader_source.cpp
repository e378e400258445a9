// SPDX-License-Identifier: GPL-3.0-or-later
// A shader of the material folder, and what a driver says of it: includes are followed or refused
// with the place, and places in a log stay readable.
#include "engine/shader/shader_source.h"

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

// Removed when the process ends.
struct Folder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("kelmo_fuzz_shader_" + std::to_string(getpid()));
    Folder() { std::filesystem::create_directories(path); }
    ~Folder() { std::filesystem::remove_all(path); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
    static const Folder folder;
    const std::string path = (folder.path / "a.frag").string();
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    std::ofstream(path, std::ios::binary) << text;
    const std::vector<std::vector<std::string>> groups = {{path, "missing.glsl"}, {}};
    const std::vector<int32_t> indices = {0};
    kelmo::ShaderSource source;
    std::string error;
    const bool isWhole =
        kelmo::AssembleShader(path, folder.path.string(), {&groups, &indices}, source, error);
    if (isWhole == !error.empty()) std::abort();
    if (!isWhole && error.find(':') == std::string::npos) std::abort();
    kelmo::MapCompileLog(text, source.files, 2);
    return 0;
}
