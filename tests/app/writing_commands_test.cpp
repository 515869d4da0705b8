#include "app/writing_commands.h"

#include "app/app_world.h"
#include "notes/note_file.h"
#include "support/each.h"
#include "support/matchers.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

/// The main NoteBook with three notes, all of them in the list.
class WritingCommandsTest : public AppWorld {
protected:
    WritingCommandsTest() {
        for (const int32_t id : {1, 2, 3}) {
            CNote note = DayNote(id, id);
            note.plainText = "Note " + std::to_string(id);
            note.rtfText = "{\\rtf1\\ansi " + note.plainText + "}";
            note.keyWords = "key " + std::to_string(id);
            folder.Put("DAY010" + std::to_string(id) + "2020.dat", {note});
        }
        Start(app);
        app.Gather(LongList{1, 2, 3});
    }
    std::vector<int32_t> Listed() const { return app.List().GetNoteIDs().Values(); }
    void PutDraft(int32_t id, const DateTime& base) {
        Draft draft{DayNote(id, 1), base, {}};
        draft.note.plainText = "Unsaved words that go on and on, well beyond what a question has room for\r\nrest";
        EXPECT_TRUE(commands.Drafts().WriteDraft(draft).Ok());
    }
    int32_t Write(EditNoteSession session, const std::string& words) {
        FixedNoteText text("{\\rtf1\\ansi " + words + "}");
        EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
        commands.NoteSaved(session.note);
        return session.note.id;
    }

    CLorebinderApp app{folder.folder.Path(), Ports()};
    WritingCommands commands{app};
};

TEST_F(WritingCommandsTest, TheLastListLoadsBesideTheWindowAtTheStart) {
    app.SaveOptions();
    OtherThread thread;
    for (const bool isStopped : {false, true}) {
        thread.isStopped = isStopped;
        CLorebinderApp again{folder.folder.Path(), {prompts, progress, clock, guids, store, faults, &thread}};
        Start(again);
        EXPECT_EQ(again.List().Count(), isStopped ? 0u : 3u);
        EXPECT_EQ(again.NoteBook().TotalNoteCount(), 3u) << "a stopped list leaves the NoteBook whole";
    }
    EXPECT_THAT(thread.texts, ElementsAre("Loading Notes...", "Loading Notes..."));
}

TEST_F(WritingCommandsTest, ANewNoteIsFilledFromTheOneSavedLastWhileTheListHoldsIt) {
    EXPECT_EQ(commands.NewNote().note.keyWords, "key 3") << "none was saved yet: the last of the list";
    Write(*commands.EditNote(1), "changed");
    EXPECT_EQ(commands.NewNote().note.keyWords, "key 1");
    app.TakeOut(LongList{1});
    EXPECT_EQ(commands.NewNote().note.keyWords, "key 3");
    app.Gather(LongList{1});
    EXPECT_EQ(commands.NewNote().note.keyWords, "key 1") << "it stands at the end now";
    app.ClearList();
    EXPECT_EQ(commands.NewNote().note.keyWords, "");
    EXPECT_FALSE(commands.EditNote(99).has_value());
}

TEST_F(WritingCommandsTest, AChangedNoteKeepsItsPlaceAndANewOneEntersByTheActiveOrder) {
    const int32_t lastID = app.GetSettings().Int(Option::MaxNoteID);
    Write(*commands.EditNote(2), "changed");
    EXPECT_THAT(Listed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(app.List().Find(2)->plainText, "changed");
    EXPECT_EQ(app.GetSettings().Int(Option::MaxNoteID), lastID) << "no id was given out";
    app.SetSortOrder(705);
    const int32_t id = Write(commands.NewNote(), "new");
    EXPECT_THAT(Listed(), ElementsAre(id, 1, 2, 3));
    EXPECT_TRUE(app.List().Find(id)->newlyAdded);
}

TEST_F(WritingCommandsTest, DeletingTheListAsksTwiceAndComesBackWithUndo) {
    EXPECT_FALSE(commands.DeleteCurrentNotes());
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_FALSE(commands.DeleteCurrentNotes());
    app.TakeOut(LongList{2, 3});
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
    EXPECT_TRUE(commands.DeleteCurrentNotes());
    EXPECT_THAT(
        prompts.seen,
        ElementsAre("Delete Current Notes?? Do you wish to permanently delete all 3 current notes?",
                    "Delete Current Notes?? Do you wish to permanently delete all 3 current notes?",
                    "Delete Notes?? Are you sure you wish to delete these notes?\nThis will permanently remove them "
                    "from your Lorebinder database!",
                    "Delete Current Notes?? Do you wish to permanently delete the current note?",
                    "Delete Notes?? Are you sure you wish to delete the note?\nThis will permanently remove it from "
                    "your Lorebinder database!"));
    EXPECT_EQ(progress.messages.back(), "Deleting current notes....");
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(app.NotesPane(), "Notes:    2");
    commands.Undo();
    EXPECT_THAT(Listed(), ElementsAre(1));
    EXPECT_EQ(app.NotesPane(), "Notes:    3");
    EXPECT_EQ(commands.WhatToUndo(), WritingCommands::NextUndo::None);
    EXPECT_FALSE(commands.DeleteNote(99));
}

TEST_F(WritingCommandsTest, WhatUndoCannotWriteComesBackWhenItIsTriedAgain) {
    CNote withFile = commands.EditNote(3)->note;
    withFile.attachments = {{0, 1.0, "A", "0000001.txt", "", 2, true}};
    folder.Put("DAY01032020.dat", {withFile});
    app.ReloadNotes(LongList{1, 2, 3});
    const std::filesystem::path attached = folder.paths.Attachments() / "0000001.txt";
    PutBytes(attached, "attached");
    const std::vector<CNote> before = {commands.EditNote(2)->note, commands.EditNote(3)->note};
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
    ASSERT_TRUE(commands.DeleteNotes(LongList{2, 3}));
    const std::filesystem::path note = folder.paths.NoteFile("DAY01022020.dat");
    std::filesystem::remove(note);
    for (const auto& blocked : {note, attached})
        std::filesystem::create_directories(blocked / "in the way");

    commands.Undo();
    EXPECT_THAT(Listed(), ElementsAre(1, 3));
    EXPECT_EQ(faults.faults.size(), 2u);
    EXPECT_EQ(commands.WhatToUndo(), WritingCommands::NextUndo::Deletion) << "one note and a file are missing";

    for (const auto& blocked : {note, attached})
        std::filesystem::remove_all(blocked);
    commands.Undo();
    EXPECT_EQ(commands.WhatToUndo(), WritingCommands::NextUndo::None);
    EXPECT_THAT(Listed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(BytesOf(attached), "attached");
    for (const CNote& deleted : before)
        EXPECT_EQ(NoteFileBytes({&commands.EditNote(deleted.id)->note, 1}), NoteFileBytes({&deleted, 1}));
    EXPECT_EQ(faults.faults.size(), 2u);
}

TEST_F(WritingCommandsTest, UndoingADeletionLeavesWhatTheUserHasOrderedSince) {
    const auto remove = [this](const LongList& ids) {
        prompts.answers.assign(ids.Count() == 1 ? 1 : 2, PromptAnswer::Yes);
        ASSERT_TRUE(commands.DeleteNotes(ids));
    };
    struct Case {
        std::vector<LongList> deletions;
        std::function<void()> since;
        std::vector<int32_t> toTop, toBottom;
    };
    const Case cases[] = {
        {{{2}}, [this] { app.MoveNote(3, 1); }, {3, 1, 2}, {3, 1, 2}},
        {{{1, 2}}, [] {}, {1, 2, 3}, {1, 2, 3}},
        {{{2, 3}}, [] {}, {1, 2, 3}, {1, 2, 3}},
        {{{2}, {1}}, [] {}, {1, 2, 3}, {1, 2, 3}},
        {{{3}}, [this] { app.TakeOut(LongList{2}); }, {3, 1}, {1, 3}},
        {{{2, 3}}, [this] { app.ClearList(); }, {2, 3}, {2, 3}},
    };
    for (const int32_t order : {705, 805, 801}) {
        for (const Case& c : cases) {
            std::vector<int32_t> expected = order == 705 ? c.toTop : c.toBottom;
            if (order == 801)
                std::ranges::sort(expected, std::greater());
            app.SetSortOrder(805);
            app.ClearList();
            app.Gather(LongList{1, 2, 3});
            app.SetSortOrder(order);
            for (const LongList& ids : c.deletions)
                remove(ids);
            c.since();
            for (size_t i = 0; i < c.deletions.size(); ++i)
                commands.Undo();
            EXPECT_EQ(Listed(), expected) << order << ", case " << &c - cases;
        }
    }
}

TEST_F(WritingCommandsTest, UndoingAnImportOfManyNotesAsksWithTheirNumber) {
    // The third note has been deleted by hand, and isn't counted.
    for (const auto& [landed, replaced, asks] :
         {std::tuple(LongList{1, 2}, LongList{}, true), {{1, 2}, {1, 2}, false}, {{7}, {}, false}}) {
        ImportChanges changes;
        for (const int32_t id : landed)
            changes.landed.emplace(id, 0);
        for (const int32_t id : replaced)
            changes.replaced.push_back(DayNote(id));
        commands.ImportDone(std::move(changes), LongList{1, 2, 3});
        prompts.seen.clear();
        commands.Undo();
        EXPECT_EQ(commands.WhatToUndo() == WritingCommands::NextUndo::Import, asks) << "refused, it waits on";
        EXPECT_EQ(!prompts.seen.empty() && prompts.seen[0].find("*2*  of the  *3*") != std::string::npos, asks);
        prompts.answers = {PromptAnswer::Yes};
        commands.Undo();
        prompts.answers.clear();
        EXPECT_EQ(commands.WhatToUndo(), WritingCommands::NextUndo::None);
        EXPECT_EQ(app.NoteBook().TotalNoteCount(), 3u) << "they were changed since";
    }
}

TEST_F(WritingCommandsTest, TheRichestFormOfAClipboardIsTaken) {
    const std::string rtf = "{\\rtf1 rich}", html = "<p>a <i>page</i></p>", plain = "plain";
    EXPECT_EQ(commands.CapturedText({rtf, html, plain}), rtf);
    EXPECT_THAT(commands.CapturedText({"no rich text", html, plain}), HasSubstr("\\i"));
    EXPECT_THAT(commands.CapturedText({"", " ", plain}), HasSubstr("plain"));
    EXPECT_EQ(commands.CapturedText({"{\\rtf1 }", "", " \n"}), "");
    EXPECT_EQ(commands.TextLook().halfPoints, 27);
}

TEST_F(WritingCommandsTest, DraftsAreOfferedWithWhatHasBecomeOfTheirNotes) {
    PutDraft(1, DayNote(1, 1).dateEdited);
    PutDraft(2, DateTime(2001, 1, 1));
    PutDraft(77, DayNote(1, 1).dateEdited);
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Cancel, PromptAnswer::No};
    const std::vector<UnsavedNote> wanted = commands.AskForUnsavedNotes();
    ASSERT_EQ(wanted.size(), 1u);
    EXPECT_EQ(wanted[0].stored->id, 1);
    EXPECT_THAT(prompts.seen,
                ElementsAre(HasSubstr("\"Unsaved words that go on and on, well beyond what a question..."),
                            HasSubstr("saved in another form since"), HasSubstr("isn't among the notes any more")));
    EXPECT_EQ(commands.Drafts().ListDrafts().size(), 2u) << "the discarded one has gone, the others stay until a save";
    FixedNoteText text("{\\rtf1 saved}");
    EditNoteSession session = commands.ContinueNote(wanted[0]);
    EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    EXPECT_EQ(session.note.id, 1);
}

TEST_F(WritingCommandsTest, AnEditorIsNotOpenedOverATextThatWaits) {
    std::optional<UnsavedNote> wanted;
    EXPECT_TRUE(commands.OfferUnsavedNote(1, wanted)) << "there is none";
    PutDraft(1, DayNote(1, 1).dateEdited);
    PutDraft(2, DayNote(2, 1).dateEdited);
    EXPECT_TRUE(commands.OfferUnsavedNote(3, wanted)) << "those of others don't matter";
    EXPECT_THAT(prompts.seen, IsEmpty());
    prompts.answers = {PromptAnswer::Cancel};
    EXPECT_FALSE(commands.OfferUnsavedNote(1, wanted));
    EXPECT_EQ(commands.Drafts().ListDrafts().size(), 2u) << "it waits on";
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_TRUE(commands.OfferUnsavedNote(1, wanted));
    ASSERT_TRUE(wanted);
    EXPECT_EQ(wanted->stored->id, 1);
    wanted.reset();
    prompts.answers = {PromptAnswer::No};
    EXPECT_TRUE(commands.OfferUnsavedNote(2, wanted));
    EXPECT_FALSE(wanted);
    EXPECT_EQ(commands.Drafts().ListDrafts().size(), 1u) << "what was discarded has gone";
}

TEST_F(WritingCommandsTest, ADraftThatCantBeReadStaysAndOnlyADamagedOneIsSetAside) {
    PutDraft(1, DayNote(1, 1).dateEdited);
    const std::filesystem::path file = commands.Drafts().ListDrafts().at(0), aside = file.string() + ".kept";
    Unreadable unread(file);
    EXPECT_TRUE(commands.AskForUnsavedNotes().empty());
    EXPECT_THAT(Each(faults.faults, &Fault::what), ElementsAre("An unsaved text could not be read"));
    EXPECT_THAT(commands.Drafts().ListDrafts(), ElementsAre(file));
    unread.End();
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(commands.AskForUnsavedNotes().size(), 1u) << "it is offered once it can be read";

    // No name is left for the second one.
    const std::filesystem::path longest = file.parent_path() / (std::string(249, 'x') + ".draft");
    PutBytes(file, "LoreDraft 1\n");
    PutBytes(longest, "LoreDraft 1\n");
    EXPECT_TRUE(commands.AskForUnsavedNotes().empty());
    EXPECT_THAT(Each(faults.faults, &Fault::what),
                ElementsAre(testing::_, HasSubstr("was set aside"), HasSubstr("could not be set aside")));
    EXPECT_THAT(commands.Drafts().ListDrafts(), ElementsAre(longest));
    EXPECT_EQ(BytesOf(aside), "LoreDraft 1\n");
    EXPECT_EQ(prompts.seen.size(), 1u);
}

TEST_F(WritingCommandsTest, ADraftWaitsUntilItsNoteCanBeRead) {
    const std::filesystem::path noteFile = folder.paths.NoteFile("DAY01022020.dat");
    for (const bool isLoadedSo : {true, false}) {
        SCOPED_TRACE(isLoadedSo ? "unread by the load" : "unread since");
        prompts.seen.clear();
        PutDraft(2, DayNote(2, 2).dateEdited);
        Unreadable unread(noteFile);
        if (isLoadedSo)
            app.ReloadNotes(LongList{1, 2, 3});
        for (const PromptAnswer answer : {PromptAnswer::Yes, PromptAnswer::No}) {
            prompts.answers = {answer};
            EXPECT_TRUE(commands.AskForUnsavedNotes().empty());
            EXPECT_THAT(prompts.seen, IsEmpty());
            ASSERT_FALSE(faults.faults.empty());
            EXPECT_EQ(faults.faults.back().what, "An unsaved text waits until its note can be read");
            EXPECT_EQ(commands.Drafts().ListDrafts().size(), 1u);
        }
        unread.End();
        app.ReloadNotes(LongList{1, 2, 3});
        prompts.answers = {PromptAnswer::Yes};
        const std::vector<UnsavedNote> wanted = commands.AskForUnsavedNotes();
        ASSERT_EQ(wanted.size(), 1u);
        ASSERT_TRUE(wanted[0].stored.has_value());
        EXPECT_EQ(wanted[0].stored->guid, wanted[0].draft.note.guid);
        EXPECT_TRUE(commands.Drafts().RemoveDraft(wanted[0].draft.note.guid).Ok());
    }
}

}  // namespace
}  // namespace lore
