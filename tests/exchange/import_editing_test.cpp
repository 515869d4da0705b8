#include "exchange/import_editing.h"

#include <gtest/gtest.h>

#include "exchange/exchange_world.h"
#include "notes/attachment_kind.h"
#include "support/draft_reading.h"
#include "support/memory_store.h"

namespace lore {
namespace {

using Lines = std::vector<std::string>;

/// Edits notes of the list before it takes them.
class EditingChooser : public ImportChooser {
public:
    EditingChooser(ExchangeBook& book, std::function<void(ImportEditing&, ImportComparison&)> edit)
        : book_(book), edit_(std::move(edit)) {}
    bool ChooseNotes(ImportComparison& comparison, ImportArchive& archive) override {
        editing_.emplace(comparison, archive, world_, book_.counters, book_.folder.data.ImportTemp());
        comparison.SetShowSame(true);
        edit_(*editing_, comparison);
        return !cancels;
    }
    void NotesLanded(const LongList& ids) override { editing_->Landed(ids); }

    bool cancels = false;

private:
    ExchangeBook& book_;
    std::function<void(ImportEditing&, ImportComparison&)> edit_;
    Settings settings_;
    FixedClock clock_;
    EditWorld world_{book_.book,        settings_,    book_.prompts, book_.progress, clock_,
                     book_.world.guids, book_.faults, nullptr,       [] {}};
    std::optional<ImportEditing> editing_;
};

class ImportEditingTest : public testing::Test {
protected:
    ImportEditingTest() {
        FillBook(from_);
        EXPECT_EQ(from_.Export(archive_, from_.Notes()), 2);
    }
    ImportOutcome Import(ExchangeBook& book, const std::function<void(ImportEditing&, ImportComparison&)>& edit) {
        EditingChooser chooser(book, edit);
        return book.Import(archive_, chooser);
    }
    /// Imports into `to_` after an edit of a note, with what follows it. Gives the texts of the drafts that are left.
    Lines DraftsAfter(bool cancels, const std::function<void(ImportEditing&, ImportComparison&)>& then) {
        EditingChooser chooser(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
            Edit(editing, comparison);
            then(editing, comparison);
        });
        chooser.cancels = cancels;
        to_.Import(archive_, chooser);
        Lines texts;
        for (const std::filesystem::path& file : DraftStore(to_.book.paths).ListDrafts()) {
            Draft draft;
            EXPECT_TRUE(ReadsDraft(file, to_.world.context, draft));
            texts.push_back(draft.note.plainText);
        }
        return texts;
    }
    /// Edits the first note, or the one with this text, and takes it back into the list. Gives its row.
    static size_t Edit(
        ImportEditing& editing, const ImportComparison& comparison,
        const std::function<void(EditNoteSession&)>& change = [](EditNoteSession&) {},
        const std::string& text = "First\r\nSecond") {
        const size_t row = RowWith(comparison, text);
        EditNoteSession session = editing.Open(row);
        change(session);
        FixedNoteText edited("{\\rtf1 Edited}");
        EXPECT_EQ(session.SaveNote(edited), SaveOutcome::Saved);
        editing.Take(row, session);
        return row;
    }
    /// The row with this text, as an editor opens it.
    static size_t RowWith(const ImportComparison& comparison, const std::string& text) {
        size_t row = 0;
        while (comparison.Rows()[row].entry.note.plainText != text)
            ++row;
        return row;
    }

    TempFolder folder_;
    std::filesystem::path archive_ = folder_ / "a.lbe";
    ExchangeBook from_, to_;
};

TEST_F(ImportEditingTest, AnEditedNoteLandsAsItWasEdited) {
    PutBytes(folder_ / "new.pdf", "a new file");
    const ImportOutcome outcome = Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        const size_t row = Edit(editing, comparison, [&](EditNoteSession& session) {
            EXPECT_EQ(session.note.sources.Count(), 2u);
            ASSERT_NE(session.Book().sources.FindSourceByID(session.note.sources[0]), nullptr) << "known to the editor";
            EXPECT_EQ(to_.book.sources.Count(), 0u) << "the NoteBook sees nothing of it";
            EXPECT_EQ(BytesOf(session.Book().paths.Attachments() / "0000001.png"), "a picture");
            session.note.sources = {session.note.sources[1]};
            session.note.keyWords = "  changed ";
            ASSERT_TRUE(session.attachments.AddFile((folder_ / "new.pdf").string()));
            session.newCategories = {{70, -1, "Harbours"}};
            session.note.categories[2] = CProCategoryTree(70, "Harbours");
        });
        const EditNoteSession again = editing.Open(row);
        EXPECT_EQ(again.attachments.Items().back().record.title, "new.pdf") << "opened once more";
        EXPECT_NE(again.Book().categories.FindByID(70), nullptr) << "the next editor knows the new category";
    });
    EXPECT_EQ(outcome.result, 2);
    EXPECT_TRUE(to_.faults.faults.empty());
    const std::vector<CNote> notes = to_.Notes();
    const auto edited =
        std::find_if(notes.begin(), notes.end(), [](const CNote& note) { return note.plainText == "Edited"; });
    ASSERT_NE(edited, notes.end());
    EXPECT_EQ(edited->keyWords, "changed");
    ASSERT_EQ(edited->sources.Count(), 1u);
    const CSource* const source = to_.book.sources.FindSourceByID(edited->sources[0]);
    EXPECT_EQ(source->SourceGUID, FullSource(1013).SourceGUID);
    EXPECT_FALSE(source->AuthorIDs.IsEmpty()) << "its authors came with it";
    EXPECT_EQ(to_.book.categories.FindByID(edited->categories[2].id)->name, "Harbours");
    ASSERT_EQ(edited->attachments.back().title, "new.pdf");
    EXPECT_EQ(edited->attachments.back().sourceFile, "");
    EXPECT_EQ(BytesOf(to_.Attachment(edited->attachments.back().storedFile)), "a new file");
    EXPECT_EQ(edited->dateCreated, FullNote(7).dateCreated);
    EXPECT_EQ(edited->guid, FullNote(7).guid);
}

TEST_F(ImportEditingTest, AnEditedNoteThatIsKnownKeepsItsIdAndReadsNewer) {
    const ImportOutcome outcome = Import(from_, [&](ImportEditing& editing, ImportComparison& comparison) {
        const auto saveNothing = [](EditNoteSession& session) {
            FixedNoteText none("{\\rtf1 }");
            EXPECT_EQ(session.SaveNote(none), SaveOutcome::NoText);
        };
        const size_t row = Edit(editing, comparison, saveNothing, "Second note");
        EXPECT_EQ(comparison.Rows()[row].status, ImportStatus::Newer);
        comparison.TickAll(false);
        comparison.Row(row).ticked = true;
    });
    EXPECT_EQ(outcome.ids, LongList{8});
    EXPECT_EQ(from_.prompts.seen, Lines{"No Text In Note: Note must contain some text."});
    for (const CNote& note : from_.Notes())
        EXPECT_EQ(note.plainText, note.id == 8 ? "Edited" : "First\r\nSecond");
}

TEST_F(ImportEditingTest, WhatIsWrittenOnTheWayIsKeptAsADraftOfTheOpenNoteBook) {
    const DraftStore store(to_.book.paths);
    const auto draft = [&] {
        Draft read;
        const std::vector<std::filesystem::path> files = store.ListDrafts();
        EXPECT_EQ(files.size(), 1u);
        EXPECT_TRUE(!files.empty() && ReadsDraft(files.front(), to_.world.context, read));
        return read;
    };
    PutBytes(folder_ / "new.pdf", "a new file");
    Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        const size_t row = RowWith(comparison, "First\r\nSecond");
        EditNoteSession session = editing.Open(row);
        CSource known = *session.Book().sources.FindSourceByID(session.note.sources[1]);
        known.SourceID = 4711;
        to_.book.sources.AddTail(known);
        ASSERT_TRUE(session.attachments.AddFile((folder_ / "new.pdf").string()));
        FixedNoteText text("{\\rtf1 Edited}");
        ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved);
        session.note.sources.AddTail(77777);
        CNote typed = session.note;
        session.makeDraft(typed);
        editing.Take(row, session);
        const Draft saved = draft();
        EXPECT_EQ(typed.guid, saved.note.guid) << "one file for both";
        EXPECT_EQ(typed.id, -1);
        EXPECT_EQ(typed.sources.Values(), std::vector<int32_t>{4711});
        EXPECT_NE(saved.note.guid, session.note.guid) << "a note of its own, whatever becomes of the import";
        EXPECT_EQ(saved.note.id, -1);
        EXPECT_EQ(saved.note.plainText, "Edited");
        EXPECT_EQ(saved.note.sources.Values(), std::vector<int32_t>{4711}) << "the one that the NoteBook has";
        for (const CAttachment& attachment : saved.note.attachments)
            EXPECT_TRUE(attachment.type == kWebLink || attachment.title == "new.pdf") << attachment.title;

        Draft later = saved;
        later.note.plainText = "Given up";
        ASSERT_TRUE(store.WriteDraft(later).Ok());
        editing.Leave(row);
        EXPECT_EQ(draft().note.plainText, "Edited");
        const size_t other = RowWith(comparison, "Second note");
        editing.Open(other);
        editing.Leave(other);
        EXPECT_EQ(draft().note.plainText, "Edited");
    });
    EXPECT_TRUE(store.ListDrafts().empty());
}

TEST_F(ImportEditingTest, DraftsGoOnceTheirNotesHaveLandedOrTheUserDropsThem) {
    const Lines kept = {"Edited"}, none;
    const auto nothing = [](ImportEditing&, ImportComparison&) {};
    const auto drop = [](ImportEditing& editing, ImportComparison&) { editing.DropDrafts(); };
    const auto untick = [](ImportEditing&, ImportComparison& comparison) {
        comparison.Row(RowWith(comparison, "Edited")).ticked = false;
    };
    const auto forget = [&] { std::filesystem::remove_all(DraftStore(to_.book.paths).Folder()); };
    const std::filesystem::path sources = to_.book.paths.Sources();
    Block(sources);
    EXPECT_EQ(DraftsAfter(false, nothing), kept) << "nothing could be stored";
    std::filesystem::remove_all(sources);
    to_.Load();
    EXPECT_EQ(to_.book.index.Count(), 0u);
    EXPECT_EQ(DraftsAfter(true, drop), kept) << "that of the earlier import is no matter of this one";
    forget();
    EXPECT_EQ(DraftsAfter(true, drop), none);
    EXPECT_EQ(DraftsAfter(true, nothing), kept) << "the window has gone without an answer";
    forget();
    EXPECT_EQ(DraftsAfter(false, untick), kept) << "another note has landed, not this one";
    forget();
    EXPECT_EQ(DraftsAfter(false, nothing), none);
}

/// A picture that has left a note's text lies in the folder of the import, which goes.
TEST_F(ImportEditingTest, AKeptDraftHoldsThePicturesThatHaveLeftItsText) {
    EditingChooser chooser(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        std::filesystem::path picture;
        const size_t row = Edit(editing, comparison, [&](EditNoteSession& session) {
            const DraftStore inImport(session.Book().paths);
            ASSERT_TRUE(inImport.KeepFile(session.note.guid, "Picture 1.png", "moved", picture).Ok());
            ASSERT_TRUE(session.attachments.AddFile(picture.string()));
        });
        EXPECT_EQ(editing.Open(row).attachments.Items().back().record.sourceFile, picture.string())
            << "the import takes it there";
    });
    chooser.cancels = true;
    to_.Import(archive_, chooser);
    const std::vector<std::filesystem::path> files = DraftStore(to_.book.paths).ListDrafts();
    ASSERT_EQ(files.size(), 1u);
    Draft draft;
    ASSERT_TRUE(ReadsDraft(files.front(), to_.world.context, draft));
    ASSERT_EQ(draft.note.attachments.back().title, "Picture 1.png");
    EXPECT_EQ(BytesOf(draft.note.attachments.back().sourceFile), "moved");
}

TEST_F(ImportEditingTest, ASourceMadeMeanwhileIsNotTakenForOneOfTheArchive) {
    Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        const size_t row = Edit(editing, comparison, [&](EditNoteSession& session) {
            const int32_t brought = session.note.sources[0];
            CSource made = FullSource(brought);
            made.SourceGUID = "{MADE}";
            to_.book.sources.AddTail(made);
            const int32_t id = session.bringSource(brought);
            EXPECT_NE(id, brought) << "the number means another source here";
            EXPECT_EQ(session.bringSource(brought), id);
            EXPECT_EQ(session.bringSource(77777), -1);
            session.note.sources = {id};
        });
        EXPECT_EQ(comparison.Rows()[row].entry.sources.front().SourceGUID, "{MADE}");
    });
}

TEST_F(ImportEditingTest, APathOfAnotherMachineIsNoFileToAttach) {
    CNote hostile = DayNote(9);
    hostile.attachments.push_back({0, 1.0, "Stolen", "", "/etc/passwd", 2, false});
    ASSERT_EQ(from_.Export(archive_, {hostile}), 1);
    Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        const auto look = [](EditNoteSession& session) {
            EXPECT_EQ(session.attachments.Items().front().record.sourceFile, "");
        };
        EXPECT_TRUE(comparison.Rows()[Edit(editing, comparison, look, "")].addedFiles.empty());
    });
    EXPECT_TRUE(to_.AttachmentNames().empty());
}

TEST_F(ImportEditingTest, FilesThatCantBeReadAreToldAndOneOfThisMachineKeepsItsPath) {
    std::string bytes = BytesOf(archive_);
    bytes.replace(bytes.find("a picture"), 9, "a pikture");
    PutBytes(archive_, bytes);
    PutBytes(folder_ / "new.pdf", "a new file");
    Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        Edit(editing, comparison, [&](EditNoteSession& session) {
            EXPECT_EQ(to_.faults.faults.size(), 1u);
            ASSERT_TRUE(session.attachments.AddFile((folder_ / "new.pdf").string()));
        });
        for (bytesLeft = 0; bytesLeft == 0; bytesLeft = -1)
            editing.Open(RowWith(comparison, "Second note"));
        EXPECT_EQ(to_.faults.faults.back().reason, "there is no room for it on the disk");
        std::filesystem::remove(folder_ / "new.pdf");
    });
    EXPECT_EQ(to_.faults.faults.size(), 4u) << "unpacked twice, for the editor and for the import";
    for (const CNote& note : to_.Notes()) {
        if (note.plainText == "Edited") {
            EXPECT_EQ(note.attachments.back().sourceFile, (folder_ / "new.pdf").string());
        }
    }
}

TEST_F(ImportEditingTest, TickedNotesGetThePathsThatAreSet) {
    to_.prompts.texts = {"Coast"};
    Import(to_, [&](ImportEditing& editing, ImportComparison& comparison) {
        comparison.Row(RowWith(comparison, "Second note")).ticked = false;
        CategoryAssignment paths = editing.MakeAssignment();
        ASSERT_TRUE(paths.CreateCategory(2, 0));
        editing.Assign(paths);
        comparison.TickAll(true);
    });
    for (const CNote& note : to_.Notes()) {
        const bool wasTicked = note.plainText != "Second note";
        EXPECT_EQ(note.categories[1].name, wasTicked ? "Coast" : DayNote(8).categories[1].name);
        EXPECT_EQ(to_.book.categories.FindByID(note.categories[0].id) != nullptr, !note.categories[0].name.empty());
    }
}

}  // namespace
}  // namespace lore
