#include "notes/category_conversion.h"

#include <gtest/gtest.h>

#include "notes/note_builder.h"
#include "support/note_reading.h"

namespace lore {
namespace {

using CategoryConversion = NoteBookTest;

TEST_F(CategoryConversion, WritesTheForestAndTheIdsIntoTheNotes) {
    RawRecord raw;
    raw.Real(10.9).Int(2);
    AddOldNote(raw, 1, {{"A", "B"}, {}, {"<UNASSIGNED>"}});
    AddOldNote(raw, 2, {{"A", "C"}, {"A"}, {}});
    PutBytes(disk.paths.NoteFile("DAY07122011.dat"), raw.Bytes());
    PutBytes(disk.paths.EmptyCategories(1),
             RawRecord().Real(10.9).Int(2).Int(0).Int(2).Int(0).Text("A").Text("").Int(1).Text("D").Text("A").Bytes());

    int maxCategoryID = 100;
    ASSERT_TRUE(NeedsCategoryConversion(disk.paths));
    ConvertCategories(disk.paths, maxCategoryID, world.context, faults);
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
    EXPECT_TRUE(faults.faults.empty());

    CProCategoryList forest;
    ASSERT_TRUE(forest.Load(disk.paths.Categories()).Ok());
    const CProCategoryTree* a = forest.FindRootByName("A");
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->id, 101);
    ASSERT_EQ(a->children.size(), 3u);
    EXPECT_EQ(a->children[2].name, "D");

    const std::vector<CNote> notes = NotesOfFile(disk.paths.NoteFile("DAY07122011.dat"), world.context);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(DeepestCategoryID(notes[0].categories[0]), a->FindChildByName("B")->id);
    EXPECT_EQ(DeepestCategoryID(notes[1].categories[0]), a->FindChildByName("C")->id);
    EXPECT_EQ(notes[1].categories[1].id, a->id);
    EXPECT_TRUE(notes[0].categories[2].IsEmptyPath());
    EXPECT_TRUE(BytesOf(disk.paths.NoteFile("DAY07122011.dat")).starts_with("0000000011.56"));
    EXPECT_TRUE(std::filesystem::exists(disk.paths.EmptyCategories(1)));
}

TEST_F(CategoryConversion, AFileThatBrokeOffStaysAndAnyOtherDamageIsKeptBeside) {
    RawRecord two, three;
    for (RawRecord* const raw : {&two, &three}) {
        raw->Real(10.9).Int(raw == &two ? 2 : 3);
        AddOldNote(*raw, 1, {{"A"}, {}, {}});
        AddOldNote(*raw, 2, {{"A", "B"}, {}, {}});
    }
    std::string zero = two.Bytes(), numberless = two.Bytes(), ended = two.Bytes();
    zero.at(zero.rfind("plain")) = '\0';
    numberless.at(numberless.rfind("0000000000000002" + std::string(16, '0') + std::string(14, '0') + "19")) = '-';
    ended.at(ended.rfind("plain")) = '\x1A';
    // What is in the file, and the notes of the new file; none where the old one stays.
    const std::tuple<const char*, std::string, std::vector<int32_t>> cases[] = {
        {"a note is missing", three.Bytes(), {}},
        {"an end mark within a note", ended, {}},
        {"something behind the notes", two.Bytes() + "rest", {}},
        {"something behind an end mark", two.Bytes() + "\x1A" + "rest", {1, 2}},
        {"a zero byte", zero, {1, 2}},
        {"a record without a number", numberless, {1}},
    };
    for (const auto& [what, bytes, converted] : cases) {
        SCOPED_TRACE(what);
        const std::filesystem::path file = disk.paths.NoteFile("DAY07122011.dat"), kept = file.string() + ".kept";
        std::filesystem::remove(disk.paths.Categories());
        std::filesystem::remove(kept);
        faults.faults.clear();
        PutBytes(file, bytes);
        int maxCategoryID = 0;
        EXPECT_TRUE(ConvertCategories(disk.paths, maxCategoryID, world.context, faults));
        EXPECT_EQ(faults.faults.size(), 1u);
        CProCategoryList forest;
        forest.Load(disk.paths.Categories());
        EXPECT_NE(forest.FindRootByName("A"), nullptr);
        EXPECT_EQ(BytesOf(kept), converted.empty() ? "" : bytes);
        if (converted.empty()) {
            EXPECT_EQ(BytesOf(file), bytes);
            continue;
        }
        std::vector<int32_t> ids;
        for (const CNote& note : NotesOfFile(file, world.context)) {
            ids.push_back(note.id);
            EXPECT_GT(DeepestCategoryID(note.categories[0]), 0);
        }
        EXPECT_EQ(ids, converted);
    }
}

TEST_F(CategoryConversion, ANoteThatKeepsItsOldIdStandsInNoOtherCategory) {
    for (const auto& [id, rest] : {std::pair(6, ""), {7, ""}, {8, "rest"}}) {
        CNote note = DayNote(id, id);
        note.categories[0] = PathOf({{id, "Old " + std::to_string(id)}});
        PutBytes(disk.paths.NoteFile("DAY0" + std::to_string(id) + "022020.dat"), NoteFileBytes({&note, 1}) + rest);
    }
    int maxCategoryID = 6;
    EXPECT_TRUE(ConvertCategories(disk.paths, maxCategoryID, world.context, faults));
    CProCategoryList forest;
    forest.Load(disk.paths.Categories());
    EXPECT_EQ(forest.FindRootByName("Old 6")->id, 7);
    EXPECT_EQ(forest.FindRootByName("Old 7")->id, 9);
}

TEST_F(CategoryConversion, FileThatIsThereIsNeverBuiltAnew) {
    PutBytes(disk.paths.Categories(), "");
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
    std::filesystem::remove(disk.paths.Categories());
    std::filesystem::create_symlink("nowhere", disk.paths.Categories());
    EXPECT_FALSE(NeedsCategoryConversion(disk.paths));
}

}  // namespace
}  // namespace lore
