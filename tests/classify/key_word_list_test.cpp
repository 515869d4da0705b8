#include "classify/key_word_list.h"

#include <gtest/gtest.h>
#include <random>

#include "base/text.h"

namespace lore {
namespace {

std::string Names(const CKeyWordList& list) {
    std::string text;
    for (const CKeyWord& entry : list.Entries())
        text += "[" + entry.name + "]";
    return text;
}

TEST(KeyWordList, SplitsALineAtItsCommas) {
    const std::pair<const char*, const char*> cases[] = {{"a, b,c", "[a][b][c]"},
                                                         {",a,", "[a]"},
                                                         {"a,,b", "[a][][b]"},
                                                         {"   ", ""},
                                                         {"solo", "[solo]"},
                                                         {"x,", "[x]"},
                                                         {",,,", ""},
                                                         {"", ""},
                                                         {" ,a", "[,a]"},
                                                         {" ,a,b", "[][a][b]"},
                                                         {"a, ", "[a][]"},
                                                         {" , ", "[,]"},
                                                         {"  two words  ", "[two words]"},
                                                         {"a,\tA ,a", "[a][A]"},
                                                         {",, x ,, y ,,", "[x][][y]"}};
    for (const auto& [text, names] : cases) {
        CKeyWordList list;
        list.AddKeyWordsOfNote(text, 7);
        EXPECT_EQ(Names(list), names) << "'" << text << "'";
        for (const CKeyWord& entry : list.Entries())
            EXPECT_EQ(entry.notes, (LongList{7}));
    }
}

TEST(KeyWordList, OneKeyWordHasOneEntryWhateverTheFormOfItsLine) {
    CKeyWordList list;
    list.AddKeyWordsOfNote("caf\xE9, fog", 1);
    list.AddKeyWordsOfNote("\xE7\x81\xAF, caf\xC3\xA9", 2);  // a line that only UTF-8 can hold
    list.AddKeyWordsOfNote("\xE7\x81\xAF", 3);
    EXPECT_EQ(Names(list), "[caf\xE9][fog][\xE7\x81\xAF]");
    EXPECT_EQ(list.FindByName("caf\xC3\xA9")->notes, (LongList{1, 2}));
    EXPECT_EQ(list.FindByName("caf\xE9")->notes, (LongList{1, 2}));
    list.RemoveNote(1);
    list.SortKeyWords();
    EXPECT_EQ(list.FindByName("caf\xC3\xA9")->notes, (LongList{2}));
    EXPECT_EQ(WithKeyWord("caf\xE9", "\xE7\x81\xAF"), "caf\xC3\xA9, \xE7\x81\xAF");
    EXPECT_EQ(WithKeyWord("\xE7\x81\xAF, caf\xC3\xA9", "caf\xE9"), "\xE7\x81\xAF, caf\xC3\xA9") << "held already";
    EXPECT_EQ(WithoutKeyWord("\xE7\x81\xAF, caf\xC3\xA9", "caf\xE9"), "\xE7\x81\xAF");
}

TEST(KeyWordList, CountsTheTextInTheEditFieldAsOneNote) {
    CKeyWordList list;
    list.AddKeyWordsOfNote("a,b", 1);
    list.AddKeyWordsOfNote("b,c", kPseudoNote);
    list.NumberEntries();
    EXPECT_EQ(list.FindKeyWord(1)->notes.Count(), 2u);
    for (const CKeyWord& entry : list.Entries())
        EXPECT_EQ(entry.selected, entry.name != "a");
    EXPECT_EQ(list.FindKeyWord(2)->id, 2);
    EXPECT_EQ(list.FindKeyWord(3), nullptr);
}

/// The list as it is told: walked from the front for each step.
struct PlainList {
    std::vector<CKeyWord> entries;

    void Add(const std::string& name, int32_t note) {
        for (CKeyWord& entry : entries)
            if (entry.name == name)
                return entry.notes.Merge({note});
        entries.push_back({-1, name, {note}, false});
    }
    void Remove(int32_t note) {
        for (size_t i = 0; i < entries.size();) {
            if (entries[i].notes.RemoveValue(note) && entries[i].notes.IsEmpty())
                entries.erase(entries.begin() + static_cast<ptrdiff_t>(i));
            else
                ++i;
        }
    }
    void Sort() {
        std::vector<CKeyWord> sorted;
        for (const CKeyWord& entry : entries) {
            auto place = sorted.begin();
            while (place != sorted.end() && ToLower(place->name) < ToLower(entry.name))
                ++place;
            sorted.insert(place, entry);
        }
        entries = sorted;
    }
};

TEST(KeyWordList, FollowsThePlainListThroughRandomChanges) {
    std::mt19937 random(3);
    const char* const names[] = {"a", "A", "b", "B", "Bb", "\xC4", "\xE4", "", "zz", "Zz", "ZZ"};
    CKeyWordList list;
    PlainList plain;
    for (int step = 0; step < 600; ++step) {
        const auto note = static_cast<int32_t>(random() % 20 + 1);
        if (random() % 3 != 0) {
            const std::string first = names[random() % 11], second = names[random() % 11];
            list.AddKeyWordsOfNote("x," + first + "," + second + ",y", note);
            for (const std::string& name : {std::string("x"), first, second, std::string("y")})
                plain.Add(name, note);
        } else if (random() % 2 != 0) {
            list.RemoveNote(note);
            plain.Remove(note);
        } else {
            list.SortKeyWords();
            plain.Sort();
        }
        ASSERT_EQ(list.Count(), plain.entries.size());
        for (size_t i = 0; i < plain.entries.size(); ++i) {
            ASSERT_EQ(list.Entries()[i].name, plain.entries[i].name);
            ASSERT_EQ(list.Entries()[i].notes, plain.entries[i].notes);
            ASSERT_EQ(list.FindByName(plain.entries[i].name), &list.Entries()[i]);
        }
    }
}

}  // namespace
}  // namespace lore
