#pragma once

#include "base/rgb.h"
#include "ports/settings_store.h"
#include "settings/font_setting.h"
#include "settings/settings.h"

namespace lore {

/// The settings that say what a card shows and how.
struct BoardOptions {
    bool showCategories = true, categoriesOnTop = true, onlySetOne = false;
    bool showKeyWords = true, keyWordsOnTop = false;
    bool showSources = true, sourcesOnTop = false;
    int sourceSize = 18;                       ///< height of source text in pixels at 100 %
    double zoom = 1.0;                         ///< 1.0 to 2.0
    Rgb focusGround = MakeRgb(251, 251, 142);  ///< ground of the focus note's text, as chosen for a light palette
    FontSetting pictureTitle = DefaultImageTitleFont();
};

/// The board's part of the settings.
BoardOptions BoardOptionsOf(const Settings& settings, const SettingsStore& store);

/// The zoom of the board in percent that the zoom list offers for a setting: the nearest of its entries.
int NearestBoardZoom(int percent);
/// The entry some steps further up (positive) or down in the zoom list, which doesn't go beyond its ends.
int BoardZoomStep(int percent, int step);
/// The entries of the zoom list in percent, in its order.
inline constexpr int kBoardZooms[] = {100, 115, 125, 150, 175, 200};

}  // namespace lore
