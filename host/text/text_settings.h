// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelmo::host {

enum class TextAlignment { kLeft, kCenter, kRight };

/// How a text looks and where it stands. The default makes a readable text in the middle of a
/// canvas of its own size.
struct TextSettings {
    /// UTF-8, lines divided by line feeds. Bytes that are not UTF-8 show as U+FFFD.
    std::string text;

    /// A font file that comes first; empty: the families alone.
    std::string fontFile;
    int32_t faceIndex = 0;  ///< within a font collection
    /// Tried in order for each character that the fonts before it lack; afterwards any font of the
    /// machine that has it.
    std::vector<std::string> families = {"Noto Sans", "DejaVu Sans", "Noto Sans CJK SC"};
    bool bold = false;
    bool italic = false;

    float size = 120;         ///< pixels per em, above 0, at most 16384
    float letterSpacing = 0;  ///< pixels between characters; not within joined scripts
    float lineSpacing = 1;    ///< 1 is the line height of the font; not negative
    TextAlignment alignment = TextAlignment::kCenter;  ///< of lines of different length

    /// The canvas in pixels; 0 is the size of the text. An effect that gets a canvas of the size of
    /// the frame leaves `anchor` alone and the text where it stands on the canvas.
    int32_t canvasWidth = 0;
    int32_t canvasHeight = 0;
    /// Where the middle of the text stands on the canvas, fractions.
    float positionX = 0.5f;
    float positionY = 0.5f;
    /// Where the middle of the canvas stands on the frame, fractions.
    float anchorX = 0.5f;
    float anchorY = 0.5f;
    float angle = 0;  ///< degrees, counter-clockwise

    /// Colours have red in the lowest byte, then green, blue, and alpha in the highest.
    std::optional<uint32_t> boxColor;  ///< a box behind the text; none without
    float boxPadding = 16;             ///< pixels from the text to the border of the box
    std::optional<uint32_t> underlineColor;
};

/// Receives sentences about what could not be shown as asked for.
using TextWarning = std::function<void(const std::string&)>;

}  // namespace kelmo::host
