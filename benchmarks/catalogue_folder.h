// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace kelmo {

/// One entry of ordinary size: two textures, six parameters, an extern list.
inline std::string CatalogueEntry(int index) {
    std::ostringstream out;
    out << R"({"GUID": "508D116E-422F-4360-843A-)" << 100000000000 + index
        << R"(", "NAME": "Filter )" << index << R"(", "DATAPATH": "/qor_effect/material/family/f)"
        << index << R"(/", "OPENGL": "filter.frag", "OPENGL_VERTEX": "filter.vert",
 "OPENGL_EXTERN": "{noise.glsl,blur.glsl}{easing.glsl}", "ENCRYPT": "0", "DYNAMIC": "1",
 "TEXTURES": [{"TYPE": "image", "FILE": "light[25].png"}, {"TYPE": "image", "FILE": "ramp.png"}],
 "PARAMS": [)";
    for (int i = 0; i < 6; ++i) {
        out << (i == 0 ? "" : ",\n  ") << R"({"NAME": "uParam)" << i << R"(", "ALIAS": "Parameter )"
            << i << R"(", "TYPE": "float", "UIType": "Mult100", "MIN": 0.0, "MAX": 1.0,)"
            << R"( "DEFAULT": 0.5})";
    }
    out << "]}";
    return out.str();
}

/// A resource folder with a catalogue file of so many entries, removed at the end.
class CatalogueFolder {
public:
    explicit CatalogueFolder(int entries)
        : path(std::filesystem::temp_directory_path() /
               ("kelmo-benchmark-" + std::to_string(entries))) {
        std::filesystem::create_directories(path / "qor_effect/material");
        std::ofstream file(File());
        for (int i = 0; i < entries; ++i) {
            file << (i == 0 ? "[" : ",\n") << CatalogueEntry(i);
        }
        file << "]";
    }
    ~CatalogueFolder() { std::filesystem::remove_all(path); }

    std::string Path() const { return path.string(); }
    std::string File() const { return (path / "qor_effect/material/OpenGLFilter.conf").string(); }
    CatalogueFolder(const CatalogueFolder&) = delete;

private:
    std::filesystem::path path;
};

}  // namespace kelmo
