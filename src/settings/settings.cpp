#include "settings/settings.h"

#include <optional>
#include <string_view>

#include "base/text.h"
#include "settings/stored_number.h"

namespace lore {

namespace {

constexpr char kSection[] = "Options";

enum class Kind : uint8_t { Integer, String, Rectangle };

struct Row {
    Option option;
    const char* key;
    Kind kind;
    int32_t number = 0;
    const char* text = "";
};

// clang-format off
constexpr Row kRows[] = {
    {Option::Maximized, "Maximized", Kind::Integer, 1},
    {Option::FrameRect, "FrameRect", Kind::Rectangle},
    {Option::ViewSrcRect, "ViewSrcRect", Kind::Rectangle},
    {Option::EditNoteRect, "EditNoteRect", Kind::Rectangle},
    {Option::ShowSources, "ShowSources", Kind::Integer, 1},
    {Option::SourceSize, "SourceSize", Kind::Integer, 18},
    {Option::SourceFormat, "SourceFormat", Kind::Integer, 1},
    {Option::MaxNoteID, "MaxNoteID", Kind::Integer, 1000},
    {Option::NoteSortID, "NoteSortID", Kind::Integer, 805},
    {Option::ShowCats, "ShowCats", Kind::Integer, 1},
    {Option::ShowKeyWords, "ShowKeyWords", Kind::Integer, 1},
    {Option::CatsTop, "CatsTop", Kind::Integer, 1},
    {Option::KewWordsTop, "KewWordsTop", Kind::Integer, 0},
    {Option::SourceTop, "SourceTop", Kind::Integer, 0},
    {Option::ProgVersion, "ProgVersion", Kind::String, 0, "-1"},
    {Option::ZoomLvl, "ZoomLvl", Kind::Integer, 100},
    {Option::ShowCtrlBar, "ShowCtrlBar", Kind::Integer, 1},
    {Option::ActIndCtrlBar, "ActIndCtrlBar", Kind::Integer, 0},
    {Option::CtrlBarSortSrc, "CtrlBarSortSrc", Kind::Integer, 30},
    {Option::CtrlBarCatSet, "CtrlBarCatSet", Kind::Integer, 0},
    {Option::MaxAuthorID, "MaxAuthorID", Kind::Integer, 1},
    {Option::ShowSrcFilters, "ShowSrcFilters", Kind::Integer, 1},
    {Option::CheckForUpdates, "CheckForUpdates", Kind::Integer, 1},
    {Option::EnableSpellCheck, "EnableSpellCheck", Kind::Integer, 1},
    {Option::GetEmail, "GetEmail", Kind::Integer, 1},
    {Option::szSaveWarning, "szSaveWarning", Kind::Integer, 1},
    {Option::Phone, "Phone", Kind::String},
    {Option::Email, "Email", Kind::String},
    {Option::Service, "Service", Kind::Integer, -1},
    {Option::ShowCatSet1, "ShowCatSet1", Kind::Integer, 0},
    {Option::EnableBackup, "EnableBackup", Kind::Integer, 0},
    {Option::BkUseTimes, "BkUseTimes", Kind::Integer, 1},
    {Option::BackupPath, "BackupPath", Kind::String},
    {Option::PrevBackupPath, "PrevBackupPath", Kind::String},
    {Option::BkUseCount, "BkUseCount", Kind::Integer, 0},
    {Option::OverwriteBkup, "OverwriteBkup", Kind::Integer, 1},
    {Option::UpdateCheck, "UpdateCheck", Kind::Integer, -1},
    {Option::SyncEngaged, "SyncEngaged", Kind::Integer, 0},
    {Option::SyncGUID, "SyncGUID", Kind::String},
    {Option::Nickname, "Nickname", Kind::String},
    {Option::SyncAtStart, "SyncAtStart", Kind::Integer, 1},
    {Option::SyncAtClose, "SyncAtClose", Kind::Integer, 0},
    {Option::LocalGUID, "LocalGUID", Kind::String},
    {Option::SrchCtrlsWidth, "SrchCtrlsWidth", Kind::Integer, 306},
    {Option::MaxCategoryID, "MaxCategoryID", Kind::Integer, 3},
    {Option::EnableNoteAutoFill, "EnableNoteAutoFill", Kind::Integer, 1},
    {Option::MarkBold, "MarkBold", Kind::Integer, 0},
    {Option::MarkStrike, "MarkStrike", Kind::Integer, 0},
    {Option::MarkItalics, "MarkItalics", Kind::Integer, 1},
    {Option::MarkUnderline, "MarkUnderline", Kind::Integer, 1},
    {Option::MarkSelColor, "MarkSelColor", Kind::Integer, 9},
    {Option::Database, "Database", Kind::String},
    {Option::RunAgent, "RunAgent", Kind::Integer, 0},
    {Option::StartupAgent, "StartupAgent", Kind::Integer, 0},
    {Option::TrayIcon, "TrayIcon", Kind::Integer, 1},
    {Option::Hotkey, "Hotkey", Kind::Integer, 0},
    {Option::HotkeyMod, "HotkeyMod", Kind::Integer, 0},
    {Option::Appearance, "Appearance", Kind::Integer, 0},    // 0 as the desktop, 1 light, 2 dark
    {Option::TextCacheMB, "TextCacheMB", Kind::Integer, 512},  // plain texts kept for searches, in MiB
    {Option::SpellLanguage, "SpellLanguage", Kind::String},    // empty: the language of the desktop
    {Option::UpdateAddress, "UpdateAddress", Kind::String},    // of the text that names the newest version; empty: none
    {Option::TutorialAddress, "TutorialAddress", Kind::String},
    {Option::SpellSkipCapitals, "SpellSkipCapitals", Kind::Integer, 1},
    {Option::SpellSkipDigits, "SpellSkipDigits", Kind::Integer, 1},
    {Option::SpellSkipMixedCase, "SpellSkipMixedCase", Kind::Integer, 1},
    {Option::SpellSkipAddresses, "SpellSkipAddresses", Kind::Integer, 1},
};
// clang-format on

constexpr bool RowsStandInOrder() {
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (static_cast<size_t>(kRows[i].option) != i)
            return false;
    }
    return std::size(kRows) == static_cast<size_t>(Option::Count_);
}
static_assert(RowsStandInOrder());

std::optional<Rect> RectOf(std::string_view text) {
    std::array<int32_t, 4> sides{};
    for (size_t i = 0; i < sides.size(); ++i) {
        const size_t comma = text.find(',');
        const std::optional<int32_t> side = StoredNumber(std::string(text.substr(0, comma)));
        if (!side || (comma == std::string_view::npos) != (i == 3))
            return std::nullopt;
        sides[i] = *side;
        text.remove_prefix(i < 3 ? comma + 1 : 0);
    }
    return Rect{sides[0], sides[1], sides[2], sides[3]};
}

std::string TextOf(const Rect& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

}  // namespace

Settings::Settings() {
    for (const Row& row : kRows) {
        Value& value = values_[static_cast<size_t>(row.option)];
        switch (row.kind) {
            case Kind::Integer:
                value = row.number;
                break;
            case Kind::String:
                value = std::string(row.text);
                break;
            case Kind::Rectangle:
                value = Rect{};
                break;
        }
    }
}

int32_t Settings::Int(Option option) const {
    return std::get<int32_t>(values_[static_cast<size_t>(option)]);
}

const std::string& Settings::Text(Option option) const {
    return std::get<std::string>(values_[static_cast<size_t>(option)]);
}

Rect Settings::Rectangle(Option option) const {
    return std::get<Rect>(values_[static_cast<size_t>(option)]);
}

void Settings::Set(Option option, int32_t value) {
    values_[static_cast<size_t>(option)] = value;
}

void Settings::Set(Option option, std::string value) {
    values_[static_cast<size_t>(option)] = std::move(value);
}

void Settings::Set(Option option, const Rect& value) {
    values_[static_cast<size_t>(option)] = value;
}

double Settings::ProgVersion() const {
    return ParseDouble(Text(Option::ProgVersion));
}

void Settings::LoadOptions(const SettingsStore& store) {
    *this = Settings();
    for (const Row& row : kRows) {
        const std::optional<std::string> stored = store.Get(kSection, row.key);
        if (!stored)
            continue;
        if (row.kind == Kind::String)
            Set(row.option, *stored);
        else if (row.kind == Kind::Rectangle)
            Set(row.option, RectOf(*stored).value_or(Rect{}));
        else if (const auto number = StoredNumber(stored))
            Set(row.option, *number);
    }
}

void Settings::Save(SettingsStore& store, Option option) const {
    const Row& row = kRows[static_cast<size_t>(option)];
    switch (row.kind) {
        case Kind::Integer:
            store.Set(kSection, row.key, std::to_string(Int(option)));
            break;
        case Kind::String:
            store.Set(kSection, row.key, Text(option));
            break;
        case Kind::Rectangle:
            store.Set(kSection, row.key, TextOf(Rectangle(option)));
            break;
    }
}

void Settings::SaveOptions(SettingsStore& store) const {
    for (const Row& row : kRows)
        Save(store, row.option);
}

bool FlushTold(SettingsStore& store, FaultNotice& faults) {
    constexpr char kUnwritten[] = "The settings could not be written; they keep their old values";
    const bool isWritten = store.Flush();
    const StoreFailure failure = store.Failure();
    if (isWritten)
        faults.Mended(kUnwritten, failure.path);
    else
        faults.Tell({kUnwritten, failure.path, failure.reason});
    return isWritten;
}

}  // namespace lore
