#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>

#include "ports/fault_notice.h"
#include "ports/settings_store.h"

namespace lore {

/// Left, top, right and bottom of a window.
struct Rect {
    int32_t left = 0, top = 0, right = 0, bottom = 0;
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool operator==(const Rect&) const = default;
};

/// The values of the section "Options", in the order of loading. Their keys, types and defaults stand in settings.cpp.
// clang-format off
enum class Option : uint8_t {
    Maximized, FrameRect, ViewSrcRect, EditNoteRect, ShowSources, SourceSize, SourceFormat, MaxNoteID, NoteSortID, ShowCats,
    ShowKeyWords, CatsTop, KewWordsTop, SourceTop, ProgVersion, ZoomLvl, ShowCtrlBar, ActIndCtrlBar, CtrlBarSortSrc,
    CtrlBarCatSet, MaxAuthorID, ShowSrcFilters, CheckForUpdates, EnableSpellCheck, GetEmail, szSaveWarning, Phone, Email,
    Service, ShowCatSet1, EnableBackup, BkUseTimes, BackupPath, PrevBackupPath, BkUseCount, OverwriteBkup, UpdateCheck,
    SyncEngaged, SyncGUID, Nickname, SyncAtStart, SyncAtClose, LocalGUID, SrchCtrlsWidth, MaxCategoryID, EnableNoteAutoFill,
    MarkBold, MarkStrike, MarkItalics, MarkUnderline, MarkSelColor, Database, RunAgent, StartupAgent, TrayIcon, Hotkey,
    HotkeyMod, Appearance, TextCacheMB, SpellLanguage, UpdateAddress, TutorialAddress,
    SpellSkipCapitals, SpellSkipDigits, SpellSkipMixedCase, SpellSkipAddresses,
    Count_
};
// clang-format on

/// How the options that the agent shares say yes.
inline constexpr int32_t kAgentOn = 2112;

/// All settings as values. A value that is missing in the store, or that can't be read, has its default.
class Settings {
public:
    Settings();

    int32_t Int(Option option) const;
    bool Flag(Option option) const { return Int(option) > 0; }
    /// Stricter than Flag: true for exactly 1.
    bool IsOne(Option option) const { return Int(option) == 1; }
    const std::string& Text(Option option) const;
    Rect Rectangle(Option option) const;
    void Set(Option option, int32_t value);
    void Set(Option option, std::string value);
    void Set(Option option, const Rect& value);

    /// ProgVersion as a number; -1 on a first run.
    double ProgVersion() const;

    /// True while an online account is engaged.
    bool IsSyncEngaged() const { return IsOne(Option::SyncEngaged); }
    /// True while the automatic backup at the end of the program is on.
    bool IsBackupEnabled() const { return IsOne(Option::EnableBackup); }

    void LoadOptions(const SettingsStore& store);
    /// Puts all values into the store. They stand on disk after the store's Flush.
    void SaveOptions(SettingsStore& store) const;
    /// Puts one value into the store.
    void Save(SettingsStore& store, Option option) const;

private:
    using Value = std::variant<int32_t, std::string, Rect>;
    std::array<Value, static_cast<size_t>(Option::Count_)> values_;
};

/// Puts on disk what has been set. False, told, if it could not be written.
bool FlushTold(SettingsStore& store, FaultNotice& faults);

/// A frame rectangle as it may be shown on a screen of this size: empty when less than 10 by 10 of it would be seen.
Rect VisibleFrame(const Rect& frame, int32_t screenWidth, int32_t screenHeight);

/// The colours that misspelled words can have, with their names, in the order of `MarkSelColor`; red in the low byte.
struct MarkColor {
    const char* name;
    uint32_t color;
};
const std::array<MarkColor, 16>& MarkColors();

/// How misspelled words are marked: a colour (red in the low byte) and effect bits.
struct MarkStyle {
    uint32_t color = 0;
    int32_t effects = 1;
};
MarkStyle DerivedMarkStyle(const Settings& settings);

/// Words that nobody judges the spelling of: "USA", "B2B", "iPhone", and addresses of the web, of mail and of files.
struct SkippedWords {
    bool capitals = true, withDigits = true, mixedCase = true, addresses = true;
};
SkippedWords SkippedWordsOf(const Settings& settings);

/// A font with the colour of its text, in a section of its own. Heights are pixels of the board.
struct FontSetting {
    std::string faceName;
    int32_t height = 0;
    int32_t weight = 400;
    bool italic = false, underline = false;
    int32_t pitchAndFamily = 0, charSet = 0;
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
