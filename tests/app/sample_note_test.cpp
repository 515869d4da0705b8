#include "app/sample_note.h"

#include <gtest/gtest.h>

#include "app/sample_categories.h"
#include "classify/forest_builder.h"

namespace lore {
namespace {

TEST(SampleNote, ReadsHeadsAndTextsOfAllNotesInAFile) {
    const auto notes = ParseSampleNotes(
        "stray\n== One: a title\ncreated: 2024-02-29 23:59\nedited: never\nsource: key | p. 3: 4\nsource: other\n"
        "set2: A/B C\nunknown: x\nno colon\npicture: a.png | Title | 0.75\nlink: https://example.org/?a=1 | Site\n\n"
        "# created: not a head\n\nlast\n== Two\n");
    ASSERT_EQ(notes.size(), 2u);
    const SampleNote& one = notes[0];
    EXPECT_EQ(one.title, "One: a title");
    EXPECT_EQ(one.created, DateTime(2024, 2, 29, 23, 59, 0));
    EXPECT_EQ(one.edited.GetStatus(), DateTime::Status::Invalid);
    ASSERT_EQ(one.sources.size(), 2u);
    EXPECT_EQ(one.sources[0].info, "p. 3: 4");
    EXPECT_EQ(one.sources[1].info, "");
    EXPECT_EQ(one.categories[1], "A/B C");
    ASSERT_EQ(one.attachments.size(), 2u);
    EXPECT_EQ(one.attachments[0].zoom, 0.75);
    EXPECT_EQ(one.attachments[1].target, "https://example.org/?a=1");
    EXPECT_EQ(one.attachments[1].kind, SampleAttachment::Kind::Link);
    EXPECT_EQ(one.text, "# created: not a head\n\nlast\n");
    EXPECT_EQ(notes[1].text, "");
}

TEST(SampleCategories, NumbersTheForestBehindTheLastIdAndFindsPaths) {
    int last = 40;
    const CProCategoryList forest = ReadSampleCategories("A\n  B\n    C\n  D\n\nE\n", last);
    EXPECT_EQ(last, 45);
    ASSERT_EQ(forest.Roots().size(), 3u);
    EXPECT_TRUE(forest.Roots()[0].IsUnassigned());
    const CProCategoryTree path = SampleCategoryPath(forest, "A/B/C");
    EXPECT_EQ(Shape(path), "41:A(42:B(43:C))");
    EXPECT_EQ(path.children[0].parentID, 41);
    EXPECT_EQ(DeepestCategoryID(SampleCategoryPath(forest, "A/D")), 44);
    for (const char* unknown : {"", "B", "A/C", "A/B/C/D", "a"})
        EXPECT_TRUE(SampleCategoryPath(forest, unknown).IsEmptyPath()) << unknown;
}

TEST(SampleCategories, StepsOverTheReservedId) {
    int last = kUnassignedID - 1;
    const CProCategoryList forest = ReadSampleCategories("A\nB\n", last);
    for (size_t root = 1; root < forest.Roots().size(); ++root)
        EXPECT_NE(forest.Roots()[root].id, kUnassignedID);
    EXPECT_NE(forest.Roots()[1].id, forest.Roots()[2].id);
}

}  // namespace
}  // namespace lore
