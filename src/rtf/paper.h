#pragma once

namespace lore {

inline constexpr int kTabTwips = 720;  ///< from one tab stop to the next

/// A sheet and its margins in twips, as office programs are told of it; by default A4 upright with margins of 2 cm.
struct Paper {
    int width = 11906, height = 16838;
    int left = 1134, top = 1134, right = 1134, bottom = 1134;

    bool IsAcross() const { return width > height; }
};

}  // namespace lore
