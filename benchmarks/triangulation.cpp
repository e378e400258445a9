// SPDX-License-Identifier: GPL-3.0-or-later
// Triangulation of text beside the tessellator of the GL utility library, on the same polylines.
// Groups of contours are shared among threads; the peer is single-threaded. Counters: "ratio" is
// our time for one text over the peer's, measured in turns in this run, both by the clock on the
// wall; "cpu_ratio" the same in processor time of all threads; "per_character" shows how time grows
// with the length of a text. The argument is the number of threads, of "Growth" that of characters.

#include <GL/glu.h>
#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <ctime>
#include <deque>
#include <opencv2/core/utility.hpp>

#include "geometry/contours/contour_face.h"
#include "geometry/shapes/outlines.h"

namespace kelmo {
namespace {

constexpr int32_t kWidth = 1920;
constexpr int32_t kHeight = 1080;
constexpr uint32_t kFirstHan = 0x4E00;

std::vector<uint32_t> LatinGlyphs(const test::FontFile& font, int count) {
    std::vector<uint32_t> glyphs;
    for (int i = 0; i < count; ++i) glyphs.push_back(font.GlyphOf(U'!' + i * 7 % 94));
    return glyphs;
}

std::vector<uint32_t> HanGlyphs(const test::FontFile& font, int count) {
    std::vector<uint32_t> glyphs;
    for (int i = 0; i < count; ++i) glyphs.push_back(font.GlyphOf(kFirstHan + i * 37 % 20000));
    return glyphs;
}

// The polylines of a text, ready to be triangulated.
void LayOut(Contours& contours, bool isHan, int count, float size) {
    const test::FontFile font(isHan ? test::kHanFont : test::kLatinFont);
    test::FontTextPath text(kWidth, kHeight);
    text.AddLines(font, isHan ? HanGlyphs(font, count) : LatinGlyphs(font, count), size);
    contours.ParseTextPath(&text, kWidth, kHeight);
    contours.FlattenPaths(0.011f, false);
}

// Seconds on the wall, and of processor time in all threads.
struct Stopwatch {
    std::chrono::steady_clock::time_point wallStart = std::chrono::steady_clock::now();
    std::clock_t cpuStart = std::clock();

    double Wall() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count();
    }
    double Cpu() const { return static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC; }
};

// Collects triangles of glu's tessellator.
class GluTessellator {
public:
    GluTessellator() : tessellator(gluNewTess()) {
        // An edge callback makes it deliver plain triangles, which is what a mesh needs.
        const auto set = [&](GLenum which, auto callback) {
            gluTessCallback(tessellator, which, reinterpret_cast<_GLUfuncptr>(callback));
        };
        set(GLU_TESS_VERTEX_DATA, &OnVertex);
        set(GLU_TESS_EDGE_FLAG, &OnEdge);
        set(GLU_TESS_COMBINE_DATA, &OnCombine);
        gluTessProperty(tessellator, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
        gluTessNormal(tessellator, 0, 0, -1);
    }
    ~GluTessellator() { gluDeleteTess(tessellator); }
    GluTessellator(const GluTessellator&) = delete;
    GluTessellator& operator=(const GluTessellator&) = delete;

    size_t Run(const std::vector<std::vector<cv::Point2f>>& group) {
        corners.clear();
        places.clear();
        gluTessBeginPolygon(tessellator, this);
        for (const std::vector<cv::Point2f>& contour : group) {
            gluTessBeginContour(tessellator);
            for (const cv::Point2f& point : contour) {
                Place& place = places.emplace_back(Place{point.x, point.y, 0});
                gluTessVertex(tessellator, place.data(), place.data());
            }
            gluTessEndContour(tessellator);
        }
        gluTessEndPolygon(tessellator);
        return corners.size() / 3;
    }

private:
    using Place = std::array<GLdouble, 3>;

    static void OnVertex(void* vertex, void* self) {
        const auto* place = static_cast<const GLdouble*>(vertex);
        static_cast<GluTessellator*>(self)->corners.emplace_back(place[0], place[1]);
    }
    static void OnEdge(GLboolean) {}
    static void OnCombine(GLdouble coords[3], void* [4], GLfloat[4], void** out, void* self) {
        auto& places = static_cast<GluTessellator*>(self)->places;
        *out = places.emplace_back(Place{coords[0], coords[1], coords[2]}).data();
    }

    GLUtesselator* tessellator;
    std::vector<cv::Point2f> corners;
    std::deque<Place> places;
};

void RunBoth(benchmark::State& state, bool isHan, int count, float size, int threads) {
    Contours contours;
    LayOut(contours, isHan, count, size);
    GluTessellator peer;
    const ContourFace face;
    cv::setNumThreads(threads);
    double ours = 0;
    double oursCpu = 0;
    double theirs = 0;
    double theirsCpu = 0;
    size_t peerTriangles = 0;
    for (auto _ : state) {
        const Stopwatch our;
        face.ParseContours(contours, false, 0, 0);
        const double seconds = our.Wall();
        oursCpu += our.Cpu();
        ours += seconds;
        state.SetIterationTime(seconds);
        const Stopwatch their;
        peerTriangles = 0;
        for (const auto& group : contours.m_Points) peerTriangles += peer.Run(group);
        theirs += their.Wall();
        theirsCpu += their.Cpu();
    }
    cv::setNumThreads(-1);
    size_t triangles = 0;
    size_t points = 0;
    for (const auto& group : contours.m_Triangles) triangles += group.size();
    for (const auto& group : contours.m_Points) {
        for (const auto& contour : group) points += contour.size();
    }
    state.counters["ratio"] = ours / theirs;
    state.counters["cpu_ratio"] = oursCpu / theirsCpu;
    state.counters["points"] = static_cast<double>(points);
    state.counters["triangles"] = static_cast<double>(triangles);
    state.counters["peer_triangles"] = static_cast<double>(peerTriangles);
    state.counters["per_character"] = benchmark::Counter(
        count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void LineOf60(benchmark::State& state) {
    RunBoth(state, false, 60, 60, static_cast<int>(state.range(0)));
}
void PageOf500Han(benchmark::State& state) {
    RunBoth(state, true, 500, 48, static_cast<int>(state.range(0)));
}
void Growth(benchmark::State& state) {
    RunBoth(state, true, static_cast<int>(state.range(0)), 32, 1);
}

BENCHMARK(LineOf60)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(PageOf500Han)->Arg(1)->Arg(2)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Growth)->Arg(100)->Arg(300)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelmo
