#include "settings/option_pages.h"

#include "settings/user_dictionary.h"
#include "support/matchers.h"
#include "support/memory_store.h"
#include "support/scripted_agent.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

class OptionPages : public testing::Test {
protected:
    std::string Stored(const char* key) const { return store.Get("Options", key).value_or("nothing"); }

    Settings settings;
    MemoryStore store;
    ScriptedPrompts prompts;
    ScriptedAgent agent;
    int repaints = 0, flushes = 0;
    bool writes = true;
    OptionsWorld world{settings, store, prompts, [this] { ++repaints; },
                       [this] {
                           ++flushes;
                           return writes;
                       }};
};

TEST_F(OptionPages, EveryBoxWritesItsOptionAtOnceAndRepaintsIfItChangesWhatIsShown) {
    GeneralPage page(world);
    const size_t count = GeneralPage::NoteBoxes().size();
    for (const OptionBox& box : GeneralPage::NoteBoxes())
        page.SetOn(box, !page.IsOn(box.option));
    EXPECT_EQ(repaints, static_cast<int>(count));
    for (const OptionBox& box : GeneralPage::OtherBoxes())
        page.SetOn(box, false);
    EXPECT_EQ(repaints, static_cast<int>(count)) << "what isn't shown repaints nothing";
    page.SetOn(GeneralPage::OtherBoxes()[0], false);
    for (const char* key : {"ShowSources", "ShowCats", "CatsTop", "ShowKeyWords", "EnableNoteAutoFill",
                            "CheckForUpdates", "szSaveWarning"})
        EXPECT_EQ(Stored(key), "0") << key;
    for (const char* key : {"SourceTop", "ShowCatSet1", "KewWordsTop"})
        EXPECT_EQ(Stored(key), "1") << key;
}

TEST_F(OptionPages, SourceTextSizeStaysWithinItsLimits) {
    GeneralPage page(world);
    for (const auto& [typed, kept] :
         {std::pair(5, 5), {4, 5}, {100, 100}, {101, 100}, {0, 5}, {999, 5}, {-3, 5}, {30, 30}, {2000000000, 30}})
        EXPECT_EQ(page.SetSourceSize(typed), kept) << typed;
    EXPECT_EQ(Stored("SourceSize"), "30");
    EXPECT_EQ(repaints, 4) << "only changes repaint";
}

TEST_F(OptionPages, FontsAndGroundGoToTheirOwnSectionsAndRepaint) {
    GeneralPage page(world);
    FontSetting font = page.EditFont();
    EXPECT_EQ(font.height, 18);
    font.faceName = "Georgia";
    font.height = 24;
    font.color = 0x123456;
    page.SetEditFont(font);
    EXPECT_EQ(store.Get("EditTextFont", "Red"), "86");
    EXPECT_EQ(page.EditFont().color, 0x123456u);
    EXPECT_EQ(page.PictureTitleFont().faceName, "Times New Roman");
    EXPECT_EQ(page.PictureTitleFont().weight, 700);
    page.SetPictureTitleFont(font);
    EXPECT_EQ(store.Get("ImgTitleFont", "FaceName"), "Georgia");
    EXPECT_EQ(page.SelectedNoteColor(), 251u | 251u << 8 | 142u << 16);
    page.SetSelectedNoteColor(0x030201);
    EXPECT_EQ(store.Get("SelNoteTxtBkColor", "Blue"), "3");
    EXPECT_EQ(repaints, 3);
}

TEST_F(OptionPages, BackupPageHoldsTheUserUntilAFileIsSet) {
    BackupPage page(world);
    EXPECT_TRUE(page.MayLeave()) << "it is off";
    page.Enable(true);
    EXPECT_EQ(page.PathText(), "< No Backup File Set >");
    EXPECT_FALSE(page.MayLeave());
    page.ChoosePath();
    EXPECT_FALSE(page.MayLeave()) << "the user has cancelled";
    const std::string held = "Invalid Backup File: Auto-Backup does not have a valid file path set.";
    const std::string asked = "Set Backup Path? save Lorebinder Export Files (*.lbe) |*.lbe| []";
    EXPECT_THAT(prompts.seen, ElementsAre(held, asked, held));
    prompts.savePaths = {"/keep/notes.lbe"};
    page.ChoosePath();
    EXPECT_EQ(page.PathText(), "/keep/notes.lbe");
    EXPECT_TRUE(page.MayLeave());
    settings.Set(Option::BkUseTimes, 0);
    EXPECT_FALSE(page.MayLeave()) << "a number of uses from elsewhere";
    page.SetUses(3);
    EXPECT_TRUE(page.MayLeave());
    EXPECT_EQ(Stored("EnableBackup"), "1");
    EXPECT_EQ(Stored("BackupPath"), "/keep/notes.lbe");
}

TEST_F(OptionPages, ChoosingANumberOfUsesBeginsTheCountAnewAndTheNextBackupIsToldInWords) {
    BackupPage page(world);
    settings.Set(Option::BkUseCount, 7);
    page.SetUses(9);
    EXPECT_EQ(Stored("BkUseTimes"), "9");
    EXPECT_EQ(Stored("BkUseCount"), "0");
    for (const auto& [chosen, kept] : {std::pair{0, 1}, {16, 15}, {15, 15}}) {
        page.SetUses(chosen);
        EXPECT_EQ(page.Uses(), kept);
    }
    EXPECT_EQ(page.NextText(), "No backup is made automatically.");
    page.Enable(true);
    const std::tuple<int, int, const char*> cases[] = {
        {1, 0, "You are asked the next time that the program closes."},
        {3, 2, "You are asked the next time that the program closes."},
        {3, 0, "You are asked when the program closes after 2 more uses."},
        {2, 0, "You are asked when the program closes after 1 more use."},
        {2, 9, "You are asked the next time that the program closes."}};
    for (const auto& [uses, count, text] : cases) {
        settings.Set(Option::BkUseTimes, uses);
        settings.Set(Option::BkUseCount, count);
        EXPECT_EQ(page.NextText(), text);
    }
}

TEST_F(OptionPages, MarkStyleFollowsTheBoxes) {
    SpellPage page(world);
    EXPECT_EQ(page.ColorIndex(), 9);
    EXPECT_EQ(page.Style().color, 0x0000FFu) << "red";
    EXPECT_EQ(page.Style().effects, 13) << "italics and underlined";
    page.SetOn(SpellPage::MarkBoxes()[0], true);
    EXPECT_EQ(page.Style().effects, 15) << "and bold";
    page.SetColorIndex(12);
    for (const OptionBox& box : SpellPage::MarkBoxes())
        page.SetOn(box, box.option == Option::MarkStrike);
    EXPECT_EQ(page.Style().color, 0xFF0000u);
    EXPECT_EQ(page.Style().effects, 65);
    page.SetColorIndex(-1);
    EXPECT_EQ(page.ColorIndex(), 12);
    for (const int32_t index : {16, 40}) {
        settings.Set(Option::MarkSelColor, index);
        EXPECT_EQ(page.ColorIndex(), -1);
        EXPECT_EQ(page.Style().color, 66302u);
    }
    EXPECT_EQ(repaints, 0);
}

TEST_F(OptionPages, AgentValuesStandOnDiskBeforeTheAgentIsTold) {
    AgentPage page(world, &agent);
    EXPECT_TRUE(page.IsAgentOn(Option::TrayIcon)) << "unless it was taken away";
    EXPECT_FALSE(page.IsAgentOn(Option::RunAgent));
    page.SetAgentOn(Option::RunAgent, true);
    page.SetAgentOn(Option::TrayIcon, false);
    EXPECT_EQ(Stored("RunAgent"), "2112");
    EXPECT_EQ(Stored("TrayIcon"), "0");
    EXPECT_EQ(flushes, 2);
    EXPECT_THAT(agent.told, ElementsAre("TQRAGENTCHECKSETTINGS", "TQRAGENTCHECKSETTINGS"));
    page.SetAgentOn(Option::StartupAgent, true);
    EXPECT_TRUE(agent.startsWithSession);
    settings.Set(Option::RunAgent, 1);
    EXPECT_FALSE(page.IsAgentOn(Option::RunAgent)) << "only 2112 is on";
    writes = false;
    page.SetAgentOn(Option::RunAgent, false);
    EXPECT_EQ(agent.told.size(), 3u) << "it would read the old value";
}

TEST_F(OptionPages, HotKeyThatPeopleTypeWithIsRefused) {
    AgentPage page(world, &agent);
    EXPECT_FALSE(page.SaveHotKey({'L', 0}));
    EXPECT_FALSE(page.SaveHotKey({'L', HotKey::kShift}));
    EXPECT_EQ(prompts.seen.size(), 2u);
    EXPECT_TRUE(page.SaveHotKey({'L', HotKey::kControl | HotKey::kShift}));
    EXPECT_EQ(Stored("Hotkey"), "76");
    EXPECT_EQ(Stored("HotkeyMod"), "3");
    EXPECT_TRUE(page.SaveHotKey({0x7B, 0})) << "F12";
    EXPECT_TRUE(page.SaveHotKey({0, HotKey::kAlt}));
    EXPECT_EQ(page.GetHotKey(), HotKey{});
}

TEST_F(OptionPages, MissingAgentKeepsTheValuesAndSaysSo) {
    AgentPage page(world, nullptr);
    EXPECT_FALSE(page.IsInstalled());
    page.SetAgentOn(Option::StartupAgent, true);
    EXPECT_EQ(Stored("StartupAgent"), "2112");
    EXPECT_THAT(prompts.seen, IsEmpty());
    page.Launch();
    EXPECT_THAT(prompts.seen, ElementsAre("Lorebinder Agent: Lorebinder Agent could not be started."));
}

/// Keeps its own words in memory.
class WordKeeper : public SpellChecker {
public:
    std::vector<std::string> Languages() const override { return {}; }
    std::string Language() const override { return {}; }
    bool Select(const std::string&) override { return false; }
    bool Check(const std::string&) override { return true; }
    std::vector<std::string> Suggest(const std::string&) override { return {}; }
    bool Add(const std::string&) override { return true; }
    void Ignore(const std::string&) override {}
    std::vector<std::string> UserWords() const override { return words; }
    bool SetUserWords(const std::vector<std::string>& now) override {
        words = now;
        return true;
    }
    std::vector<std::string> words{"Zwei", "apfel", "Fresnel"};
};

TEST(UserDictionaryTest, WordsStandInOrderAndChangesAreWrittenAtOnce) {
    WordKeeper keeper;
    UserDictionary dictionary(keeper);
    EXPECT_THAT(dictionary.Words(), ElementsAre("apfel", "Fresnel", "Zwei"));
    EXPECT_EQ(dictionary.Add("  lumen\t"), 2);
    EXPECT_EQ(dictionary.Add("fresnel"), 2) << "another case is another word";
    EXPECT_THAT(keeper.words, ElementsAre("apfel", "Fresnel", "fresnel", "lumen", "Zwei"));
    EXPECT_EQ(dictionary.Replace(0, "zebra"), 3);
    dictionary.Remove(4);
    dictionary.Remove(99);
    EXPECT_THAT(keeper.words, ElementsAre("Fresnel", "fresnel", "lumen", "zebra"));
}

TEST(UserDictionaryTest, WhatIsNoNewWordIsRefused) {
    WordKeeper keeper;
    UserDictionary dictionary(keeper);
    for (const std::string& text : {std::string(), std::string("  "), std::string("two words"), std::string("Fresnel"),
                                    std::string(101, 'x'), std::string("a\nb")}) {
        EXPECT_FALSE(dictionary.CanAdd(text)) << text;
        EXPECT_EQ(dictionary.Add(text), -1) << text;
        EXPECT_EQ(dictionary.Replace(0, text), -1) << text;
    }
    EXPECT_THAT(keeper.words, ElementsAre("Zwei", "apfel", "Fresnel")) << "nothing was written";
    EXPECT_EQ(dictionary.Replace(7, "more"), -1);
}

}  // namespace
}  // namespace lore
