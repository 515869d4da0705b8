#include "app/unsaved_notes.h"

#include "app/three_notes.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

class UnsavedNotesTest : public ThreeNotes {
protected:
    void PutDraft(int32_t id, const DateTime& base) {
        Draft draft{DayNote(id, 1), base, {}};
        draft.note.plainText = "Unsaved words that go on and on, well beyond what a question has room for\r\nrest";
        EXPECT_TRUE(unsaved.Drafts().WriteDraft(draft).Ok());
    }
    const UnsavedNotes& unsaved = commands.Unsaved();
};

TEST_F(UnsavedNotesTest, DraftsAreOfferedWithWhatHasBecomeOfTheirNotes) {
    PutDraft(1, DayNote(1, 1).dateEdited);
    PutDraft(2, DateTime(2001, 1, 1));
    PutDraft(77, DayNote(1, 1).dateEdited);
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::Cancel, PromptAnswer::No};
    const std::vector<UnsavedNote> wanted = unsaved.AskForAll();
    ASSERT_EQ(wanted.size(), 1u);
    EXPECT_EQ(wanted[0].stored->id, 1);
    EXPECT_THAT(prompts.seen,
                ElementsAre(HasSubstr("\"Unsaved words that go on and on, well beyond what a question..."),
                            HasSubstr("saved in another form since"), HasSubstr("isn't among the notes any more")));
    EXPECT_EQ(unsaved.Drafts().ListDrafts().size(), 2u) << "the discarded one has gone, the others stay until a save";
    FixedNoteText text("{\\rtf1 saved}");
    EditNoteSession session = unsaved.Continue(wanted[0]);
    EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    EXPECT_EQ(session.note.id, 1);
}

TEST_F(UnsavedNotesTest, AnEditorIsNotOpenedOverATextThatWaits) {
    using Answer = UnsavedOffer::Answer;
    EXPECT_EQ(unsaved.Offer(1).answer, Answer::None);
    PutDraft(1, DayNote(1, 1).dateEdited);
    PutDraft(2, DayNote(2, 1).dateEdited);
    EXPECT_EQ(unsaved.Offer(3).answer, Answer::None) << "those of others don't matter";
    EXPECT_THAT(prompts.seen, IsEmpty());
    prompts.answers = {PromptAnswer::Cancel};
    EXPECT_EQ(unsaved.Offer(1).answer, Answer::Waits);
    EXPECT_EQ(unsaved.Drafts().ListDrafts().size(), 2u) << "it waits on";
    prompts.answers = {PromptAnswer::Yes};
    const UnsavedOffer wanted = unsaved.Offer(1);
    ASSERT_EQ(wanted.answer, Answer::GoOn);
    EXPECT_EQ(wanted.note.stored->id, 1);
    prompts.answers = {PromptAnswer::No};
    EXPECT_EQ(unsaved.Offer(2).answer, Answer::None);
    EXPECT_EQ(unsaved.Drafts().ListDrafts().size(), 1u) << "what was discarded has gone";
}

TEST_F(UnsavedNotesTest, ADraftThatCantBeReadStaysAndOnlyADamagedOneIsSetAside) {
    PutDraft(1, DayNote(1, 1).dateEdited);
    const std::filesystem::path file = unsaved.Drafts().ListDrafts().at(0), aside = file.string() + ".kept";
    Unreadable unread(file);
    EXPECT_TRUE(unsaved.AskForAll().empty());
    EXPECT_THAT(Each(faults.faults, &Fault::what), ElementsAre("An unsaved text could not be read"));
    EXPECT_EQ(unsaved.Offer(1).answer, UnsavedOffer::Answer::Waits);
    EXPECT_THAT(unsaved.Drafts().ListDrafts(), ElementsAre(file));
    unread.End();
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(unsaved.AskForAll().size(), 1u) << "it is offered once it can be read";

    // No name is left for the second one.
    const std::filesystem::path longest = file.parent_path() / (std::string(249, 'x') + ".draft");
    PutBytes(file, "LoreDraft 1\n");
    PutBytes(longest, "LoreDraft 1\n");
    EXPECT_TRUE(unsaved.AskForAll().empty());
    EXPECT_THAT(Each(faults.faults, &Fault::what),
                ElementsAre(testing::_, testing::_, HasSubstr("was set aside"), HasSubstr("could not be set aside")));
    EXPECT_THAT(unsaved.Drafts().ListDrafts(), ElementsAre(longest));
    EXPECT_EQ(BytesOf(aside), "LoreDraft 1\n");
    EXPECT_EQ(prompts.seen.size(), 1u);
}

TEST_F(UnsavedNotesTest, ADraftWaitsUntilItsNoteCanBeRead) {
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
            EXPECT_TRUE(unsaved.AskForAll().empty());
            EXPECT_THAT(prompts.seen, IsEmpty());
            ASSERT_FALSE(faults.faults.empty());
            EXPECT_EQ(faults.faults.back().what, "An unsaved text waits until its note can be read");
            EXPECT_EQ(unsaved.Drafts().ListDrafts().size(), 1u);
        }
        unread.End();
        app.ReloadNotes(LongList{1, 2, 3});
        prompts.answers = {PromptAnswer::Yes};
        const std::vector<UnsavedNote> wanted = unsaved.AskForAll();
        ASSERT_EQ(wanted.size(), 1u);
        ASSERT_TRUE(wanted[0].stored.has_value());
        EXPECT_EQ(wanted[0].stored->guid, wanted[0].draft.note.guid);
        EXPECT_TRUE(unsaved.Drafts().RemoveDraft(wanted[0].draft.note.guid).Ok());
    }
}

}  // namespace
}  // namespace lore
