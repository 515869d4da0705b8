#include "classify/search_color_list.h"

#include <gtest/gtest.h>
#include <utility>

namespace lore {
namespace {

std::string Text(const CSearchColorList& list) {
    std::string text;
    for (const CSearchColor& entry : list.Entries()) {
        text += "[" + std::to_string(entry.id) + " " + std::to_string(entry.color) + ":";
        for (const int32_t note : entry.notes)
            text += " " + std::to_string(note);
        text += "]";
    }
    return text;
}

TEST(SearchColorList, JoinsColoursThatAreNearlyAlike) {
    CSearchColorList list;
    list.AddNoteToColor(1, MakeRgb(200, 0, 0));
    list.AddNoteToColor(2, MakeRgb(204, 3, 1));
    list.AddNoteToColor(3, MakeRgb(206, 0, 0));
    list.AddNoteToColor(4, MakeRgb(205, 5, 5));
    list.AddNoteToColor(5, 0);
    list.AddNoteToColor(2, MakeRgb(195, 0, 0));
    EXPECT_EQ(Text(list), "[4 200: 1 2 4][5 206: 3][6 0: 5]");
    list.AddNoteToColor(7, MakeRgb(203, 0, 0));
    EXPECT_EQ(Text(list), "[4 200: 1 2 4 7][5 206: 3][6 0: 5]") << "the first of several";
}

TEST(SearchColorList, MovesNotesAndForgetsColoursWithTheirLastNote) {
    CSearchColorList list;
    for (const auto& [note, color] : {std::pair(1, 200), {2, 100}, {3, 200}})
        list.AddNoteToColor(note, static_cast<Rgb>(color));
    list.SetNotesColor(50, {1, 2, 1});
    EXPECT_EQ(Text(list), "[4 200: 3][6 50: 1 2]");
    list.SetNotesColor(50, {});
    list.RemoveNotes({1, 2, 3});
    list.AddNoteToColor(6, 1);
    EXPECT_EQ(Text(list), "[4 1: 6]") << "an empty list counts from the start";
}

}  // namespace
}  // namespace lore
