// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "host/media/picture/picture.h"

namespace kelmo::host {

/// Small pictures in rows and columns with a line of text under each, on a dark ground;
/// transparent places show a chequer.
class ContactSheet {
public:
    /// Sizes of a tile's picture in pixels. Throws UsageError when the sheet would be larger than
    /// a picture can be.
    ContactSheet(int tiles, int columns, int tileWidth, int tileHeight);

    /// Puts a picture (of any size, made to fit) into the next place. Characters beyond ASCII are
    /// written as question marks, names that are too long end in dots.
    void Add(const Picture& picture, const std::string& name);

    const Picture& Sheet() const { return sheet; }

    /// Columns that make the sheet about as wide as high.
    static int GoodColumns(int tiles, int tileWidth, int tileHeight);

private:
    void DrawName(int left, int top, const std::string& name);

    int columns;
    int tileWidth;
    int tileHeight;
    int next = 0;
    Picture sheet;
};

}  // namespace kelmo::host
