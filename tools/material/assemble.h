// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kelmo::material {

/// Writes `resources`/qor_effect/material/OpenGLFilter.conf from every filter.conf below
/// `resources`/qor_effect/material, in the order of their paths, each with its DATAPATH.
///
/// A file that does not parse, or two filters with one GUID, is an error: nothing is written and
/// the text says which. Empty on success. The file is left alone when its content would be the
/// same.
std::string AssembleCatalogue(const std::string& resources, int& entries);

}  // namespace kelmo::material
