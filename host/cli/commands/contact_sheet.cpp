// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/cli/commands/contact_sheet.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "host/session/host_error.h"
#include "host/session/text_values.h"

namespace kelmo::host {

namespace {

constexpr int kGap = 8;          // pixels between tiles
constexpr int kNameHeight = 22;  // pixels under a tile
constexpr int kFont = cv::FONT_HERSHEY_SIMPLEX;
constexpr double kFontScale = 0.42;
constexpr int kCheckerSide = 8;

cv::Mat MatOf(Picture& picture) {
    return cv::Mat(picture.height, picture.width, CV_8UC4, picture.pixels.data(),
                   static_cast<size_t>(picture.stride));
}

std::string Printable(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0) continue;  // the rest of a longer character
        text += byte >= 0x20 && byte < 0x7F ? c : '?';
    }
    return text;
}

int TextWidth(const std::string& text) {
    int baseline = 0;
    return cv::getTextSize(text, kFont, kFontScale, 1, &baseline).width;
}

/// Premultiplied pixels over a chequer of two greys.
void PutOverChequer(const cv::Mat& picture, cv::Mat target) {
    for (int y = 0; y < target.rows; ++y) {
        const cv::Vec4b* from = picture.ptr<cv::Vec4b>(y);
        cv::Vec4b* to = target.ptr<cv::Vec4b>(y);
        for (int x = 0; x < target.cols; ++x) {
            const bool light = ((x / kCheckerSide) + (y / kCheckerSide)) % 2 == 0;
            const int ground = (light ? 110 : 80) * (255 - from[x][3]) / 255;
            for (int c = 0; c < 3; ++c) {
                to[x][c] = static_cast<uint8_t>(std::min(255, from[x][c] + ground));
            }
            to[x][3] = 255;
        }
    }
}

}  // namespace

int ContactSheet::GoodColumns(int tiles, int tileWidth, int tileHeight) {
    const double cellWidth = tileWidth + kGap;
    const double cellHeight = tileHeight + kNameHeight + kGap;
    const double columns = std::sqrt(tiles * cellHeight / cellWidth);
    return std::clamp(static_cast<int>(std::ceil(columns)), 1, std::max(1, tiles));
}

ContactSheet::ContactSheet(int tiles, int columnCount, int width, int height)
    : columns(columnCount), tileWidth(width), tileHeight(height) {
    const int64_t rows = (tiles + columns - 1) / columns;
    const int64_t sheetWidth = kGap + static_cast<int64_t>(columns) * (tileWidth + kGap);
    const int64_t sheetHeight = kGap + rows * (tileHeight + kNameHeight + kGap);
    if (sheetWidth > kLargestSide || sheetHeight > kLargestSide) {
        throw UsageError(
            fmt::format("a sheet of {}x{} is too large; use a smaller --tile, another "
                        "--columns or --search",
                        sheetWidth, sheetHeight));
    }
    sheet.Resize(static_cast<int>(sheetWidth), static_cast<int>(sheetHeight));
    MatOf(sheet).setTo(cv::Scalar(32, 32, 32, 255));
}

void ContactSheet::Add(const Picture& picture, const std::string& name) {
    const int left = kGap + next % columns * (tileWidth + kGap);
    const int top = kGap + next / columns * (tileHeight + kNameHeight + kGap);
    ++next;
    if (top + tileHeight + kNameHeight > sheet.height) return;
    Picture copy = picture;
    cv::Mat small;
    cv::resize(MatOf(copy), small, cv::Size(tileWidth, tileHeight), 0, 0, cv::INTER_AREA);
    PutOverChequer(small, MatOf(sheet)(cv::Rect(left, top, tileWidth, tileHeight)));
    DrawName(left, top + tileHeight, name);
}

void ContactSheet::DrawName(int left, int top, const std::string& name) {
    std::string text = Printable(name);
    if (TextWidth(text) > tileWidth) {
        while (!text.empty() && TextWidth(text + "...") > tileWidth) text.pop_back();
        text += "...";
    }
    const int indent = std::max(0, (tileWidth - TextWidth(text)) / 2);
    cv::putText(MatOf(sheet), text, cv::Point(left + indent, top + kNameHeight - 7), kFont,
                kFontScale, cv::Scalar(230, 230, 230, 255), 1, cv::LINE_AA);
}

}  // namespace kelmo::host
