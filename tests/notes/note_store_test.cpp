#include "notes/note_store.h"

#include <functional>

#include "notes/note_book_loader.h"
#include "notes/note_builder.h"
#include "notes/search_world.h"
#include "notes/text_cache.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/note_reading.h"

namespace lore {
namespace {

class NoteStoreTest : public NoteBookTest {
protected:
    std::vector<int32_t> IDsIn(const std::string& name) {
        return Each(NotesOfFile(book.paths.NoteFile(name), world.context), &CNote::id);
    }
    /// Writes a file and enters its notes into the index, as a load does.
    void Load(const std::string& name, const std::vector<CNote>& notes) {
        disk.Put(name, notes);
        for (const CNote& note : notes)
            book.index.AddToIndex(Path(name), note.id);
    }
    std::string Path(const std::string& name) const { return book.paths.NoteFile(name).string(); }
    void Block(const std::string& name) { lore::Block(Path(name)); }

    NoteStore store{book, world.context, faults, nullptr};
};

TEST_F(NoteStoreTest, ANoteIsReplacedWhereItStandsAndANewOneGoesToTheEnd) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});
    const CNote changed = WithKeyWords(SourceNote(1, {5}), "changed");
    EXPECT_TRUE(store.SaveNote(changed));
    EXPECT_TRUE(store.SaveNote(SourceNote(3, {5, 6})));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(1, 2, 3));
    EXPECT_EQ(disk.Bytes("SRC0000000005.dat"),
              NoteFileBytes(std::vector<CNote>{changed, SourceNote(2, {5}), SourceNote(3, {5, 6})}));
    EXPECT_THAT(book.index.AllIDs().Values(), ElementsAre(1, 2, 3));
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteStoreTest, ManyNotesMoveInOneGoAndEachFileKeepsItsOrder) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5}), SourceNote(3, {5})});
    Load("DAY01012020.dat", {DayNote(4)});
    EXPECT_THAT(store.SaveNotes({SourceNote(3, {6}), DayNote(1), SourceNote(4, {6})}).Values(), IsEmpty());
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(2));
    EXPECT_THAT(IDsIn("SRC0000000006.dat"), ElementsAre(3, 4));
    EXPECT_THAT(IDsIn("DAY01012020.dat"), ElementsAre(1));
    EXPECT_EQ(*book.index.FindPath(4), Path("SRC0000000006.dat"));
}

TEST_F(NoteStoreTest, NotesThatComeToTheEndLeaveTheOldPlaceInTheirFile) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5}), SourceNote(3, {5})});
    Load("DAY01012020.dat", {DayNote(4)});
    const CNote changed = WithKeyWords(SourceNote(1, {5}), "changed");
    EXPECT_THAT(store
                    .SaveNotes({SourceNote(3, {5}), SourceNote(9, {5}), changed, SourceNote(4, {5})},
                               NoteStore::Place::AtTheEnd)
                    .Values(),
                IsEmpty());
    EXPECT_EQ(disk.Bytes("SRC0000000005.dat"),
              NoteFileBytes(std::vector<CNote>{SourceNote(2, {5}), SourceNote(3, {5}), SourceNote(9, {5}), changed,
                                               SourceNote(4, {5})}));
    EXPECT_THAT(IDsIn("DAY01012020.dat"), IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteStoreTest, OfNotesThatComeWithOneIdTheLastOneLands) {
    const CNote last = WithKeyWords(SourceNote(1, {5}), "last");
    CNote stranger = SourceNote(2, {5});
    stranger.guid = "{stranger}";
    const std::vector<CNote> incoming = {WithKeyWords(last, "first"), stranger, SourceNote(2, {5}), last};
    for (const bool isHeld : {false, true}) {
        for (const auto place : {NoteStore::Place::WhereItStands, NoteStore::Place::AtTheEnd}) {
            SCOPED_TRACE(isHeld);
            book.index = {};
            disk.Put("SRC0000000005.dat", {});
            if (isHeld)
                Load("SRC0000000005.dat", {SourceNote(2, {5}), SourceNote(1, {5})});
            EXPECT_TRUE(store.SaveNotes(incoming, place).IsEmpty());
            EXPECT_EQ(disk.Bytes("SRC0000000005.dat"), NoteFileBytes(std::vector<CNote>{SourceNote(2, {5}), last}));
        }
    }
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(NoteStoreTest, ACopyThatCouldntLeaveItsOldFileNeverComesBack) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});
    Block("SRC0000000005.dat");
    EXPECT_TRUE(store.SaveNote(SourceNote(1, {6}))) << "it is on the disk";
    EXPECT_FALSE(faults.faults.empty());
    std::filesystem::remove_all(Path("SRC0000000005.dat"));
    disk.Put("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});

    EXPECT_TRUE(store.SaveNote(SourceNote(2, {5})));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(2)) << "the next save of the file takes the copy out";
}

TEST_F(NoteStoreTest, NotesChangeWhereTheyLieAndThoseThatCouldntAreNamed) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});
    Load("SRC0000000006.dat", {SourceNote(3, {6})});
    const CNote changed = WithKeyWords(SourceNote(2, {5}), "changed");
    const auto change = [](CNote& note) {
        note.keyWords = "changed";
        return note.id != 1;
    };
    EXPECT_TRUE(store.ChangeNotes({2, 9}, change).IsEmpty());
    EXPECT_EQ(disk.Bytes("SRC0000000005.dat"), NoteFileBytes(std::vector<CNote>{SourceNote(1, {5}), changed}));
    EXPECT_TRUE(store.ChangeNotes({1}, change).IsEmpty());
    EXPECT_EQ(disk.Bytes("SRC0000000005.dat"), NoteFileBytes(std::vector<CNote>{SourceNote(1, {5}), changed}));
    Block("SRC0000000006.dat");
    EXPECT_EQ(store.ChangeNotes({2, 3}, change), (LongList{3}));
}

TEST_F(NoteStoreTest, DeletingANoteTakesItsHiddenCopyToo) {
    Load("SRC0000000006.dat", {SourceNote(1, {6})});
    disk.Put("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});
    book.index.AddToIndex(Path("SRC0000000005.dat"), 2);
    book.index.AddHiddenCopy(Path("SRC0000000005.dat"), 1);
    disk.Put("SRC0000000007.dat", {SourceNote(1, {7})});
    book.index.AddHiddenCopy(Path("SRC0000000007.dat"), 1);
    Block("SRC0000000007.dat");
    EXPECT_EQ(store.DeleteNotes(LongList{1}).size(), 0u) << "it would come back";
    EXPECT_THAT(IDsIn("SRC0000000006.dat"), ElementsAre(1));
    EXPECT_EQ(faults.faults.size(), 1u) << "the one that it couldn't be taken out of";
    std::filesystem::remove_all(Path("SRC0000000007.dat"));
    disk.Put("SRC0000000007.dat", {SourceNote(1, {7})});
    EXPECT_EQ(store.DeleteNotes(LongList{1}).size(), 1u);
    EXPECT_THAT(IDsIn("SRC0000000006.dat"), IsEmpty());
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(2));
    EXPECT_THAT(IDsIn("SRC0000000007.dat"), IsEmpty());
}

TEST_F(NoteStoreTest, AnotherNoteOfTheSameNumberIsNoCopy) {
    Load("SRC0000000006.dat", {SourceNote(1, {6})});
    CNote stranger = SourceNote(1, {5});
    stranger.guid = "{stranger}";
    disk.Put("SRC0000000005.dat", {stranger, SourceNote(2, {5})});
    book.index.AddToIndex(Path("SRC0000000005.dat"), 2);
    EXPECT_TRUE(store.SaveNote(SourceNote(2, {5})));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(1, 2));
    disk.Put("SRC0000000006.dat", {});
    EXPECT_TRUE(store.SaveNote(SourceNote(2, {5})));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(1, 2)) << "the one that shows has gone";
    book.index.AddHiddenCopy(Path("SRC0000000005.dat"), 1);
    disk.Put("SRC0000000006.dat", {SourceNote(1, {6})});
    EXPECT_EQ(store.DeleteNotes({1}).size(), 1u);
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(1, 2));
}

TEST_F(NoteStoreTest, WhatADamagedFileHeldIsKeptBesideIt) {
    CNote full = FullNote(4711);
    full.sources = {5};
    Load("SRC0000000005.dat", {SourceNote(1, {5}), full});
    const std::string path = Path("SRC0000000005.dat"), whole = BytesOf(path);
    const auto with = [&](size_t at, char byte) {
        std::string bytes = whole;
        bytes.at(at) = byte;
        return bytes;
    };
    const std::pair<const char*, std::string> damages[] = {
        {"cut", whole.substr(0, whole.size() - 20)},
        {"something behind", whole + "rest"},
        {"something behind an end mark", whole + "\x1A" + "rest"},
        {"an end mark", with(whole.find("Second"), '\x1A')},
        {"a count above the notes", with(35, '3')},
        {"a note without a number", with(whole.find("0000000000004711"), '-')},
        {"a zero byte in a text", with(whole.find("Second"), '\0')},
    };
    std::string number;  // the copies kept before aren't overwritten
    for (const auto& [name, bytes] : damages) {
        SCOPED_TRACE(name);
        PutBytes(path, bytes);
        faults.faults.clear();
        EXPECT_TRUE(store.SaveNote(SourceNote(1, {5})));
        const std::string kept = path + number + ".kept";
        EXPECT_EQ(BytesOf(kept), bytes);
        ASSERT_EQ(faults.faults.size(), 1u);
        EXPECT_NE(faults.faults[0].what.find(std::filesystem::path(kept).filename().string()), std::string::npos);
        EXPECT_TRUE(store.SaveNote(SourceNote(1, {5})));
        EXPECT_EQ(faults.faults.size(), 1u) << "the file is whole now";
        number = number.empty() ? ".2" : "." + std::to_string(std::stoi(number.substr(1)) + 1);
    }
}

TEST_F(NoteStoreTest, OfNotesThatShareANumberOnlyTheOneThatShowsIsMeant) {
    const std::string name = "SRC0000000005.dat";
    CNote hidden = SourceNote(1, {5}), shown = SourceNote(1, {5});
    hidden.guid = "{hidden}";
    hidden.dateEdited = DateTime(2021, 1, 1);
    const CNote changed = WithKeyWords(shown, "changed");
    CNote moved = shown;
    moved.sources = {6};
    using Guids = std::vector<std::string>;
    const std::tuple<const char*, std::function<void()>, Guids, size_t> works[] = {
        {"another note", [&] { store.SaveNote(SourceNote(2, {5})); }, {"{G1}", "{hidden}", "{G2}"}, 0},
        {"save", [&] { store.SaveNote(changed); }, {"{G1}changed", "{hidden}", "{G2}"}, 0},
        {"to the end",
         [&] { store.SaveNotes({changed}, NoteStore::Place::AtTheEnd); },
         {"{G1}changed", "{G2}", "{hidden}"},
         0},
        {"change",
         [&] { store.ChangeNotes({1}, [](CNote& note) { return (note.keyWords = "changed", true); }); },
         {"{G1}changed", "{hidden}", "{G2}"},
         0},
        {"move", [&] { store.SaveNote(moved); }, {"{hidden}", "{G2}"}, 1},
        {"delete", [&] { EXPECT_EQ(store.DeleteNotes({1}).at(0).guid, "{G1}"); }, {"{hidden}", "{G2}"}, 1},
        {"delete and bring back",
         [&] { EXPECT_TRUE(store.SaveNotes(store.DeleteNotes({1})).IsEmpty()); },
         {"{G1}", "{G2}", "{hidden}"},
         1},
    };
    for (const auto& [what, make, left, told] : works) {
        SCOPED_TRACE(what);
        for (const auto& entry : std::filesystem::directory_iterator(disk.paths.Notes()))
            std::filesystem::remove(entry);
        book.index = {};
        faults.faults.clear();
        Load(name, {shown, hidden, SourceNote(2, {5})});
        book.index.AddHiddenCopy(Path(name), 1);
        const std::string before = disk.Bytes(name);
        make();
        EXPECT_EQ(
            Each(NotesOfFile(Path(name), world.context), [](const CNote& note) { return note.guid + note.keyWords; }),
            left);
        EXPECT_EQ(faults.faults.size(), told);
        EXPECT_EQ(BytesOf(Path(name) + ".kept"), told > 0 ? before : "");
    }
}

TEST_F(NoteStoreTest, OnlyTextsOfNotesThatShowAreFoundInMemoryAfterASave) {
    const auto text = [](int32_t id, const char* guid, const char* words, DateTime day) {
        CNote note = TextNote(id, words);
        note.guid = guid;
        note.dateCreated = day;
        return note;
    };
    const DateTime first(2020, 1, 1), second(2020, 1, 2);
    const std::string files[] = {"DAY01012020.dat", "DAY01022020.dat"};
    for (const bool twoFiles : {false, true}) {
        SCOPED_TRACE(twoFiles);
        const CNote shown = text(7, "{A}", "apple", first), plum = text(8, "{C}", "plum", twoFiles ? second : first);
        const CNote hidden = text(7, "{B}", "pear", twoFiles ? second : first);
        disk.Put(files[0], twoFiles ? std::vector{shown} : std::vector{shown, hidden, plum});
        disk.Put(files[1], twoFiles ? std::vector{hidden, plum} : std::vector<CNote>());
        book.index = {};
        for (const int32_t id : {7, 8})
            book.index.AddToIndex(Path(files[twoFiles && id == 8 ? 1 : 0]), id);
        book.index.AddHiddenCopy(Path(files[twoFiles ? 1 : 0]), 7);
        TextCache cache;
        cache.UpdateFile(Path(files[0]), {shown});
        NoteStore filling(book, world.context, faults, &cache);
        ASSERT_TRUE(filling.SaveNote(plum));
        EXPECT_THAT(cache.TextOf(7), testing::Optional(std::string_view("apple")));
        EXPECT_THAT(cache.TextOf(8), testing::Optional(std::string_view("plum")));
        EXPECT_THAT(cache.SearchFile(Path(files[twoFiles ? 1 : 0]), MatcherFor("pear")), testing::Optional(IsEmpty()));
        CNote moved = shown;
        moved.sources = {5};
        ASSERT_TRUE(filling.SaveNote(moved));
        EXPECT_THAT(cache.TextOf(7), testing::Optional(std::string_view("apple"))) << "it arrives in another file";
    }
}

TEST_F(NoteStoreTest, ANoteThatHasVanishedFromItsFileIsAddedAgainAndTold) {
    Load("SRC0000000005.dat", {SourceNote(1, {5}), SourceNote(2, {5})});
    disk.Put("SRC0000000005.dat", {SourceNote(2, {5})});
    EXPECT_TRUE(store.SaveNote(SourceNote(1, {5})));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(2, 1));
    EXPECT_EQ(faults.faults.size(), 1u);
}

TEST_F(NoteStoreTest, DeletionGivesTheNotesAsTheFileHeldThem) {
    CNote full = FullNote(7);
    full.sources = {5};
    Load("SRC0000000005.dat", {SourceNote(1, {5}), full});
    const std::vector<CNote> taken = store.DeleteNotes(LongList{7, 8});
    ASSERT_EQ(taken.size(), 1u);
    EXPECT_EQ(RecordOf(taken[0]), RecordOf(full));
    EXPECT_THAT(IDsIn("SRC0000000005.dat"), ElementsAre(1));
    EXPECT_FALSE(book.index.Contains(7));
}

}  // namespace
}  // namespace lore
