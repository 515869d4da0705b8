#pragma once

#include <cstdint>
#include <string>

#include "ports/settings_store.h"

namespace lore {

/// A font with the colour of its text, in a section of its own. Heights are pixels of the board.
struct FontSetting {
    std::string faceName;
    int32_t height = 0;
    int32_t weight = 400;
    bool italic = false, underline = false;
    int32_t pitchAndFamily = 0, charset = 0;
    uint32_t color = 0;  ///< red in the low byte
};
/// The sections of the two fonts.
inline constexpr char kImageTitleFont[] = "ImgTitleFont";
inline constexpr char kEditTextFont[] = "EditTextFont";
FontSetting DefaultImageTitleFont();
FontSetting DefaultEditTextFont();
/// Each missing key has the value of `defaults`.
FontSetting LoadFontSetting(const SettingsStore& store, const std::string& section, const FontSetting& defaults);
void SaveFontSetting(SettingsStore& store, const std::string& section, const FontSetting& font);

/// The background of the selected note's text (red in the low byte), section "SelNoteTxtBkColor".
uint32_t LoadSelectedNoteColor(const SettingsStore& store);
void SaveSelectedNoteColor(SettingsStore& store, uint32_t color);

}  // namespace lore
