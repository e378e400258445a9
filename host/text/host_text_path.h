// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contract/text_path.h"
#include "host/text/font_catalogue.h"
#include "host/text/outline.h"
#include "host/text/text_settings.h"

namespace kelmo::host {

/// Text of the host, laid out: one path for each character, in reading order, spaces included as
/// empty paths.
///
/// `GetPath` is the character on the canvas; `GetLayoutPath` is the same before the text was placed
/// there: (0, 0) is the top left of the text itself. The origin is half the canvas, so that a
/// position of 1 leads from the middle to the border. Underlines come as rects, one a line; without
/// a box behind the text they come with a box without area, since readers draw both or none.
///
/// The content never changes: clones share it, and may live on other threads.
class HostTextPath final : public TextPath {
public:
    /// Throws HostError when there is no font to be had or a number is out of range. Characters
    /// without an outline in any font (emoji that are pictures) are left out; `warn`, when given,
    /// hears of them.
    static std::shared_ptr<HostTextPath> Create(
        const TextSettings& settings, const TextWarning& warn = nullptr,
        const FontCatalogue& catalogue = FontCatalogue::System());

    int32_t GetPathCount() override;
    int32_t GetPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                    int32_t reserved) override;
    void GetAnchor(float* p, float* q) override;
    void GetSize(int32_t* width, int32_t* height) override;
    float GetAngle() override;
    bool HasDecoration() override;
    bool GetBox(float* corners, uint32_t* color) override;
    void Clone(std::shared_ptr<TextPath>* out) override;
    bool IsSame(TextPath* other) override;
    int32_t GetLayoutPath(int32_t index, const uint8_t** types, const float** xs, const float** ys,
                          int32_t reserved) override;
    void GetOrigin(float* x, float* y) override;
    int32_t GetRectCount() override;
    uint32_t GetRectColor() override;
    void GetRect(int32_t index, float* corners) override;

private:
    struct Box {
        double left = 0, top = 0, right = 0, bottom = 0;
        bool operator==(const Box&) const = default;
        void CopyCorners(float* corners) const;
    };
    struct Content {
        std::vector<Outline> paths;
        std::vector<Outline> layoutPaths;
        int32_t width = 0;
        int32_t height = 0;
        float anchorX = 0.5f;
        float anchorY = 0.5f;
        float angle = 0;
        std::optional<uint32_t> boxColor;  ///< none without decoration
        std::optional<uint32_t> rectColor;
        Box box;
        std::vector<Box> rects;
        bool operator==(const Content&) const = default;
    };
    class Layout;

    explicit HostTextPath(std::shared_ptr<const Content> shared) : content(std::move(shared)) {}

    std::shared_ptr<const Content> content;
};

}  // namespace kelmo::host
