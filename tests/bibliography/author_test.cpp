#include <gtest/gtest.h>

#include "bibliography/author_list.h"
#include "bibliography/author_name.h"
#include "bibliography/author_text.h"
#include "bibliography/new_author.h"
#include "bibliography/source_builder.h"
#include "support/raw_record.h"

namespace lore {
namespace {

TEST(AuthorName, TakesTheFormOfItsFlags) {
    struct Case {
        std::string first, middle, last;
        NameForm form;
        std::string inverted, natural;
    };
    const Case cases[] = {
        {"John", "Q", "Smith", {false, true, true}, "Smith, John Q.", "John Q. Smith"},
        {"John", "Q", "Smith", {true, true, true}, "Smith, J. Q.", "J. Q. Smith"},
        {"John", "Q", "Smith", {true, false, true}, "Smith, J.Q.", "J.Q. Smith"},
        {"John", "Q", "Smith", {true, true, false}, "Smith, J.", "J. Smith"},
        {"", "", "Smith", {true, true, true}, "Smith,", " Smith"},
        {"Plato", "", "", {false, true, true}, "Plato", "Plato"},
        {"Plato", "", "", {true, true, true}, "Plato", "Plato"},
        {"J", "", "Smith", {false, true, true}, "Smith, J.", "J. Smith"},
        {"", "Q", "Smith", {true, true, true}, "Smith, Q.", " Q. Smith"},
        {"\xC3\xA9mile", "", "Zola", {true, false, true}, "Zola, \xC3\xA9.", "\xC3\xA9. Zola"},
        {"\xE9mile", "", "Zola", {true, false, true}, "Zola, \xE9.", "\xE9. Zola"},
        {"\xC3\xA9", "", "Zola", {false, false, true}, "Zola, \xC3\xA9.", "\xC3\xA9. Zola"},
        {"", "", "", {true, true, true}, "", ""},
    };
    for (const Case& c : cases) {
        const CAuthor author = Author(1, c.first, c.middle, c.last);
        EXPECT_EQ(FormatAuthorInverted(author, c.form), c.inverted);
        EXPECT_EQ(FormatAuthorNatural(author, c.form), c.natural);
    }
    EXPECT_EQ(FormatAuthorBrief(Author(1, "John", "Q", "Smith")), "J.Q. Smith");
    EXPECT_EQ(FormatAuthorBrief(Author(1, "Plato", "", "")), "Plato");
}

TEST(AuthorName, NamesOfBothFormsReadAsOne) {
    const CAuthor author = Author(1, "Zo\xEB", "", "\xC5\x81uk");
    EXPECT_EQ(FormatAuthorInverted(author, {false, true, true}), "\xC5\x81uk, Zo\xC3\xAB");
    EXPECT_EQ(FormatAuthorNatural(author, {false, true, true}), "Zo\xC3\xAB \xC5\x81uk");
    EXPECT_EQ(FormatAuthorInverted(Author(2, "Zo\xEB", "", "M\xFCller"), {false, true, true}), "M\xFCller, Zo\xEB");
    AuthorList authors;
    authors.AddAuthor(Author(1, "Zo\xEB", "", "M\xFCller"));
    authors.AddAuthor(Author(2, "Jan", "", "\xC5\x81uk"));
    EXPECT_EQ(AuthorsForFilter({1, 2}, authors), "M\xC3\xBCller Z, & \xC5\x81uk J");
    EXPECT_EQ(AuthorsForFilter({1}, authors), "M\xFCller Z");
}

TEST(AuthorText, JoinsNamesUpToTheLimit) {
    const AuthorList authors = ThreeAuthors();
    // The numbers of a conjunction and a separator, and the limit.
    const std::tuple<LongList, int, int, int32_t, std::string> cases[] = {
        {{1, 2, 3}, 1, 1, 6, "Smith, John, Mary Jones, and Carl West"},
        {{1, 2, 3}, 1, 1, 2, "Smith, John, Mary Jones, et al"},
        {{1, 2}, 1, 1, 1, "Smith, John, et al"},
        {{1, 2, 3}, 1, 1, 1, "Smith, John, et al"},
        {{1, 2}, 1, 1, 2, "Smith, John, and Mary Jones"},
        {{1, 2}, 1, 1, 0, "et al"},
        {{1, 2}, 1, 1, -4, "et al"},
        {{1, 9, 2}, 2, 2, 6, "Smith, John; et al"},
        {{1, 9}, 2, 2, 6, "Smith, John; & et al"},
        {{1, 2}, 7, 7, 6, "Smith, John Mary Jones"},
        {{1, 2}, 2, 3, 6, "Smith, John. & Mary Jones"},
        {{}, 1, 1, 6, ""},
    };
    for (const auto& [ids, conjunction, separator, limit, text] : cases)
        EXPECT_EQ(AuthorsFirstInverted(ids, authors, {{}, conjunction, separator, limit}), text);
}

TEST(AuthorText, CompactNamesLoseTheirMarksAndTheListItsLastPeriods) {
    AuthorList authors;
    authors.AddAuthor(Author(1, "J.R.", "", "Roe, Jr."));
    authors.AddAuthor(Author(2, "Ann", "", "Lee..."));
    EXPECT_EQ(AuthorsCompact({1, 2}, authors, {{false, false, true}, 2, 1, 6}), "Roe Jr JR, & Lee Ann");
    EXPECT_EQ(AuthorsAllInverted({2, 1}, authors, {{true, false, true}, 1, 1, 6}), "Lee..., A., and Roe, Jr., J");
    EXPECT_EQ(AuthorsFirstInverted({1, 2}, authors, {{false, false, true}, 1, 1, 6}), "Roe, Jr., J.R., and Ann Lee");
    EXPECT_EQ(AuthorsForFilter({1, 2, 1, 2, 1, 2, 1}, authors),
              "Roe Jr J, Lee A, Roe Jr J, Lee A, Roe Jr J, Lee A, et al");
}

TEST(AuthorList, FindsTheFirstOfEqualIdsAndNames) {
    AuthorList authors = ThreeAuthors();
    EXPECT_FALSE(authors.AddAuthor(Author(2, "Other", "", "Name")));
    EXPECT_EQ(authors.FindAuthorByID(2)->first, "Mary");
    authors.AddAuthor(Author(9, "Mary", "", "Jones"));
    EXPECT_EQ(authors.FindAuthorByName(Author(77, "Mary", "", "Jones")), 2);
    EXPECT_EQ(authors.FindAuthorByName(Author(2, "mary", "", "Jones")), -1);
    authors.AddAuthor(Author(10, "J\u00f6rg", "", "Jones"));
    EXPECT_EQ(authors.FindAuthorByName(Author(2, "J\xF6rg", "", "Jones")), 10);
    CAuthor reserved = Author(2, "Mary", "", "Jones");
    reserved.reserved2 = "x";
    EXPECT_EQ(authors.FindAuthorByName(reserved), -1);
    authors.RemoveAuthor(2);
    EXPECT_EQ(authors.FindAuthorByName(Author(0, "Mary", "", "Jones")), 9);
    EXPECT_EQ(authors.FindAuthorByID(2), nullptr);
}

TEST(AuthorList, NewIdsAreNoOtherAuthors) {
    // The authors, those that a source names, and the last number before and after the new one.
    const std::tuple<std::vector<int32_t>, LongList, int, int, int> cases[] = {
        {{}, {}, 0, 1, 1},
        {{3, 9}, {}, 1, 10, 10},
        {{3, 9}, {10}, 20, 21, 21},
        {{3, 9}, {10, 11}, 1, 12, 12},
        {{3}, {}, 2147483646, 2147483647, 2147483647},
        {{3}, {}, 2147483647, 2, 2147483647},
        {{2, 2147483647}, {}, 1, 3, 3},
        {{2, 2147483647}, {3, 5}, 2147483647, 4, 2147483647}};
    for (const auto& [ids, named, before, id, after] : cases) {
        AuthorList authors;
        for (const int32_t author : ids)
            authors.AddAuthor(Author(author, "", "", "Name"));
        CSource source = FullSource(1011);
        source.AuthorIDs = named;
        SourceList sources;
        sources.AddTail(source);
        int last = before;
        EXPECT_EQ(AuthorIDs(sources).Take(authors, last), id);
        EXPECT_EQ(last, after);
    }
}

TEST(AuthorList, UpdateTrimsAndRefusesNoName) {
    AuthorList authors = ThreeAuthors();
    EXPECT_FALSE(authors.UpdateAuthor(Author(2, " ", "Q", "\t")));
    EXPECT_FALSE(authors.UpdateAuthor(Author(8, "A", "", "B")));
    EXPECT_TRUE(authors.UpdateAuthor(Author(2, " May ", " ", " Jonas ")));
    EXPECT_EQ(authors.FindAuthorByName(Author(0, "May", "", "Jonas")), 2);
    EXPECT_EQ(authors.FindAuthorByName(Author(0, "Mary", "", "Jones")), -1);
}

TEST(AuthorFile, HoldsTheExactBytesAndComesBackEqual) {
    TempFolder folder;
    AuthorList authors;
    authors.AddAuthor(Author(7, "Jo\nAn", "Q", ""));
    ASSERT_TRUE(authors.SaveAuthors(folder / "Authors.dat").Ok());
    EXPECT_EQ(BytesOf(folder / "Authors.dat"), RawRecord().Add(11.56, 1, 7, "Jo\nAn", "Q", "", "", "").Bytes());
    AuthorList read;
    ASSERT_TRUE(read.LoadAuthors(folder / "Authors.dat").Ok());
    EXPECT_EQ(read.FindAuthorByName(authors[0]), 7);
    EXPECT_TRUE(read.ReadWhole());
    EXPECT_DOUBLE_EQ(read.Version(), 11.56);
    ASSERT_TRUE(read.SaveAuthors(folder / "Old.dat", 11.2).Ok());
    EXPECT_TRUE(BytesOf(folder / "Old.dat").starts_with("0000000011.200000000"));
    EXPECT_TRUE(read.LoadAuthors(folder / "none").Missing());
    EXPECT_TRUE(read.Count() == 0 && read.ReadWhole());
}

}  // namespace
}  // namespace lore
