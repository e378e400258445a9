// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "contract/engine.h"

namespace kelmo {

/// The three int uniforms that carry the bytes (0..255) of one 0xRRGGBB colour. Their names are
/// made once: "color" gives "color_r", "color_g", "color_b"; digits at the end of a name go behind
/// the letter, so "color1" gives "color_r1".
class ColorUniform {
public:
    explicit ColorUniform(const std::string& name);

    void Declare(NLEOpenGLEngineEffect& engine, int32_t rgb = 0xFFFFFF) const;
    void Set(NLEOpenGLEngineEffect& engine, int32_t rgb) const;

private:
    std::string red;
    std::string green;
    std::string blue;
};

}  // namespace kelmo
