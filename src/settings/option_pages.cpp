#include "settings/option_pages.h"

#include <algorithm>

namespace lore {

namespace {

constexpr int32_t kFirstFunctionKey = 0x70, kLastFunctionKey = 0x87;

bool IsFunctionKey(int32_t key) {
    return key >= kFirstFunctionKey && key <= kLastFunctionKey;
}

}  // namespace

void OptionPage::SetOn(const OptionBox& box, bool on) {
    if (IsOn(box.option) == on)
        return;
    Write(box.option, int32_t{on});
    if (box.isDisplay)
        world_.displayChanged();
}

std::span<const OptionBox> GeneralPage::NoteBoxes() {
    static constexpr OptionBox kBoxes[] = {
        {Option::ShowSources, "Show Sources in Notes"},    {Option::SourceTop, "Sources on top of Note"},
        {Option::ShowCats, "Show Categories in Notes"},    {Option::CatsTop, "Categories on top of Note"},
        {Option::ShowCatSet1, "Show only Category Set 1"}, {Option::ShowKeyWords, "Show Key Words in Notes"},
        {Option::KewWordsTop, "Key Words on top of Note"}};
    return kBoxes;
}

std::span<const OptionBox> GeneralPage::OtherBoxes() {
    static constexpr OptionBox kBoxes[] = {
        {Option::EnableNoteAutoFill, "Enable Auto-Fill of new Notes", false},
        {Option::CheckForUpdates, "Check for updates on start", false},
        {Option::szSaveWarning, "Ask before \"Cancel\" drops changes to a note", false}};
    return kBoxes;
}

int GeneralPage::SetSourceSize(int size) {
    const int wanted = std::max(size, kSmallestSource);
    if (wanted <= kLargestSource && wanted != SourceSize()) {
        Write(Option::SourceSize, int32_t{wanted});
        world_.displayChanged();
    }
    return SourceSize();
}

FontSetting GeneralPage::EditFont() const {
    return LoadFontSetting(world_.store, kEditTextFont, DefaultEditTextFont());
}

void GeneralPage::SetEditFont(const FontSetting& font) {
    SaveFontSetting(world_.store, kEditTextFont, font);
    world_.displayChanged();
}

FontSetting GeneralPage::PictureTitleFont() const {
    return LoadFontSetting(world_.store, kImageTitleFont, DefaultImageTitleFont());
}

void GeneralPage::SetPictureTitleFont(const FontSetting& font) {
    SaveFontSetting(world_.store, kImageTitleFont, font);
    world_.displayChanged();
}

void GeneralPage::SetSelectedNoteColor(uint32_t color) {
    SaveSelectedNoteColor(world_.store, color);
    world_.displayChanged();
}

void BackupPage::Enable(bool on) {
    Write(Option::EnableBackup, int32_t{on});
}

void BackupPage::SetUses(int uses) {
    Write(Option::BkUseTimes, int32_t{std::clamp(uses, 1, kMostUses)});
    Write(Option::BkUseCount, int32_t{0});
}

void BackupPage::ChoosePath() {
    const auto path =
        world_.prompts.AskSavePath("Set Backup Path", kArchiveFilter, world_.settings.Text(Option::BackupPath));
    if (path && !path->empty())
        Write(Option::BackupPath, *path);
}

std::string BackupPage::PathText() const {
    const std::string& path = world_.settings.Text(Option::BackupPath);
    return path.empty() ? "< No Backup File Set >" : path;
}

std::string BackupPage::NextText() const {
    const int left = std::max(Uses() - world_.settings.Int(Option::BkUseCount), 1);
    if (!IsEnabled())
        return "No backup is made automatically.";
    return left == 1 ? "You are asked the next time that the program closes."
                     : "You are asked when the program closes after " + std::to_string(left - 1) +
                           (left == 2 ? " more use." : " more uses.");
}

bool BackupPage::MayLeave() {
    if (!IsEnabled() || (!world_.settings.Text(Option::BackupPath).empty() && Uses() >= 1))
        return true;
    world_.prompts.Message("Auto-Backup does not have a valid file path set.", "Invalid Backup File",
                           PromptIcon::Warning);
    return false;
}

const OptionBox& SpellPage::EnableBox() {
    static constexpr OptionBox kBox{Option::EnableSpellCheck, "Use Spell Checker in \"Edit Note\" window", false};
    return kBox;
}

std::span<const OptionBox> SpellPage::MarkBoxes() {
    static constexpr OptionBox kBoxes[] = {{Option::MarkBold, "Bold", false},
                                           {Option::MarkItalics, "Italics", false},
                                           {Option::MarkUnderline, "Underline", false},
                                           {Option::MarkStrike, "Strike out", false}};
    return kBoxes;
}

std::span<const OptionBox> SpellPage::SkipBoxes() {
    static constexpr OptionBox kBoxes[] = {
        {Option::SpellSkipCapitals, "Skip words in CAPITALS", false},
        {Option::SpellSkipDigits, "Skip words with numbers", false},
        {Option::SpellSkipMixedCase, "Skip words of mixed case, such as \"iPhone\"", false},
        {Option::SpellSkipAddresses, "Skip web, mail and file addresses", false}};
    return kBoxes;
}

int SpellPage::ColorIndex() const {
    const int index = world_.settings.Int(Option::MarkSelColor);
    return index >= 0 && index < static_cast<int>(MarkColors().size()) ? index : -1;
}

void SpellPage::SetColorIndex(int index) {
    if (index >= 0)
        Write(Option::MarkSelColor, int32_t{index});
}

std::span<const OptionBox> AgentPage::Boxes() {
    static constexpr OptionBox kBoxes[] = {{Option::TrayIcon, "Display icon in task bar", false},
                                           {Option::RunAgent, "Run Agent only when Lorebinder runs", false},
                                           {Option::StartupAgent, "Run Agent when Windows starts", false}};
    return kBoxes;
}

bool AgentPage::IsAgentOn(Option option) const {
    // The icon is there unless it was taken away; the two others are on by the agent's own mark only.
    return option == Option::TrayIcon ? IsOn(option) : world_.settings.Int(option) == kAgentOn;
}

void AgentPage::SetAgentOn(Option option, bool on) {
    Write(option, on ? kAgentOn : int32_t{0});
    if (option == Option::StartupAgent && agent_ && !agent_->StartWithSession(on))
        world_.prompts.Message("The start of the agent with the session could not be set up.", "Lorebinder Agent",
                               PromptIcon::Warning);
    Publish();
}

HotKey AgentPage::GetHotKey() const {
    return {world_.settings.Int(Option::Hotkey), world_.settings.Int(Option::HotkeyMod)};
}

bool AgentPage::SaveHotKey(const HotKey& key) {
    const bool isFree = (key.modifiers & (HotKey::kControl | HotKey::kAlt)) != 0 || IsFunctionKey(key.key);
    if (key.key > 0 && !isFree) {
        world_.prompts.Message("A hot key works in all programs, so it needs Ctrl or Alt, unless it is a function key.",
                               "Invalid Hot Key", PromptIcon::Warning);
        return false;
    }
    Write(Option::Hotkey, key.key);
    Write(Option::HotkeyMod, key.key > 0 ? key.modifiers : int32_t{0});
    Publish();
    return true;
}

void AgentPage::Launch() {
    if (!agent_ || !agent_->Launch())
        world_.prompts.Message("Lorebinder Agent could not be started.", "Lorebinder Agent", PromptIcon::Warning);
}

void AgentPage::Publish() {
    if (world_.flush() && agent_)
        agent_->Send(kAgentCheckSettings);
}

}  // namespace lore
