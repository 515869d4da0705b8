#include "app/writing_commands.h"

#include "app/status_panes.h"
#include "app/three_notes.h"
#include "support/matchers.h"
#include "support/scripted_background.h"

namespace lore {
namespace {

class WritingCommandsTest : public ThreeNotes {
protected:
    int32_t Write(EditNoteSession session, const std::string& words) {
        FixedNoteText text("{\\rtf1\\ansi " + words + "}");
        EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
        commands.NoteSaved(session.note);
        return session.note.id;
    }
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
    EXPECT_EQ(PaneText(app, StatusPane::Notes), "Notes:    2");
    commands.History().Undo();
    EXPECT_THAT(Listed(), ElementsAre(1));
    EXPECT_EQ(PaneText(app, StatusPane::Notes), "Notes:    3");
    EXPECT_EQ(commands.History().Next(), NextUndo::None);
    EXPECT_FALSE(commands.DeleteNote(99));
}

TEST_F(WritingCommandsTest, TheRichestFormOfAClipboardIsTaken) {
    const std::string rtf = "{\\rtf1 rich}", html = "<p>a <i>page</i></p>", plain = "plain";
    EXPECT_EQ(commands.CapturedText({rtf, html, plain}), rtf);
    EXPECT_THAT(commands.CapturedText({"no rich text", html, plain}), HasSubstr("\\i"));
    EXPECT_THAT(commands.CapturedText({"", " ", plain}), HasSubstr("plain"));
    EXPECT_EQ(commands.CapturedText({"{\\rtf1 }", "", " \n"}), "");
    EXPECT_EQ(commands.TextLook().halfPoints, 27);
}

}  // namespace
}  // namespace lore
