// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kelmo::host {

/// A stream of outline points in the form of `TextPath`: one type per point, pixels, y down.
struct Outline {
    std::vector<uint8_t> types;
    std::vector<float> xs;
    std::vector<float> ys;

    size_t Size() const { return types.size(); }
    bool operator==(const Outline&) const = default;

    void Add(uint8_t type, double x, double y) {
        types.push_back(type);
        xs.push_back(static_cast<float>(x));
        ys.push_back(static_cast<float>(y));
    }
    /// Leaves the first `size` points, which must be there.
    void Truncate(size_t size) {
        types.resize(size);
        xs.resize(size);
        ys.resize(size);
    }
    void Move(double dx, double dy) {
        for (size_t i = 0; i < Size(); ++i) {
            xs[i] = static_cast<float>(xs[i] + dx);
            ys[i] = static_cast<float>(ys[i] + dy);
        }
    }
    /// Runs the sub-contours from point `first` on, which is a move, through the other way.
    void Reverse(size_t first);
};

}  // namespace kelmo::host
