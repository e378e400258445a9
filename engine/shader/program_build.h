// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "engine/device/gl_device.h"
#include "engine/shader/shader_source.h"

namespace kelmo {

/// Puts the preludes in front, compiles and links. The built-in quad's attributes get their fixed
/// places: position 0, texcoord 1. Empty on failure, with `error` in terms of the author's files.
/// Inside a scope of the device.
GlObject LinkShaders(GlDevice& device, const ShaderSource& fragment, const ShaderSource& vertex,
                     int audioBuffers, std::string& error);

}  // namespace kelmo
