// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelmo::material {

/// Loops of a shader's text that a parameter could make run away: a host may set any number, and a
/// loop of millions of rounds stops a graphics card. A loop is sound when all that its head
/// compares with or begins with is a number, a constant named kLikeThis, or held by min() or
/// clamp(); `while` is never. Comments do not count. Gives the heads of the others.
std::vector<std::string> UnboundedLoops(std::string_view source);

}  // namespace kelmo::material
