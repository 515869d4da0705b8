#include "exchange/import_undo.h"

#include <gtest/gtest.h>

#include "edit/note_removal.h"
#include "exchange/bring_back.h"
#include "exchange/exchange_world.h"
#include "notes/note_store.h"

namespace lore {
namespace {

using Lines = std::vector<std::string>;

/// Two NoteBooks that began as one: an archive of the first replaces both notes of the second and adds one.
class ImportUndoTest : public testing::Test {
protected:
    ImportUndoTest() {
        FillBook(from_);
        FillBook(to_);
        std::vector<CNote> notes = from_.Notes();
        for (CNote& note : notes) {
            note.dateEdited = DateTime(2030, 1, 1);
            note.keyWords = "from elsewhere";
        }
        notes.push_back(DayNote(20, 20));
        EXPECT_EQ(from_.Export(archive_, notes), 3);
        before_ = Files();
        to_.changes = &changes_;
        chooser_.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
        EXPECT_EQ(to_.Import(archive_, chooser_).result, 3);
        EXPECT_NE(Files(), before_);
    }
    /// The note files and the attachments, by name.
    std::map<std::string, std::string> Files() const {
        std::map<std::string, std::string> files = FilesBelow(to_.folder.paths.Notes());
        files.merge(FilesBelow(to_.folder.paths.Attachments()));
        return files;
    }
    size_t Undo() {
        const auto store = [] {};
        return UndoImport(changes_, to_.book, to_.counters, store, to_.world.context, to_.faults, nullptr)->Count();
    }
    CNote Find(const std::string& guid) {
        for (CNote& note : to_.Notes()) {
            if (note.guid == guid)
                return note;
        }
        return {};
    }

    TempFolder folder_;
    std::filesystem::path archive_ = folder_ / "a.lbe";
    ExchangeBook from_, to_;
    TestChooser chooser_;
    ImportChanges changes_;
    std::map<std::string, std::string> before_;
};

TEST_F(ImportUndoTest, EverythingIsAsItWasByteForByte) {
    EXPECT_EQ(to_.Notes().size(), 3u);
    EXPECT_EQ(NotesThatLeave(changes_, to_.book), 1u);
    EXPECT_EQ(Undo(), 0u);
    EXPECT_EQ(NotesThatLeave(changes_, to_.book), 0u);
    std::map<std::string, std::string> after = Files();
    std::erase_if(after, [this](const auto& file) { return !before_.contains(file.first) && file.second.size() < 60; });
    EXPECT_EQ(after, before_) << "a day file without notes may stay";
    EXPECT_EQ(to_.book.TotalNoteCount(), 2u);
    EXPECT_EQ(to_.book.keyWords.FindByName("from elsewhere"), nullptr);
    EXPECT_TRUE(to_.book.sources.FindSourceByID(1011)->NoteIDs.Contains(7));
    EXPECT_TRUE(to_.faults.faults.empty());
    to_.Load();
    EXPECT_EQ(to_.book.TotalNoteCount(), 2u);
}

TEST_F(ImportUndoTest, WhatWasWrittenSinceStays) {
    CNote changed = Find(DayNote(20, 20).guid), replaced = Find(FullNote(7).guid);
    for (CNote* note : {&changed, &replaced}) {
        note->plainText = "Words of today";
        note->rtfText = "{\\rtf1 Words of today}";
        ASSERT_TRUE(NoteStore(to_.book, to_.world.context, to_.faults, nullptr).SaveNote(*note));
    }
    EXPECT_EQ(Undo(), 2u);
    EXPECT_EQ(Find(changed.guid).plainText, "Words of today");
    EXPECT_EQ(Find(replaced.guid).plainText, "Words of today");
    EXPECT_EQ(Find(DayNote(8).guid).keyWords, DayNote(8).keyWords);
    EXPECT_TRUE(to_.faults.faults.empty());
}

TEST_F(ImportUndoTest, NotesComeBackToTheirSourcesAndCategoriesThoughThoseHaveChanged) {
    to_.book.sources.RemoveSource(1011);
    to_.book.types = {};
    to_.book.categories.FindByID(3)->name = "Lamps";
    for (CNote& note : changes_.replaced) {
        if (note.id == 7)
            note.categories[1] = PathOf({{77, "Gone"}});
        else
            note.categories = {PathOf({{kUnassignedID, "<UNASSIGNED>"}}), PathOf({{5, ""}}), {}};
    }
    const std::vector<CNote> twice(2, SourceNote(1, {1012, 99, 1012}));
    EXPECT_EQ(SourcesOfNotes(twice, to_.book).size(), 1u);
    EXPECT_EQ(Undo(), 0u);
    const CNote note = Find(FullNote(7).guid);
    EXPECT_EQ(note.categories[0].name, "Lamps");
    EXPECT_EQ(to_.book.categories.FindByID(note.categories[1].id)->name, "Gone");
    EXPECT_EQ(to_.book.types.Count(), 1u);
    ASSERT_FALSE(note.sources.IsEmpty());
    const CSource* const source = to_.book.sources.FindSourceByID(note.sources[0]);
    EXPECT_TRUE(source && source->SourceGUID == "{SOURCE 1011}");
}

TEST_F(ImportUndoTest, ListsThatCannotBeWrittenStopItBeforeAnyNote) {
    to_.book.sources.RemoveSource(1011);
    Block(to_.folder.paths.Sources());
    const auto files = Files();
    const auto store = [] { ADD_FAILURE(); };
    EXPECT_FALSE(UndoImport(changes_, to_.book, to_.counters, store, to_.world.context, to_.faults, nullptr));
    EXPECT_EQ(Files(), files);
    EXPECT_FALSE(to_.faults.faults.empty());
}

TEST(ImportedFiles, OnesThatAnotherNoteNamesStayThroughAnImportAndItsUndo) {
    const TempFolder folder;
    const std::filesystem::path archive = folder / "a.lbe";
    for (const bool undoable : {false, true}) {
        SCOPED_TRACE(undoable);
        ExchangeBook from, to;
        FillBook(from);
        FillBook(to);
        std::vector<CNote> notes = from.Notes();
        for (CNote& note : notes)
            note.dateEdited = DateTime(2030, 1, 1);
        ASSERT_EQ(from.Export(archive, notes), 2);
        // A note beside the others that names a file of one of them.
        const auto share = [&](int32_t id, const std::string& name) {
            CNote note = DayNote(id, id);
            note.attachments.push_back({0, 1.0, "Shared", name, "", 1, true});
            to.folder.Put(GetNoteFileName(note), {note});
            to.Load();
        };
        const auto imported = [&](const std::string& guid) {
            for (const CNote& note : to.Notes()) {
                if (note.guid == guid)
                    return note.attachments.at(0).storedFile;
            }
            return std::string();
        };
        share(20, "0000001.png");
        ImportChanges changes;
        to.changes = undoable ? &changes : nullptr;
        TestChooser chooser;
        chooser.change = [](ImportComparison& comparison) { comparison.SetShowSame(true); };
        ASSERT_EQ(to.Import(archive, chooser).result, 2);
        const std::string picture = imported(FullNote(7).guid), text = imported(DayNote(8).guid);
        ASSERT_NE(picture, "0000001.png");
        EXPECT_EQ(BytesOf(to.Attachment("0000001.png")), "a picture");
        EXPECT_FALSE(std::filesystem::exists(to.Attachment("0000002.txt"))) << "no other note names it";
        if (undoable) {
            share(21, picture);
            const auto store = [] {};
            EXPECT_EQ(UndoImport(changes, to.book, to.counters, store, to.world.context, to.faults, nullptr),
                      LongList());
            EXPECT_EQ(BytesOf(to.Attachment(picture)), "a picture");
            EXPECT_FALSE(std::filesystem::exists(to.Attachment(text)));
            EXPECT_EQ(BytesOf(to.Attachment("0000001.png")), "a picture");
            EXPECT_EQ(BytesOf(to.Attachment("0000002.txt")).size(), 5000u);
        }
        EXPECT_TRUE(to.faults.faults.empty());
    }
}

TEST_F(ImportUndoTest, DeletedNotesStayDeletedAndFilesOfReplacedOnesGoWithTheProgram) {
    const LongList ids{Find(FullNote(7).guid).id};
    NoteRemoval(to_.book, to_.world.context, to_.faults, nullptr).DeleteNotes(ids, GoneFiles::Deleted);
    EXPECT_EQ(Undo(), 0u);
    EXPECT_EQ(Find(FullNote(7).guid).id, -1);
    EXPECT_EQ(to_.book.TotalNoteCount(), 1u);
    NoteRemoval::DiscardKeptFiles(to_.folder.paths, to_.faults);
    EXPECT_FALSE(std::filesystem::exists(KeptFilesFolder(to_.folder.paths)));
}

}  // namespace
}  // namespace lore
