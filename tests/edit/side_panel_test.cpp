#include "edit/color_choice.h"
#include "edit/edit_fixture.h"
#include "edit/key_word_picker.h"

namespace lore {
namespace {

class KeyWordPickerTest : public EditFixture {
protected:
    KeyWordPickerTest() {
        book.keyWords.AddKeyWordsOfNote("lamp, Cat", 1);
        book.keyWords.AddKeyWordsOfNote("lamp, cat", 2);
        book.keyWords.AddKeyWordsOfNote("oil", 3);
        book.keyWords.SortKeyWords();
    }
    static std::vector<std::string> Items(const KeyWordPicker& picker) {
        std::vector<std::string> items;
        for (size_t i = 0; i < picker.Count(); ++i)
            items.push_back((picker.IsChecked(i) ? "x " : "- ") + picker.ItemText(i));
        return items;
    }
};

TEST_F(KeyWordPickerTest, TheFieldCountsInPlaceOfTheNote) {
    const KeyWordPicker picker(book.keyWords, " lamp, fog ,", 2);
    EXPECT_THAT(Items(picker), ElementsAre("- Cat - (1)", "x fog - (1)", "x lamp - (2)", "- oil - (1)"));
    EXPECT_EQ(book.keyWords.Count(), 4u) << "the NoteBook's own list stays";
}

TEST_F(KeyWordPickerTest, TheTextHasTheOrderOfChecking) {
    KeyWordPicker picker(book.keyWords, "oil,lamp", -1);
    EXPECT_EQ(picker.FieldText(), "lamp, oil, ") << "those of the start in the order of the list";
    const size_t cat = 1, lamp = 2;
    picker.Toggle(cat);
    picker.Toggle(lamp);
    picker.Toggle(lamp);
    EXPECT_EQ(picker.FieldText(), "oil, cat, lamp, ");
    EXPECT_TRUE(picker.IsChecked(lamp));
}

TEST_F(KeyWordPickerTest, WithoutKeyWordsThereIsNothingToPick) {
    EXPECT_EQ(OpenKeyWordPicker(CKeyWordList(), "  ", -1, prompts, progress), std::nullopt);
    EXPECT_THAT(progress.messages, ElementsAre("Loading Used Key Words...."));
    EXPECT_THAT(prompts.seen, ElementsAre("No Key Words: No Key Words are currently attached to Notes."));
    EXPECT_TRUE(OpenKeyWordPicker(CKeyWordList(), "new", -1, prompts, progress));
}

TEST(ColorChoices, OffersTheColorsInUseAndTheNotesOwn) {
    CSearchColorList colors;
    colors.AddNoteToColor(1, MakeRgb(1, 200, 3));
    colors.AddNoteToColor(2, 0);
    colors.AddNoteToColor(3, MakeRgb(200, 0, 0));
    colors.AddNoteToColor(4, MakeRgb(204, 3, 1));
    EXPECT_THAT(Each(ColorChoices(colors, MakeRgb(204, 3, 1)),
                     [](const ColorChoice& choice) { return choice.name + " " + std::to_string(choice.notes); }),
                ElementsAre("No color 1", "#c80000 2", "#01c803 1", "#cc0301 0"));
    EXPECT_EQ(ColorChoices({}, 0).size(), 1u);
}

}  // namespace
}  // namespace lore
