// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/material/picture_compare.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <opencv2/imgcodecs.hpp>
#include <sstream>
#include <stdexcept>

namespace kelmo::test {
namespace {

Pixel At(const Picture& picture, int x, int y) {
    const uint8_t* p = picture.Row(y) + x * 4;
    return {p[0], p[1], p[2], p[3]};
}

int Distance(const Pixel& a, const Pixel& b) {
    int most = 0;
    for (int c = 0; c < 4; ++c) most = std::max(most, std::abs(a[c] - b[c]));
    return most;
}

std::string Text(const Pixel& p) {
    std::ostringstream text;
    text << "(B " << p[0] << ", G " << p[1] << ", R " << p[2] << ", A " << p[3] << ")";
    return text.str();
}

std::string Save(const std::string& name, const Picture& expected, const Picture& got) {
    const std::filesystem::path folder = std::filesystem::path(KELMO_TEST_OUTPUT_DIR) / "material";
    const std::filesystem::path stem = folder / name;
    std::filesystem::create_directories(stem.parent_path());
    WritePng(stem.string() + "-expected.png", expected);
    WritePng(stem.string() + "-got.png", got);
    WritePng(stem.string() + "-difference.png", Difference(expected, got));
    return stem.string() + "-{expected,got,difference}.png";
}

bool SameSize(const Picture& a, const Picture& b) {
    return a.width == b.width && a.height == b.height;
}

testing::AssertionResult SizesDiffer(const Picture& expected, const Picture& got) {
    return testing::AssertionFailure() << "expected " << expected.width << "x" << expected.height
                                       << ", got " << got.width << "x" << got.height;
}

}  // namespace

Comparison Compare(const Picture& expected, const Picture& got, int limit) {
    if (!SameSize(expected, got) || expected.Empty()) {
        throw std::invalid_argument("pictures of different sizes cannot be compared");
    }
    Comparison result;
    double squares = 0;
    int64_t beyond = 0;
    result.worst = -1;
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const Pixel a = At(expected, x, y);
            const Pixel b = At(got, x, y);
            for (int c = 0; c < 4; ++c) squares += (a[c] - b[c]) * (a[c] - b[c]);
            const int distance = Distance(a, b);
            if (distance > limit) ++beyond;
            if (distance <= result.worst) continue;
            result.worst = distance;
            result.x = x;
            result.y = y;
            result.expected = a;
            result.got = b;
        }
    }
    const double pixels = static_cast<double>(expected.width) * expected.height;
    result.share = static_cast<double>(beyond) / pixels;
    result.psnr = squares == 0 ? std::numeric_limits<double>::infinity()
                               : 10.0 * std::log10(255.0 * 255.0 * 4.0 * pixels / squares);
    return result;
}

std::string Describe(const Comparison& c) {
    std::ostringstream text;
    text << "worst pixel (" << c.x << ", " << c.y << "): expected " << Text(c.expected) << ", got "
         << Text(c.got) << ", off by " << c.worst << "; PSNR " << c.psnr << " dB, "
         << c.share * 100.0 << " % of the pixels beyond the limit";
    return text.str();
}

testing::AssertionResult LooksLike(const Picture& expected, const Picture& got,
                                   const std::string& name, const Tolerance& tolerance) {
    if (!SameSize(expected, got)) return SizesDiffer(expected, got);
    const Comparison c = Compare(expected, got, tolerance.limit);
    if (c.psnr >= tolerance.psnr && c.share <= tolerance.shareBeyond) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << Describe(c) << "\n  " << Save(name, expected, got);
}

testing::AssertionResult Equals(const Picture& expected, const Picture& got, int limit,
                                const std::string& name) {
    if (!SameSize(expected, got)) return SizesDiffer(expected, got);
    const Comparison c = Compare(expected, got, limit);
    if (c.worst <= limit) return testing::AssertionSuccess();
    return testing::AssertionFailure() << Describe(c) << "\n  " << Save(name, expected, got);
}

testing::AssertionResult IsPremultiplied(const Picture& picture) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Pixel p = At(picture, x, y);
            if (std::max({p[0], p[1], p[2]}) <= p[3]) continue;
            return testing::AssertionFailure()
                   << "(" << x << ", " << y << ") is brighter than its alpha: " << Text(p);
        }
    }
    return testing::AssertionSuccess();
}

bool IsFlat(const Picture& picture, int limit) {
    const Pixel first = At(picture, 0, 0);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (Distance(At(picture, x, y), first) > limit) return false;
        }
    }
    return true;
}

Picture Halved(const Picture& picture) {
    Picture half;
    half.Resize(picture.width / 2, picture.height / 2);
    for (int y = 0; y < half.height; ++y) {
        const uint8_t* upper = picture.Row(2 * y);
        const uint8_t* lower = picture.Row(2 * y + 1);
        for (int x = 0; x < half.width * 4; ++x) {
            const int from = x / 4 * 8 + x % 4;
            const int sum = upper[from] + upper[from + 4] + lower[from] + lower[from + 4];
            half.Row(y)[x] = static_cast<uint8_t>((sum + 2) / 4);
        }
    }
    return half;
}

Picture ReadPng(const std::string& path) {
    const cv::Mat read = cv::imread(path, cv::IMREAD_UNCHANGED);
    if (read.type() != CV_8UC4) throw std::runtime_error(path + ": no picture with alpha");
    Picture picture;
    picture.Resize(read.cols, read.rows);
    for (int y = 0; y < read.rows; ++y) {
        for (int x = 0; x < read.cols; ++x) {
            const auto& from = read.at<cv::Vec4b>(y, x);
            uint8_t* to = picture.Row(y) + x * 4;
            for (int c = 0; c < 3; ++c) {
                to[c] = static_cast<uint8_t>((from[c] * from[3] + 127) / 255);
            }
            to[3] = from[3];
        }
    }
    return picture;
}

void WritePng(const std::string& path, const Picture& picture) {
    cv::Mat straight(picture.height, picture.width, CV_8UC4);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Pixel p = At(picture, x, y);
            auto& to = straight.at<cv::Vec4b>(y, x);
            for (int c = 0; c < 3; ++c) {
                const int value = p[3] == 0 ? 0 : (p[c] * 255 + p[3] / 2) / p[3];
                to[c] = static_cast<uint8_t>(std::min(value, 255));
            }
            to[3] = static_cast<uint8_t>(p[3]);
        }
    }
    if (!cv::imwrite(path, straight)) throw std::runtime_error("cannot write " + path);
}

Picture Difference(const Picture& a, const Picture& b) {
    Picture difference;
    difference.Resize(a.width, a.height);
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            const Pixel p = At(a, x, y);
            const Pixel q = At(b, x, y);
            uint8_t* to = difference.Row(y) + x * 4;
            for (int c = 0; c < 3; ++c) {
                // What differs in alpha alone shows in all channels.
                const int off = std::abs(p[c] - q[c]) + std::abs(p[3] - q[3]);
                to[c] = static_cast<uint8_t>(std::min(255, off * 8));
            }
            to[3] = 255;
        }
    }
    return difference;
}

}  // namespace kelmo::test
