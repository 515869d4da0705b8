#pragma once

#include <functional>
#include <span>
#include <string>

#include "ports/agent.h"
#include "ports/prompts.h"
#include "settings/font_setting.h"
#include "settings/settings.h"
#include "settings/spell_settings.h"

namespace lore {

/// What the pages of the options work on. All of it outlives them.
struct OptionsWorld {
    Settings& settings;
    SettingsStore& store;
    Prompts& prompts;
    /// What the board shows is to be shown anew.
    std::function<void()> displayChanged = [] {};
    /// False if the store could not be written; whoever keeps the store tells it.
    std::function<bool()> flush = [] { return true; };
};

/// A box to tick: its option and its words. A display option changes what the board shows.
struct OptionBox {
    Option option;
    const char* text;
    bool isDisplay = true;
};

/// What every page does with its controls: a change goes into the settings and the store at once, and a change of what
/// is shown is told at once.
class OptionPage {
public:
    explicit OptionPage(OptionsWorld& world) : world_(world) {}

    bool IsOn(Option option) const { return world_.settings.Flag(option); }
    void SetOn(const OptionBox& box, bool on);

protected:
    template <typename Value>
    void Write(Option option, Value value) {
        world_.settings.Set(option, std::move(value));
        world_.settings.Save(world_.store, option);
    }

    OptionsWorld& world_;
};

/// The page "General".
class GeneralPage : public OptionPage {
public:
    using OptionPage::OptionPage;
    /// What notes show, in the order of the page.
    static std::span<const OptionBox> NoteBoxes();
    /// The rest of the page's boxes.
    static std::span<const OptionBox> OtherBoxes();

    int SourceSize() const { return world_.settings.Int(Option::SourceSize); }
    /// A value below 5 becomes 5, one above 100 changes nothing. Gives the size that holds now.
    int SetSourceSize(int size);

    /// 0 as the desktop, 1 light, 2 dark.
    int Appearance() const { return world_.settings.Int(Option::Appearance); }
    void SetAppearance(int appearance) { Write(Option::Appearance, int32_t{appearance}); }

    FontSetting EditFont() const;
    void SetEditFont(const FontSetting& font);
    FontSetting PictureTitleFont() const;
    void SetPictureTitleFont(const FontSetting& font);
    uint32_t SelectedNoteColor() const { return LoadSelectedNoteColor(world_.store); }
    void SetSelectedNoteColor(uint32_t color);

    static constexpr int kSmallestSource = 5, kLargestSource = 100;
};

/// The page "Auto-Backup".
class BackupPage : public OptionPage {
public:
    using OptionPage::OptionPage;
    static constexpr int kMostUses = 15;

    bool IsEnabled() const { return world_.settings.IsBackupEnabled(); }
    void Enable(bool on);
    /// Uses between two backups, 1 to 15; others are cut to that. The count of uses begins anew.
    void SetUses(int uses);
    int Uses() const { return world_.settings.Int(Option::BkUseTimes); }
    /// Asks for the file.
    void ChoosePath();
    /// The line that shows the path.
    std::string PathText() const;
    /// When the next backup is asked for, in words.
    std::string NextText() const;
    /// False, and the user is told, if the backups are on without a file or a number of uses.
    bool MayLeave();
};

/// The page "Spell Checker".
class SpellPage : public OptionPage {
public:
    using OptionPage::OptionPage;
    static const OptionBox& EnableBox();
    /// How misspelled words are marked.
    static std::span<const OptionBox> MarkBoxes();
    /// Which words aren't checked.
    static std::span<const OptionBox> SkipBoxes();

    /// The chosen colour among MarkColors(); -1 for one beyond the list.
    int ColorIndex() const;
    void SetColorIndex(int index);
    MarkStyle Style() const { return DerivedMarkStyle(world_.settings); }
    const std::string& Language() const { return world_.settings.Text(Option::SpellLanguage); }
    void SetLanguage(const std::string& language) { Write(Option::SpellLanguage, language); }
};

/// A key with modifiers that calls the agent, as the settings hold it: a virtual key code, and the sum of the
/// modifiers.
struct HotKey {
    static constexpr int32_t kShift = 1, kControl = 2, kAlt = 4;
    int32_t key = 0;
    int32_t modifiers = 0;
    bool operator==(const HotKey&) const = default;
};

/// The page "Agent". Its values are the agent's too, so that each stands on disk before the agent is told.
class AgentPage : public OptionPage {
public:
    /// `agent` may be null: there is none on this computer.
    AgentPage(OptionsWorld& world, Agent* agent) : OptionPage(world), agent_(agent) {}
    static std::span<const OptionBox> Boxes();

    bool IsInstalled() const { return agent_ && agent_->IsInstalled(); }
    bool IsAgentOn(Option option) const;
    void SetAgentOn(Option option, bool on);
    HotKey GetHotKey() const;
    /// A key that people type with is refused: it needs Ctrl or Alt, unless it is a function key; no key at all takes
    /// the hot key away.
    bool SaveHotKey(const HotKey& key);
    void Launch();

private:
    void Publish();

    Agent* agent_;
};

}  // namespace lore
