// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kelmo {

/// Slots count from 0 to this; OpenGL 3.3 promises 16 pictures to a program, most cards give 32.
inline constexpr int kMaxInputSlots = 32;

/// Vertex shader of effects without a vertex file.
extern const char* const kDefaultVertexShader;

/// What stands in front of a fragment shader: version, time uniforms, accessors of the input slots
/// that `author` names, and with audio the spectra. `audioBuffers` is the number of spectra.
std::string FragmentPrelude(const std::string& author, int audioBuffers);
/// The same for a vertex shader.
std::string VertexPrelude(const std::string& author, int audioBuffers);

/// The last word of `name` as a number behind `prefix`: ("Input12", "Input") gives 12; -1 when the
/// name has another form or the number is no slot. `suffix` may follow the number.
int SlotOfName(const char* name, const char* prefix, const char* suffix);

}  // namespace kelmo
