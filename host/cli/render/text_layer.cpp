// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/render/text_layer.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "host/text/host_text_path.h"

namespace kelmo::host {

namespace {

constexpr int kShift = 6;        // fractional bits of the polygon points
constexpr int kCurveSteps = 12;  // pieces of a curve: below a tenth of a pixel for letters of 500

using Contour = std::vector<cv::Point>;

/// Walks a stream of outline points and collects flattened closed contours.
class Flattener {
public:
    void Add(int32_t count, const uint8_t* types, const float* xs, const float* ys) {
        for (int32_t i = 0; i < count; ++i) {
            const int points = types[i] == kTextCubicTo ? 3 : types[i] == kTextQuadraticTo ? 2 : 1;
            if (i + points > count) return;
            if (types[i] == kTextMoveTo) contours.emplace_back();
            if (contours.empty()) return;
            if (points > 1) Curve(points, xs + i, ys + i);
            i += points - 1;
            current = {xs[i], ys[i]};
            Push(current);
        }
    }
    const std::vector<Contour>& Contours() const { return contours; }

private:
    void Push(cv::Point2d point) {
        const double scale = 1 << kShift;
        // The middle of a pixel is a whole number to the drawing, and a half to the outline.
        contours.back().emplace_back(static_cast<int>(std::lround((point.x - 0.5) * scale)),
                                     static_cast<int>(std::lround((point.y - 0.5) * scale)));
    }
    void Curve(int points, const float* xs, const float* ys) {
        for (int step = 1; step < kCurveSteps; ++step) {
            const double t = static_cast<double>(step) / kCurveSteps;
            const double s = 1 - t;
            const cv::Point2d a(xs[0], ys[0]);
            const cv::Point2d b(xs[1], ys[1]);
            if (points == 2) {
                Push(s * s * current + 2 * s * t * a + t * t * b);
            } else {
                const cv::Point2d c(xs[2], ys[2]);
                Push(s * s * s * current + 3 * s * s * t * a + 3 * s * t * t * b + t * t * t * c);
            }
        }
    }

    std::vector<Contour> contours;
    cv::Point2d current;
};

TextSettings SettingsOf(const TextWish& wish, int width, int height) {
    TextSettings settings;
    settings.text = wish.text;
    for (size_t at = settings.text.find("\\n"); at != std::string::npos;
         at = settings.text.find("\\n", at)) {
        settings.text.replace(at, 2, 1, '\n');
    }
    std::error_code ignored;
    if (std::filesystem::is_regular_file(wish.font, ignored)) {
        settings.fontFile = wish.font;
    } else if (!wish.font.empty()) {
        settings.families.insert(settings.families.begin(), wish.font);
    }
    settings.bold = wish.bold;
    settings.size =
        static_cast<float>(wish.size > 0 ? wish.size : std::max(8.0, height * wish.share));
    settings.canvasWidth = width;
    settings.canvasHeight = height;
    settings.letterSpacing = wish.letterSpacing;
    settings.lineSpacing = wish.lineSpacing;
    settings.alignment = wish.alignment;
    settings.angle = wish.angle;
    settings.positionX = wish.positionX;
    settings.positionY = wish.positionY;
    return settings;
}

}  // namespace

TextLayer::TextLayer(const TextWish& wish, int width, int height, Console& console) {
    path = HostTextPath::Create(SettingsOf(wish, width, height),
                                [&console](const std::string& text) { console.Warning(text); });
    drawn.Resize(width, height);
    Draw(wish.color);
}

TextLayer::~TextLayer() = default;

ClipText TextLayer::Text(bool firstFrame) {
    return {path.get(), firstFrame, nullptr};
}

void TextLayer::Draw(int32_t color) {
    cv::Mat mask = cv::Mat::zeros(drawn.height, drawn.width, CV_8UC1);
    for (int32_t i = 0; i < path->GetPathCount(); ++i) {
        const uint8_t* types = nullptr;
        const float* xs = nullptr;
        const float* ys = nullptr;
        const int32_t count = path->GetPath(i, &types, &xs, &ys, 0);
        Flattener flattener;
        flattener.Add(count, types, xs, ys);
        if (flattener.Contours().empty()) continue;
        cv::fillPoly(mask, flattener.Contours(), cv::Scalar(255), cv::LINE_AA, kShift);
    }
    for (int y = 0; y < drawn.height; ++y) {
        uint8_t* row = drawn.Row(y);
        for (int x = 0; x < drawn.width; ++x, row += 4) {
            const int coverage = mask.at<uint8_t>(y, x);
            for (int c = 0; c < 3; ++c) {
                row[c] = static_cast<uint8_t>((color >> (8 * c) & 0xFF) * coverage / 255);
            }
            row[3] = static_cast<uint8_t>(coverage);
        }
    }
}

void PutOver(Picture& top, const Picture& under) {
    const size_t count = std::min(top.pixels.size(), under.pixels.size());
    for (size_t i = 0; i + 3 < count; i += 4) {
        const int rest = 255 - top.pixels[i + 3];
        if (rest == 0) continue;
        for (size_t c = i; c < i + 4; ++c) {
            const int sum = top.pixels[c] + (under.pixels[c] * rest + 127) / 255;
            top.pixels[c] = static_cast<uint8_t>(std::min(255, sum));
        }
    }
}

}  // namespace kelmo::host
