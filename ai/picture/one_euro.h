// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>
#include <vector>

namespace kelmo {

/// Smooths numbers that come once a frame: strongly while they rest, hardly while they move, after
/// the one-euro filter (Casiez, Roussel, Vogel 2012). Frames count as 1/25 s apart.
class OneEuro {
public:
    /// `minCutoff` and `derivativeCutoff` in hertz; `beta`: hertz of cutoff for a speed of one unit
    /// a second.
    struct Settings {
        float minCutoff = 1.0f;
        float beta = 40.0f;
        float derivativeCutoff = 1.0f;
    };

    OneEuro() = default;
    explicit OneEuro(const Settings& settings) : settings(settings) {}

    /// The next values begin anew.
    void Reset() { previous.clear(); }
    /// Replaces the values by smoothed ones. `unit`: size of a unit in terms of the values, such as
    /// the distance of the eyes. Another number of values begins anew.
    void Apply(std::span<float> values, float unit);

private:
    Settings settings;
    std::vector<float> previous;
    std::vector<float> speed;
};

}  // namespace kelmo
