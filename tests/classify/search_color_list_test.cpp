#include "classify/search_color_list.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

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
}

/// The list as it is told.
struct PlainColors {
    std::vector<CSearchColor> entries;

    static bool Same(Rgb a, Rgb b) {
        const auto near = [](unsigned x, unsigned y) { return std::abs(int(x) - int(y)) < 6; };
        return near(RedOf(a), RedOf(b)) && near(GreenOf(a), GreenOf(b)) && near(BlueOf(a), BlueOf(b));
    }
    void Add(int32_t note, Rgb color) {
        int32_t highest = 3;
        for (CSearchColor& entry : entries) {
            if (Same(entry.color, color)) {
                entry.notes.AddUnique(note);
                return;
            }
            highest = std::max(highest, entry.id);
        }
        entries.push_back({highest + 1, color, {note}});
    }
    void Remove(int32_t note) {
        std::erase_if(entries, [&](CSearchColor& e) { return e.notes.RemoveValue(note) && e.notes.IsEmpty(); });
    }
};

TEST(SearchColorList, FollowsThePlainListThroughRandomChanges) {
    std::mt19937 random(8);
    for (const unsigned range : {12u, 40u, 256u}) {
        CSearchColorList list;
        PlainColors plain;
        const auto anyColor = [&] { return MakeRgb(random() % range, random() % range, random() % (range / 4) + 240); };
        for (int step = 0; step < 1500; ++step) {
            const auto note = static_cast<int32_t>(random() % 60 + 1);
            const Rgb color = anyColor();
            const unsigned kind = random() % 8;
            if (kind < 4) {
                list.AddNoteToColor(note, color);
                plain.Add(note, color);
            } else if (kind < 7) {
                list.RemoveNote(note);
                plain.Remove(note);
            } else {
                LongList notes;
                notes.Merge({note, note % 7 + 1, note % 11 + 20, note % 5 + 40});
                list.SetNotesColor(color, notes);
                for (const int32_t id : notes) {
                    plain.Remove(id);
                    plain.Add(id, color);
                }
            }
            ASSERT_EQ(list.Count(), plain.entries.size());
            for (size_t i = 0; i < plain.entries.size(); ++i) {
                ASSERT_EQ(list.Entries()[i].id, plain.entries[i].id);
                ASSERT_EQ(list.Entries()[i].color, plain.entries[i].color);
                ASSERT_EQ(list.Entries()[i].notes, plain.entries[i].notes);
            }
        }
        std::vector<int32_t> notes(60);
        std::iota(notes.begin(), notes.end(), 1);
        list.RemoveNotes(LongList(notes));
        list.AddNoteToColor(6, 1);
        EXPECT_EQ(Text(list), "[4 1: 6]") << "an empty list counts from the start";
    }
}

}  // namespace
}  // namespace lore
