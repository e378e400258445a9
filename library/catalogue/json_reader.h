// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "catalogue/nle_filter_info.h"

/// Filter descriptions from JSON.
///
/// What a faulty entry costs, decided so that an author loses as little as can be and is told:
/// - no "GUID", no "OPENGL": no description, no line (such files are not filters);
/// - a value of the wrong JSON type (text where a number belongs and the other way round, null, a
///   text with a NUL inside), a GUID over 127 bytes, a path over 4095 bytes, a number beyond a
///   double's range (whose line and column are logged): this entry is skipped, one error line names
///   file, entry and key; a filter that misses a shader or a picture would only draw nonsense;
/// - a parameter name over 37 bytes: that parameter is dropped with a warning, the next takes its
///   index;
/// - a display name over 127 bytes: cut between two characters, with a warning.
/// Whole numbers are taken modulo 2^32 (0xFFRRGGBB colours arrive as they are), fractions are cut
/// to whole numbers where one belongs, and numbers too large for a float become the largest one.
///
/// Nothing here throws on bad input. Callable from any thread except where a line says otherwise.
namespace kelmo {

/// Where an entry comes from, for messages: the file, and the place in its array or -1.
struct EntrySource {
    std::string_view file;
    int32_t index = -1;
};

/// `<folder>/qor_effect/material/OpenGLFilter.conf`.
std::string CatalogueFile(const std::string& resourceFolder);

/// The host's resource folder as `LoadJsonFromPath` got it. Written at start-up, before any effect
/// exists; read from any thread afterwards.
const std::string& ResourceRoot();

/// Stores the resource root and reads the catalogue file below it. True when it was read, parsed
/// and is an array; both ways are logged.
bool LoadJsonFromPath(const std::string& resourceFolder, nlohmann::json& entries);

/// Parses JSON text. False for broken text and for nesting of more than 64 levels, which no
/// description needs and which could exhaust the stack later.
bool ParseJson(std::string_view text, nlohmann::json& value);

/// One element of the catalogue file: its "DATAPATH" is appended to the resource folder as it
/// stands. Empty without that key.
std::shared_ptr<NLEFilterInfo> ReadCatalogueEntry(const nlohmann::json& entry,
                                                  const std::string& resourceFolder,
                                                  const EntrySource& source);

/// One filter object. `dataPath` is the filter's folder with its trailing separator. Empty when it
/// makes no description.
std::shared_ptr<NLEFilterInfo> ReadFilterJson(const nlohmann::json& object,
                                              const std::string& dataPath,
                                              const EntrySource& source = {});

/// A filter's own ".conf" file; its folder becomes the data path.
std::shared_ptr<NLEFilterInfo> GetFilterInfoFromJson(const std::string& path);

/// "{a,b}{c}" as groups of files with `dataPath` in front. Spaces around a name and empty names are
/// dropped; text without braces is one group; "{}" is a group without files.
std::vector<std::vector<std::string>> ReadGroupList(std::string_view text,
                                                    std::string_view dataPath);

}  // namespace kelmo
