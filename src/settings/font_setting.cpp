#include "settings/font_setting.h"

#include <algorithm>

#include "settings/stored_number.h"

namespace lore {

namespace {

uint32_t LoadColor(const SettingsStore& store, const std::string& section, uint32_t defaults) {
    constexpr const char* kParts[] = {"Red", "Green", "Blue"};
    uint32_t color = 0;
    for (unsigned i = 0; i < 3; ++i) {
        const auto part = StoredNumber(store.Get(section, kParts[i]));
        const uint32_t value = part ? static_cast<uint32_t>(std::clamp(*part, 0, 255)) : defaults >> (8 * i) & 255u;
        color |= value << (8 * i);
    }
    return color;
}

void SaveColor(SettingsStore& store, const std::string& section, uint32_t color) {
    store.Set(section, "Red", std::to_string(color & 255u));
    store.Set(section, "Green", std::to_string(color >> 8 & 255u));
    store.Set(section, "Blue", std::to_string(color >> 16 & 255u));
}

constexpr char kSelectedNoteSection[] = "SelNoteTxtBkColor";
constexpr uint32_t kSelectedNoteColor = 251u | 251u << 8 | 142u << 16;

}  // namespace

FontSetting DefaultImageTitleFont() {
    return {.faceName = "Times New Roman", .height = 20, .weight = 700, .underline = true};
}

FontSetting DefaultEditTextFont() {
    return {.faceName = "Times New Roman", .height = 18};
}

FontSetting LoadFontSetting(const SettingsStore& store, const std::string& section, const FontSetting& defaults) {
    const auto number = [&](const char* key, int32_t fallback) {
        return StoredNumber(store.Get(section, key)).value_or(fallback);
    };
    FontSetting font = defaults;
    font.height = number("Height", defaults.height);
    font.weight = number("Weight", defaults.weight);
    font.italic = number("Italic", defaults.italic) > 0;
    font.underline = number("Underline", defaults.underline) > 0;
    font.pitchAndFamily = number("PitchAndFamily", defaults.pitchAndFamily);
    font.charset = number("CharSet", defaults.charset);
    font.faceName = store.Get(section, "FaceName").value_or(defaults.faceName);
    font.color = LoadColor(store, section, defaults.color);
    return font;
}

void SaveFontSetting(SettingsStore& store, const std::string& section, const FontSetting& font) {
    const auto set = [&](const char* key, int32_t value) { store.Set(section, key, std::to_string(value)); };
    set("Height", font.height);
    set("Weight", font.weight);
    set("Italic", font.italic);
    set("Underline", font.underline);
    set("PitchAndFamily", font.pitchAndFamily);
    set("CharSet", font.charset);
    store.Set(section, "FaceName", font.faceName);
    SaveColor(store, section, font.color);
}

uint32_t LoadSelectedNoteColor(const SettingsStore& store) {
    return LoadColor(store, kSelectedNoteSection, kSelectedNoteColor);
}

void SaveSelectedNoteColor(SettingsStore& store, uint32_t color) {
    SaveColor(store, kSelectedNoteSection, color);
}

}  // namespace lore
