// SPDX-License-Identifier: GPL-3.0-or-later
#include "effects/beam/sweeps/sweep_path.h"

#include <algorithm>
#include <cmath>

#include "effects/beam/lines/contour_to_lines.h"

namespace kelmo {
namespace {

/// Both lines of a sweep at work, in pixels with y down.
struct Blades {
    cv::Point2f p1, p2, p3, p4;
};

struct Clock {
    float position, frames;
    float width, height;

    float Quarter() const { return frames / 4.0F; }
    bool Growing() const { return position <= Quarter(); }
    /// How much of the line has grown in the first quarter, 0..1.
    float Grown() const { return Growing() ? position / Quarter() : 1.0F; }
    /// How far the time behind the first quarter has come, 0..1.
    float Opening() const {
        return Growing() ? 0.0F : (position - Quarter()) / (frames - Quarter());
    }
    float Diagonal() const { return std::hypot(width, height); }
    float Angle() const { return std::atan(height / width); }
};

cv::Point2f Turn(const cv::Point2f& p, const cv::Point2f& about, float angle) {
    const cv::Point2f d = p - about;
    const float c = std::cos(angle);
    const float s = std::sin(angle);
    return {c * d.x - s * d.y + about.x, c * d.y + s * d.x + about.y};
}

float AngleAt(const cv::Point2f& corner, const cv::Point2f& a, const cv::Point2f& b) {
    const cv::Point2f u = a - corner;
    const cv::Point2f v = b - corner;
    const float lengths = std::hypot(u.x, u.y) * std::hypot(v.x, v.y);
    return lengths > 0.0F ? std::acos(std::clamp(u.dot(v) / lengths, -1.0F, 1.0F)) : 0.0F;
}

Blades Diagonal(const Clock& clock) {
    const float a = clock.Angle();
    const float grown = clock.Diagonal() * clock.Grown();
    const cv::Point2f start(0.0F, clock.height);
    const cv::Point2f tip = start + grown * cv::Point2f(std::cos(a), -std::sin(a));
    const float down = std::atan(clock.width / clock.height) * clock.Opening();
    return {Turn(start, tip, a * clock.Opening()), tip, Turn(start, tip, -down), tip};
}

/// How far both copies have slid, in pixels. One that rests keeps its place between two moments.
float Slide(const Clock& clock, bool rests) {
    if (clock.Growing()) return 0.0F;
    const float rested = 0.2F * clock.frames;
    const float moving = clock.frames - clock.Quarter() - rested;
    const float restStart = 0.35F * clock.frames;
    if (!rests || clock.position < restStart) return clock.width * clock.Opening();
    if (clock.position <= 0.55F * clock.frames) {
        return clock.width * (restStart - clock.Quarter()) / moving;
    }
    return clock.width * (clock.position - clock.Quarter() - rested) / moving;
}

Blades FromCorner(const Clock& clock, float startX, float startY, bool rests) {
    const float a = clock.Angle();
    const float grown = clock.Diagonal() * clock.Grown();
    const cv::Point2f start(startX * clock.width, startY * clock.height);
    const cv::Point2f way(startX > 0.0F ? -std::cos(a) : std::cos(a),
                          startY > 0.0F ? -std::sin(a) : std::sin(a));
    const cv::Point2f tip = start + grown * way;
    const cv::Point2f aside(Slide(clock, rests), 0.0F);
    return {start - aside, tip - aside, start + aside, tip + aside};
}

Blades Cross(const Clock& clock) {
    const float w = clock.width;
    const float h = clock.height;
    cv::Point2f p1(-w / 8.0F, 9.0F * h / 8.0F);
    cv::Point2f p2(9.0F * w / 8.0F, -h / 8.0F);
    if (clock.Growing()) {
        const float a = clock.Angle();
        const float grown = 1.25F * clock.Diagonal() * clock.Grown();
        p2 = p1 + grown * cv::Point2f(std::cos(a), -std::sin(a));
        return {p1, p2, p1, p2};
    }
    const float second = 0.75F * clock.frames;
    const cv::Point2f pivot(0.1F * w, 0.9F * h);
    const float whole = AngleAt(pivot, p2, {0.15F * w, h});
    const float part =
        std::min((clock.position - clock.Quarter()) / (second - clock.Quarter()), 1.0F);
    p1 = Turn(p1, pivot, whole * part);
    p2 = Turn(p2, pivot, whole * part);
    if (clock.position > second) {
        const float rest = AngleAt(p1, p2, {0.0F, h});
        p2 = Turn(p2, p1, rest * (clock.position - second) / (clock.frames - second));
    }
    return {p1, p2, {w - p2.x, h - p2.y}, {w - p1.x, h - p1.y}};
}

/// In device space, unlike the others.
Blades FromCentre(const Clock& clock, bool& blend) {
    constexpr float kUnits = 300.0F;
    constexpr float kDegree = 0.017453293F;
    constexpr float kSlides = 135.0F;
    const float unit = kUnits * clock.position / clock.frames;
    const float last = std::atan(clock.width / clock.height) / kDegree + 180.0F;
    float slide = 0.0F;
    blend = unit > kSlides;
    if (blend) slide = clock.width / 4.0F * std::min((unit - kSlides) / (last - kSlides), 1.0F);
    if (unit > last) slide += clock.width * (unit - last) / (kUnits - last);
    const cv::Size size(static_cast<int>(clock.width), static_cast<int>(clock.height));
    const cv::Point2f middle(clock.width / 2.0F, clock.height / 2.0F);
    const cv::Point2f hand(middle.x, middle.y - clock.Diagonal() * unit / kUnits);
    cv::Point2f p1 = ToDeviceSpace(Turn(hand, middle, std::min(unit, last) * kDegree), size);
    // The arm ends where it leaves the frame.
    p1 /= std::max(std::max(std::abs(p1.x), std::abs(p1.y)), 1.0F);
    cv::Point2f p2 = -p1;
    const cv::Point2f aside(2.0F * slide / clock.width, 0.0F);
    p1 -= aside;
    p2 -= aside;
    return {p1, p2, -p2, -p1};
}

void Fan(const Clock& clock, const cv::Size& size, Sweep& sweep) {
    constexpr float kQuarterTurn = 1.5707964F;
    constexpr float kStarts[] = {0.1F, 0.25F, 0.4F};
    const cv::Point2f c(clock.width / 2.0F, clock.height / 2.0F);
    const float grow = 0.6F * clock.frames;
    for (const float start : kStarts) {
        const float since = clock.position - start * clock.frames;
        if (since < 0.0F) return;
        const float angle = kQuarterTurn * (1.0F - std::min(since, grow) / grow);
        const cv::Point2f reach = cv::Point2f(clock.width, clock.height) * (0.45F * since / grow);
        const cv::Point2f turned1 = Turn({c.x - reach.x, c.y + reach.y}, c, angle);
        const cv::Point2f turned2 = Turn(c + reach, c, angle);
        const cv::Point2f r1 = ToDeviceSpace(turned1, size);
        const cv::Point2f r2 = ToDeviceSpace(turned2, size);
        const cv::Point2f r3 = ToDeviceSpace(2.0F * c - turned2, size);
        const cv::Point2f r4 = ToDeviceSpace(2.0F * c - turned1, size);
        sweep.edges = {{{r1, r2}, {r3, r4}, {r1, r3}, {r2, r4}}};
        for (const SweepLine& side : sweep.edges) sweep.lines[sweep.count++] = side;
    }
    sweep.pairs = 2;
    sweep.blend = true;
}

}  // namespace

Sweep SweepAt(SweepPath path, float position, float frames, const cv::Size& size) {
    Sweep sweep;
    const Clock clock{position, frames, static_cast<float>(size.width),
                      static_cast<float>(size.height)};
    sweep.blend = !clock.Growing();
    Blades blades;
    switch (path) {
        case SweepPath::kNone:
            sweep.blend = false;
            return sweep;
        case SweepPath::kFan:
            sweep.blend = false;
            Fan(clock, size, sweep);
            return sweep;
        case SweepPath::kFromCentre:
            blades = FromCentre(clock, sweep.blend);
            break;
        case SweepPath::kDiagonal:
            blades = Diagonal(clock);
            break;
        case SweepPath::kFromBottomLeft:
        case SweepPath::kFromBottomLeftWithRest:
            blades = FromCorner(clock, 0.0F, 1.0F, path == SweepPath::kFromBottomLeftWithRest);
            break;
        case SweepPath::kFromTopRight:
            blades = FromCorner(clock, 1.0F, 0.0F, false);
            break;
        case SweepPath::kFromBottomRight:
            blades = FromCorner(clock, 1.0F, 1.0F, false);
            break;
        case SweepPath::kFromTopLeft:
            blades = FromCorner(clock, 0.0F, 0.0F, false);
            break;
        case SweepPath::kCross:
            blades = Cross(clock);
            break;
    }
    if (path != SweepPath::kFromCentre) {
        for (cv::Point2f* p : {&blades.p1, &blades.p2, &blades.p3, &blades.p4}) {
            *p = ToDeviceSpace(*p, size);
        }
    }
    sweep.edges[0] = sweep.lines[0] = {blades.p1, blades.p2};
    sweep.edges[1] = sweep.lines[1] = {blades.p3, blades.p4};
    sweep.count = 2;
    sweep.pairs = 1;
    return sweep;
}

}  // namespace kelmo
