// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "catalogue/nle_filter_info.h"

/// Filter descriptions from the older "filter.xml": sticker packages and Astral pictures.
///
/// A document without a "Filter" root gives a description with all fields at their defaults. A GUID
/// over 127, a sticker path over 511 or a picture path over 259 bytes refuses the file with one
/// error line; a name over 127 bytes is cut. "GUID" and "Name" are read once, whatever form
/// follows. An element without text counts as missing. Nothing throws; callable from any thread.
namespace kelmo {

/// Empty when the file cannot be read or is not well-formed. `dataPath` stays empty.
std::shared_ptr<NLEFilterInfo> GetFilterInfoFromXml(const std::string& path);

/// The same from text; `folder` with its trailing separator stands before the names of files,
/// `source` is the file for messages.
std::shared_ptr<NLEFilterInfo> ReadFilterXml(std::string_view text, const std::string& folder,
                                             const std::string& source);

}  // namespace kelmo
