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

}  // namespace lore
