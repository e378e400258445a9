// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/cli/console.h"
#include "host/media/picture/picture.h"
#include "host/session/host_frame.h"
#include "host/text/text_settings.h"

namespace kelmo::host {

class HostTextPath;

/// A text as it was asked for.
struct TextWish {
    std::string text;  ///< UTF-8; "\n" written as two characters begins a line, too
    std::string font;  ///< a file, or the name of a family; empty: a sans serif
    double size = 0;   ///< pixels per em; 0: `share` of the picture's height
    double share = 1.0 / 6.0;
    bool bold = false;
    int32_t color = 0xFFFFFF;  ///< 0xRRGGBB
    float letterSpacing = 0;   ///< pixels
    float lineSpacing = 1;     ///< 1 is the font's own
    TextAlignment alignment = TextAlignment::kCenter;
    float angle = 0;         ///< degrees, counter-clockwise
    float positionX = 0.5f;  ///< middle of the text, fractions of the frame
    float positionY = 0.5f;

    bool Given() const { return !text.empty(); }
};

/// A text set in the middle of a frame: its outlines for effects that move its characters, and its
/// picture on a transparent ground for effects that work on pictures.
///
/// Holes in letters are told by even and odd: outlines that overlap themselves show gaps there.
class TextLayer {
public:
    /// Throws HostError when there is no font.
    TextLayer(const TextWish& wish, int width, int height, Console& console);
    ~TextLayer();

    /// The picture; effects may not change it.
    Picture& Drawn() { return drawn; }
    /// What the effect is given on a frame; borrowed from this object.
    ClipText Text(bool firstFrame);

private:
    void Draw(int32_t color);

    std::shared_ptr<HostTextPath> path;
    Picture drawn;
};

/// Puts `top` over `under`, both premultiplied and of one size, into `top`.
void PutOver(Picture& top, const Picture& under);

}  // namespace kelmo::host
