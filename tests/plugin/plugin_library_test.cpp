// SPDX-License-Identifier: GPL-3.0-or-later
// The built library as a host meets it: what it shows, and that it starts.
#include <elf.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "contract/qor_host.h"
#include "platform/dynamic_library.h"
#include "tests/support/recording_host.h"
#include "tests/support/temporary_folder.h"

namespace kelmo {
namespace {

const std::string kLibrary = KELMO_PLUGIN_DIR "/qorOpenGLFilterPlugin.qor";

/// Names of the defined symbols in the dynamic symbol table of a 64-bit ELF file.
std::set<std::string> ExportedSymbols(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    std::set<std::string> names;
    if (bytes.size() < sizeof(Elf64_Ehdr)) return names;
    const auto* const header = reinterpret_cast<const Elf64_Ehdr*>(bytes.data());
    const auto* const sections =
        reinterpret_cast<const Elf64_Shdr*>(bytes.data() + header->e_shoff);
    for (int s = 0; s < header->e_shnum; ++s) {
        if (sections[s].sh_type != SHT_DYNSYM) continue;
        const auto* symbol =
            reinterpret_cast<const Elf64_Sym*>(bytes.data() + sections[s].sh_offset);
        const auto* const end = symbol + sections[s].sh_size / sizeof(Elf64_Sym);
        const char* const texts = bytes.data() + sections[sections[s].sh_link].sh_offset;
        for (; symbol != end; ++symbol) {
            if (symbol->st_shndx != SHN_UNDEF) names.insert(texts + symbol->st_name);
        }
    }
    return names;
}

TEST(PluginLibraryTest, ShowsExactlySixSymbols) {
    EXPECT_THAT(ExportedSymbols(kLibrary),
                ::testing::ElementsAre("CreateQorEffect", "RegisterQorEffect",
                                       "RegisterQorEffectFromConfPath", "ReleaseQorEffect",
                                       "ShutdownQor", "StartupQor"));
}

TEST(PluginLibraryTest, LoadsStartsAndOffersAFilter) {
    DynamicLibrary library;
    std::string error;
    ASSERT_TRUE(library.Open(kLibrary, error)) << error;
    const auto startup = library.Symbol<StartupQorFn>(kStartupQor);
    const auto shutdown = library.Symbol<ShutdownQorFn>(kShutdownQor);
    const auto create = library.Symbol<CreateQorEffectFn>(kCreateQorEffect);
    const auto release = library.Symbol<ReleaseQorEffectFn>(kReleaseQorEffect);
    ASSERT_TRUE(startup && shutdown && create && release);

    const test::TemporaryFolder folder;
    folder.Write("qor_effect/material/OpenGLFilter.conf",
                 R"([{"GUID": "one", "OPENGL": "a.frag", "DATAPATH": "/a/"}])");
    test::RecordingHost host;
    host.resourceFolder = folder.Path();
    host.pluginFolder = folder.Path();
    QorPluginInfo info;
    ASSERT_EQ(startup(&host, &info), 0);
    EXPECT_EQ(info.effectCount, 1);
    QorEffect* effect = nullptr;
    ASSERT_EQ(create("one", 0, &effect), 0);
    release(effect);
    EXPECT_EQ(shutdown(), 0);
}

}  // namespace
}  // namespace kelmo
