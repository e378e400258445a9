// SPDX-License-Identifier: GPL-3.0-or-later
// kelmo-measure: how a picture's colours are spread, as the reference that "Match Colour" moves
// another picture's colours to.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>

#include "tools/measure/reference_statistics.h"

int main(int argc, char** argv) {
    using namespace kelmo::measure;
    CLI::App app(
        "Prints the colour statistics of a picture as parameters of the effect \"Match Colour\".",
        "kelmo-measure");
    std::string picture;
    bool json = false;
    app.add_option("picture", picture, "Picture file")->required()->type_name("PICTURE");
    app.add_flag("--json", json, "Print JSON");
    CLI11_PARSE(app, argc, argv);
    try {
        const kelmo::ColorStatistics statistics = MeasureFile(picture);
        std::printf("%s\n", (json ? AsJson(statistics) : AsParameters(statistics)).c_str());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kelmo-measure: %s\n", error.what());
        return 1;
    }
}
