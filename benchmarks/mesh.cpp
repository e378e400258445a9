// SPDX-License-Identifier: GPL-3.0-or-later
// The whole rebuild of a title: parse, flatten, triangulate, build the mesh with a round bevel, on
// one core; and each stage alone. A frame at 60 a second has 16.7 ms.

#include <benchmark/benchmark.h>

#include "geometry/contours/contour_face.h"
#include "geometry/mesh/bevel_mesh_builder.h"
#include "geometry/shapes/outlines.h"

namespace kelmo {
namespace {

constexpr int32_t kWidth = 1920;
constexpr int32_t kHeight = 1080;
constexpr char kTitle[] = "The quick brown fox 0123456789";
constexpr float kSegment = 0.011f;
constexpr float kExtrude = 0.1f;

test::FontTextPath Title() {
    const test::FontFile font(test::kLatinFont);
    std::vector<uint32_t> glyphs;
    for (const char* c = kTitle; *c; ++c) glyphs.push_back(font.GlyphOf(*c));
    test::FontTextPath text(kWidth, kHeight);
    text.AddLines(font, glyphs, 96);
    return text;
}

MeshShape RoundBevel() {
    MeshShape shape;
    shape.bevelSize = 5;
    shape.bevelCurve = 1;
    return AdjustShape(shape);
}

void RebuildTitle(benchmark::State& state) {
    test::FontTextPath text = Title();
    Contours contours;
    BevelMeshBuilder builder;
    builder.SetShape(RoundBevel());
    VectorMesh mesh;
    for (auto _ : state) {
        test::ParseText(contours, text, kWidth, kHeight, kSegment);
        builder.BuildMesh(mesh, contours, kExtrude, false);
        contours.ClearDerived();
        benchmark::DoNotOptimize(mesh.position.get());
    }
    state.counters["triangles"] = mesh.triangleCount;
}

void ParseAndFlatten(benchmark::State& state) {
    test::FontTextPath text = Title();
    Contours contours;
    for (auto _ : state) {
        contours.ParseTextPath(&text, kWidth, kHeight);
        contours.FlattenPaths(kSegment, false);
    }
}

void TriangulateFaces(benchmark::State& state) {
    test::FontTextPath text = Title();
    Contours contours;
    test::ParseText(contours, text, kWidth, kHeight, kSegment);
    for (auto _ : state) ContourFace().ParseContours(contours, false, 0, 0);
}

void BuildOnly(benchmark::State& state) {
    test::FontTextPath text = Title();
    Contours contours;
    test::ParseText(contours, text, kWidth, kHeight, kSegment);
    BevelMeshBuilder builder;
    builder.SetShape(RoundBevel());
    VectorMesh mesh;
    for (auto _ : state) builder.BuildMesh(mesh, contours, kExtrude, false);
}

BENCHMARK(RebuildTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(ParseAndFlatten)->Unit(benchmark::kMillisecond);
BENCHMARK(TriangulateFaces)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildOnly)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelmo
