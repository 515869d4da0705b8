#include "exchange/source_merge.h"

#include <gtest/gtest.h>

#include "bibliography/source_builder.h"
#include "notes/note_builder.h"

namespace lore {
namespace {

class SourceMergeTest : public testing::Test {
protected:
    SourceMergeTest() {
        book_.authors = ThreeAuthors();
        book_.sources.AddTail(FullSource(1500));
        counters_.MaxAuthorID = 40;
    }
    static CSource Incoming(std::string guid) {
        CSource source = FullSource(1500);
        source.SourceGUID = std::move(guid);
        source.AuthorIDs = {2, 1, 9, 77};
        source.EmbeddedAuthors = {Author(2, "Carl", "", "West"), Author(1, "New", "", "Person"),
                                  Author(9, "carl", "", "West")};
        source.NoteIDs = {5};
        return source;
    }
    int32_t Merged(const CSource& source) {
        merge_.AddTypes({source});
        merge_.NumberTypes();
        return merge_.Merge(source);
    }

    OpenNoteBook book_;
    IdCounters counters_;
    SourceMerge merge_{book_, counters_};
};

TEST_F(SourceMergeTest, AKnownSourceGivesItsIdAndStaysAsItIs) {
    CSource known = Incoming("{SOURCE 1500}");
    known.SourceID = 3;
    known.FieldTexts[0] = "Another title";
    EXPECT_EQ(Merged(known), 1500);
    EXPECT_EQ(book_.sources[0].FieldTexts[0], "The Light\nof 1811");
    EXPECT_EQ(book_.types.Count(), 0u) << "its type is of no use";
    EXPECT_EQ(book_.authors.Count(), 3u);
    EXPECT_FALSE(merge_.HasNewSources() || merge_.HasNewAuthors() || merge_.HasNewTypes());
    EXPECT_EQ(Merged(Incoming("{source 1500}")), 1501) << "another case is another source";
}

TEST_F(SourceMergeTest, ANewSourceBringsItsAuthorsByName) {
    EXPECT_EQ(Merged(Incoming("{NEW}")), 1501);
    const CSource& source = *book_.sources.FindSourceByID(1501);
    EXPECT_EQ(source.AuthorIDs, (LongList{3, 41, 42})) << "known by all five texts, new, new; the unknown id goes";
    EXPECT_EQ(book_.authors.FindAuthorByID(41)->first, "New");
    EXPECT_EQ(book_.authors.FindAuthorByID(42)->first, "carl");
    EXPECT_EQ(counters_.MaxAuthorID, 42);
    EXPECT_TRUE(source.NoteIDs.IsEmpty());
    EXPECT_TRUE(source.EmbeddedAuthors.empty());
    CSource twice = Incoming("{TWICE}");
    twice.AuthorIDs = {2, 9, 2};
    twice.EmbeddedAuthors[2].first = "Carl";
    EXPECT_EQ(book_.sources.FindSourceByID(Merged(twice))->AuthorIDs, (LongList{3, 3, 3})) << "none of the names goes";
    EXPECT_EQ(Merged(Incoming("{NEW}")), 1501) << "from now on it is known";
    EXPECT_EQ(book_.authors.Count(), 5u);
    EXPECT_TRUE(merge_.HasNewSources() && merge_.HasNewAuthors());
}

TEST_F(SourceMergeTest, NothingGetsTheIdOfAnotherAfterTheHighest) {
    book_.sources.AddTail(FullSource(2147483647));
    book_.authors.AddAuthor(Author(2147483647, "Far", "", "Away"));
    counters_.MaxAuthorID = 2147483647;
    EXPECT_EQ(Merged(Incoming("{ONE}")), 1011);
    CSource other = Incoming("{TWO}");
    other.EmbeddedAuthors[1].first = "Another";
    EXPECT_EQ(Merged(other), 1012);
    const auto names = [&](int32_t id) {
        return Each(book_.sources.FindSourceByID(id)->AuthorIDs,
                    [&](int32_t author) { return book_.authors.FindAuthorByID(author)->first; });
    };
    EXPECT_EQ(names(1011), (std::vector<std::string>{"Carl", "New", "carl"}));
    EXPECT_EQ(names(1012), (std::vector<std::string>{"Carl", "Another", "carl"}));
    EXPECT_EQ(book_.authors.Count(), 7u);
    EXPECT_EQ(counters_.MaxAuthorID, 2147483647);
    EXPECT_FALSE(merge_.RanOut());
}

TEST_F(SourceMergeTest, TypesAreMatchedByGuidAndNumberedAnew) {
    CCustomSourceType aType = FullSource(1).CustomTypeCopy;
    aType.GUID = "{A}";
    aType.name = "A first type";
    book_.types.AddType(aType);
    CSource missing = Incoming("{NEW}");
    missing.SourceType = 1377;
    Merged(missing);
    ASSERT_EQ(book_.types.Count(), 2u);
    const CCustomSourceType& added = *book_.types.FindTypeByGUID("{TYPE}");
    EXPECT_EQ(added.number, 1102) << "behind the other by its name";
    EXPECT_EQ(added.fields[1].value, "") << "a definition has no values";
    EXPECT_EQ(book_.sources.FindSourceByID(1501)->SourceType, 1102);
    EXPECT_EQ(book_.sources.FindSourceByID(1501)->CustomTypeCopy.fields[1].value, "17");

    CSource found = Incoming("{NEWER}");
    found.CustomTypeCopy.GUID = "{A}";
    found.CustomTypeCopy.name = "Old name";
    Merged(found);
    EXPECT_EQ(book_.sources.FindSourceByID(1502)->SourceType, 1101);
    EXPECT_EQ(book_.sources.FindSourceByID(1502)->CustomTypeCopy.name, "A first type");

    CSource standard = Incoming("{BOOK}");
    standard.SourceType = 1;
    standard.CustomTypeCopy.GUID = "{UNUSED}";
    Merged(standard);
    CSource typeless = Incoming("{LETTER}");
    typeless.CustomTypeCopy.GUID.clear();
    Merged(typeless);
    EXPECT_EQ(book_.types.Count(), 2u);
    EXPECT_EQ(book_.sources.FindSourceByID(1503)->SourceType, 1);
}

TEST_F(SourceMergeTest, ANotesSourcesKeepTheirOrderAndStandOnce) {
    ArchiveNote entry{SourceNote(1, {7, 8, 9}), {Incoming("{B}"), FullSource(1500), Incoming("{B}")}};
    merge_.MergeSourcesOf(entry);
    EXPECT_EQ(entry.note.sources, (LongList{1501, 1500}));
}

TEST(SourceInfo, OfTheExistingNoteIsKeptForSourcesThatBothHave) {
    ArchiveNote imported{DayNote(1), {FullSource(1), FullSource(2), FullSource(3)}};
    imported.note.sourceInfo = {{"{SOURCE 2}", "mine"}};
    CNote existing = DayNote(1);
    existing.sourceInfo = {
        {"{source 1}", "kept"}, {"{source 2}", "given way"}, {"{SOURCE 4}", "gone"}, {"{SOURCE 1}", "twice"}};
    KeepSourceInfo(imported, existing);
    ASSERT_EQ(imported.note.sourceInfo.size(), 2u);
    EXPECT_EQ(imported.note.sourceInfo[0].text, "mine");
    EXPECT_EQ(imported.note.sourceInfo[1].text, "kept");
}

}  // namespace
}  // namespace lore
