// SPDX-License-Identifier: GPL-3.0-or-later
#include "framework/engine/color_uniform.h"

namespace kelmo {

ColorUniform::ColorUniform(const std::string& name) {
    const std::size_t end = name.find_last_not_of("0123456789") + 1;
    const std::string stem = name.substr(0, end);
    const std::string digits = name.substr(end);
    red = stem + "_r" + digits;
    green = stem + "_g" + digits;
    blue = stem + "_b" + digits;
}

void ColorUniform::Declare(NLEOpenGLEngineEffect& engine, int32_t rgb) const {
    engine.AddUniformInt(red.c_str(), (rgb >> 16) & 0xFF);
    engine.AddUniformInt(green.c_str(), (rgb >> 8) & 0xFF);
    engine.AddUniformInt(blue.c_str(), rgb & 0xFF);
}

void ColorUniform::Set(NLEOpenGLEngineEffect& engine, int32_t rgb) const {
    engine.SetUniformInt(red.c_str(), (rgb >> 16) & 0xFF);
    engine.SetUniformInt(green.c_str(), (rgb >> 8) & 0xFF);
    engine.SetUniformInt(blue.c_str(), rgb & 0xFF);
}

}  // namespace kelmo
