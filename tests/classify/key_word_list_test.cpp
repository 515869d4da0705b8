#include "classify/key_word_list.h"

#include <gtest/gtest.h>

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

TEST(KeyWordList, SortsWithoutCaseTheLaterOfEqualNamesFirstAndForgetsNamesWithTheirLastNote) {
    CKeyWordList list;
    list.AddKeyWordsOfNote("b,A,Zz", 1);
    list.AddKeyWordsOfNote("a,B,A", 2);
    list.SortKeyWords();
    EXPECT_EQ(Names(list), "[a][A][B][b][Zz]");
    EXPECT_EQ(list.FindByName("A")->notes, (LongList{1, 2}));
    list.RemoveNote(1);
    EXPECT_EQ(Names(list), "[a][A][B]");
    EXPECT_EQ(list.FindByName("A")->notes, LongList{2});
    EXPECT_EQ(list.FindByName("b"), nullptr);
}

}  // namespace
}  // namespace lore
