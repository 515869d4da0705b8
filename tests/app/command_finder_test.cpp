#include "app/command_finder.h"

#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

std::vector<std::string> Texts(const CommandFinder& finder, const char* typed, size_t limit = 10) {
    return Each(finder.Find(typed, limit), [&](const FoundItem& found) { return finder.Items()[found.item].text; });
}

CommandFinder Commands() {
    CommandFinder finder;
    for (const char* text : {"Export Current Notes...", "Import Notes...", "Backup Current NoteBook...", "Add Note...",
                             "Delete Current Notes", "Clear Current Notes", "Manage NoteBooks...",
                             "Edit Custom Source Types...", "Edit Category Trees...", "Event Calendar..."})
        finder.Add({FoundKind::Command, text, "", 0});
    return finder;
}

TEST(CommandFinder, FewLettersFindTheCommandThatIsMeant) {
    const std::pair<const char*, const char*> cases[] = {{"imp", "Import Notes..."},
                                                         {"dcn", "Delete Current Notes"},
                                                         {"ccn", "Clear Current Notes"},
                                                         {"mnb", "Manage NoteBooks..."},
                                                         {"edit cat", "Edit Category Trees..."},
                                                         {"trees edit", "Edit Category Trees..."},
                                                         {"ecst", "Edit Custom Source Types..."},
                                                         {"CALENDAR", "Event Calendar..."},
                                                         {"add", "Add Note..."},
                                                         {"   backup   ", "Backup Current NoteBook..."}};
    const CommandFinder finder = Commands();
    for (const auto& [typed, best] : cases) {
        const auto found = Texts(finder, typed);
        ASSERT_FALSE(found.empty()) << typed;
        EXPECT_EQ(found.front(), best) << typed;
    }
    EXPECT_THAT(Texts(finder, "xyz"), IsEmpty());
    EXPECT_THAT(Texts(finder, "notes zz"), IsEmpty()) << "each word has to be there";
}

TEST(CommandFinder, NothingTypedShowsEverythingInItsOrder) {
    const CommandFinder finder = Commands();
    EXPECT_THAT(Texts(finder, " ", 2), ElementsAre("Export Current Notes...", "Import Notes..."));
    EXPECT_EQ(Texts(finder, "", 100).size(), finder.Items().size());
    EXPECT_EQ(Texts(finder, "", 100).back(), "Event Calendar...") << "whatever is shorter";
    EXPECT_THAT(Texts(CommandFinder(), "a"), IsEmpty());
}

TEST(CommandFinder, WholeWordsAndBeginningsStandBeforeScatteredLetters) {
    CommandFinder finder;
    for (const char* text : {"A blue lamp", "Lampoons", "Large armadillo map", "lamp"})
        finder.Add({FoundKind::Category, text, "", 0});
    EXPECT_THAT(Texts(finder, "lamp"), ElementsAre("lamp", "A blue lamp", "Lampoons", "Large armadillo map"));
}

TEST(CommandFinder, EqualMatchesStandByKindThenLengthThenOrder) {
    CommandFinder finder;
    finder.Add({FoundKind::Note, "Fog", "", 1});
    finder.Add({FoundKind::Category, "Fog", "", 2});
    finder.Add({FoundKind::Category, "Fog", "", 3});
    finder.Add({FoundKind::Command, "Fog", "", 4});
    EXPECT_THAT(Each(finder.Find("fog", 3), [&](const FoundItem& found) { return finder.Items()[found.item].id; }),
                ElementsAre(4, 2, 3));
}

TEST(CommandFinder, MarksAreTheCharactersThatMatch) {
    CommandFinder finder;
    finder.Add({FoundKind::Category, "\u00c9tudes d\u2019optique", "", 0});
    const auto found = finder.Find("etopt", 1);
    ASSERT_EQ(found.size(), 1u) << "accents don't matter";
    EXPECT_THAT(found[0].marks, ElementsAre(0, 1, 9, 10, 11));
    const auto twice = finder.Find("et opt et", 1);
    EXPECT_THAT(twice[0].marks, ElementsAre(0, 1, 9, 10, 11)) << "each once, in rising order";
}

TEST(CommandFinder, AccentsAndCaseOfAllKindsOfLettersFold) {
    for (const auto& [text, typed] : {std::pair("\u00c4rger", "arger"),
                                      {"Ma\xF1"
                                       "ana",
                                       "manana"},
                                      {"\u041c\u0410\u042f\u041a", "\u043c\u0430\u044f\u043a"},
                                      {"\u71c8\u5854", "\u5854"},
                                      {"na\u00efve", "na\u00efve"}}) {
        CommandFinder finder;
        finder.Add({FoundKind::Category, text, "", 0});
        EXPECT_EQ(finder.Find(typed, 1).size(), 1u) << text;
    }
}

TEST(CommandFinder, LongTextsAndQueriesCostNoMoreThanTheirBeginning) {
    CommandFinder finder;
    finder.Add({FoundKind::Note, std::string(1 << 20, 'a'), "", 0});
    finder.Add({FoundKind::Note, "", "", 1});
    EXPECT_EQ(finder.Find(std::string(100'000, 'a'), 5).size(), 1u);
    EXPECT_EQ(finder.Find("", 5).size(), 2u);
}

}  // namespace
}  // namespace lore
