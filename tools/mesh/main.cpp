// SPDX-License-Identifier: GPL-3.0-or-later
// kelmo-mesh: what the 3D text effects build, without an effect or a GPU: reads a text, builds its
// mesh with shape parameters by name, and writes a model (.obj) or a shaded picture.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <opencv2/imgcodecs.hpp>

#include "geometry/contours/contour_face.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "host/text/host_text_path.h"
#include "tools/mesh/mesh_picture.h"
#include "tools/mesh/obj_writer.h"
#include "tools/mesh/shape_parameters.h"

namespace kelmo::tools {
namespace {

struct Options {
    host::TextSettings text;
    std::vector<std::string> assignments;
    MeshView view;
    std::string output;
};

void Declare(CLI::App& app, Options& options) {
    app.add_option("-t,--text", options.text.text, "Text to build (UTF-8)")->required();
    app.add_option("-f,--font", options.text.fontFile, "Font file that comes first");
    app.add_option("--size", options.text.size, "Pixels per em")->capture_default_str();
    app.add_flag("--bold", options.text.bold, "Bold face of the default families");
    app.add_option("-o,--output", options.output, "model.obj or picture.png")->required();
    app.add_option("--width", options.view.width, "Frame and picture width")
        ->capture_default_str()
        ->check(CLI::Range(16, 8192));
    app.add_option("--height", options.view.height, "Frame and picture height")
        ->capture_default_str()
        ->check(CLI::Range(16, 8192));
    app.add_option("--rotate-x", options.view.rotateX, "Degrees")->capture_default_str();
    app.add_option("--rotate-y", options.view.rotateY, "Degrees")->capture_default_str();
    app.add_option("--zoom", options.view.zoom, "1 fits the text")->capture_default_str();
    app.add_flag("--lines", options.view.lines, "Draw the edges of the triangles");
    app.add_flag("--normals", options.view.normals, "Colour by direction");
    std::string names = "Shape parameters NAME=VALUE:";
    for (const std::string& name : ParameterNames()) names += " " + name;
    app.add_option("parameters", options.assignments, names);
}

void Build(const Options& options, VectorMesh& mesh) {
    MeshParameters parameters;
    for (const std::string& assignment : options.assignments) SetParameter(parameters, assignment);
    host::TextSettings text = options.text;
    text.canvasWidth = options.view.width;
    text.canvasHeight = options.view.height;
    const auto path = host::HostTextPath::Create(text, [](const std::string& warning) {
        std::fprintf(stderr, "kelmo-mesh: %s\n", warning.c_str());
    });
    Contours contours;
    contours.ParseTextPath(path.get(), options.view.width, options.view.height);
    contours.FlattenPaths(parameters.segment, parameters.shape.enableSubdivision);
    contours.m_IsText = true;
    const MeshShape shape = AdjustShape(parameters.shape);
    const int64_t columns =
        int64_t{options.view.width} * shape.levelSubdivision / options.view.height;
    ContourFace().ParseContours(contours, shape.enableSubdivision, shape.levelSubdivision,
                                static_cast<int32_t>(columns));
    BevelMeshBuilder builder;
    builder.SetShape(shape);
    if (!builder.BuildMesh(mesh, contours, parameters.extrude, false)) {
        throw std::runtime_error("the text has no outline to build, or too much of it");
    }
}

void Write(const Options& options, const VectorMesh& mesh) {
    if (options.output.ends_with(".obj")) {
        std::ofstream file(options.output);
        WriteObj(file, mesh);
        if (!file.flush()) throw std::runtime_error("cannot write " + options.output);
        return;
    }
    if (!cv::imwrite(options.output, DrawMesh(mesh, options.view))) {
        throw std::runtime_error("cannot write " + options.output);
    }
}

}  // namespace
}  // namespace kelmo::tools

int main(int argc, char** argv) {
    using namespace kelmo::tools;
    CLI::App app("Builds the 3D mesh of a text and writes it as a model or a picture.");
    Options options;
    Declare(app, options);
    CLI11_PARSE(app, argc, argv);
    try {
        kelmo::VectorMesh mesh;
        Build(options, mesh);
        Write(options, mesh);
        std::printf("%s: %d triangles\n", options.output.c_str(), mesh.triangleCount);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kelmo-mesh: %s\n", error.what());
        return 1;
    }
}
