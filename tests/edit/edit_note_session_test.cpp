#include "edit/edit_note_session.h"

#include "edit/edit_fixture.h"

namespace lore {
namespace {

/// A text control that tells in which order it was asked.
class WatchedText : public NoteTextControl {
public:
    WatchedText(std::string plain, std::string rtf) : plain_(std::move(plain)), rtf_(std::move(rtf)) {}
    std::string PlainText() override { return Note("plain", plain_); }
    std::string RtfText() override { return Note("rtf", rtf_); }
    void StopSpellCheck() override { steps.emplace_back("stop"); }
    std::vector<std::string> steps;

private:
    std::string Note(const char* step, const std::string& text) {
        steps.emplace_back(step);
        return text;
    }
    std::string plain_, rtf_;
};

class EditNoteSessionTest : public EditFixture {
protected:
    SaveOutcome Save(EditNoteSession& session, const std::string& body) {
        FixedNoteText text(Rtf(body));
        return session.SaveNote(text);
    }
    /// What a save of this change of a stored, synced note stamps.
    std::string Stamps(const std::function<void(EditNoteSession&, std::string& rtf)>& change);
};

TEST_F(EditNoteSessionTest, ANewNoteIsFilledFromAnotherOne) {
    CNote fill = FullNote(7);
    const EditNoteSession filled = EditNoteSession::ForNewNote(world, &fill);
    EXPECT_EQ(filled.note.id, -1);
    EXPECT_EQ(filled.note.sources, fill.sources);
    EXPECT_TRUE(filled.note.categories[0].IsSameTree(fill.categories[0]));
    EXPECT_EQ(filled.note.keyWords, fill.keyWords);
    EXPECT_EQ(filled.note.borderColor, fill.borderColor);
    EXPECT_EQ(filled.note.guid, "{GUID 1}");
    EXPECT_TRUE(filled.note.categories[1].IsEmptyPath() && filled.note.categories[2].IsEmptyPath());
    EXPECT_TRUE(filled.note.sourceInfo.empty() && filled.note.attachments.empty() && filled.note.rtfText.empty());

    const EditNoteSession blank = EditNoteSession::ForNewNote(world, nullptr);
    EXPECT_TRUE(blank.note.sources.IsEmpty() && blank.note.keyWords.empty() && blank.note.borderColor == 0);
}

TEST_F(EditNoteSessionTest, TheFillSourceIsTheLastSavedThenTheLastOfTheList) {
    const CNote saved = DayNote(1), last = DayNote(2);
    EXPECT_EQ(FillSource(settings, &saved, &last), &saved);
    EXPECT_EQ(FillSource(settings, nullptr, &last), &last);
    EXPECT_EQ(FillSource(settings, nullptr, nullptr), nullptr);
    settings.Set(Option::EnableNoteAutoFill, 0);
    EXPECT_EQ(FillSource(settings, &saved, &last), nullptr);
}

TEST_F(EditNoteSessionTest, ASavedNewNoteStandsEverywhereAndOnTheDisk) {
    settings.Set(Option::MaxNoteID, 1000);
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    session.note.keyWords = "  lamp, fog \t";
    session.note.sources = {1012};
    session.note.sourceInfo = {{"{Source-1012}", "p. 3"}};
    session.note.categories[1] = PathOf({{3, "Lights"}, {4, "Lenses"}});
    session.note.borderColor = MakeRgb(9, 9, 9);
    ASSERT_EQ(Save(session, "One\\par two"), SaveOutcome::Saved);
    EXPECT_EQ(session.note.id, 1001);
    EXPECT_EQ(settings.Int(Option::MaxNoteID), 1001);
    EXPECT_EQ(optionsSaved, 1);
    EXPECT_THAT(progress.messages, ElementsAre("Saving Information....", "Copying in new attachments....",
                                               "Saving Final Information...."));
    EXPECT_THAT(prompts.seen, IsEmpty());
    for (const OpenNoteBook& picture : {std::cref(book).get(), Reloaded()}) {
        EXPECT_EQ(*picture.index.FindPath(1001), picture.paths.NoteFile("SRC0000001012.dat").string());
        EXPECT_TRUE(picture.sources.FindSourceByID(1012)->NoteIDs.Contains(1001));
        EXPECT_TRUE(picture.categories.FindByID(4)->notes[1].Contains(1001) &&
                    picture.categories.FindByID(3)->notes[1].Contains(1001));
        EXPECT_TRUE(picture.categories.FindByID(kUnassignedID)->notes[0].Contains(1001));
        EXPECT_TRUE(picture.keyWords.FindByName("fog")->notes.Contains(1001));
        EXPECT_TRUE(picture.notesWithoutSource.IsEmpty());
        EXPECT_EQ(picture.colors.Entries().at(0).color, MakeRgb(9, 9, 9));
    }
    const CNote read = NotesIn("SRC0000001012.dat").at(0);
    EXPECT_EQ(read.plainText, "One\r\ntwo");
    EXPECT_EQ(read.keyWords, "lamp, fog");
    EXPECT_EQ(read.dateCreated, clock.now);
    EXPECT_EQ(read.dateEdited, clock.now);
    EXPECT_EQ(RecordOf(read), RecordOf(session.note));
    EXPECT_FALSE(std::filesystem::exists(book.paths.SyncLog())) << "it isn't linked";
}

TEST_F(EditNoteSessionTest, AnEmptyTextStopsTheSaveBeforeAnythingHappens) {
    const CNote stored = Stored(TextNote(1, "Old"));
    const std::string before = folder.Bytes("DAY01012020.dat");
    EditNoteSession session = EditNoteSession::ForNote(world, stored);
    WatchedText picture("", Rtf("{\\pict\\pngblip 00}"));
    EXPECT_EQ(session.SaveNote(picture), SaveOutcome::NoText);
    EXPECT_THAT(picture.steps, ElementsAre("plain")) << "the spelling goes on";
    EXPECT_THAT(prompts.seen, ElementsAre("No Text In Note: Note must contain some text."));
    EXPECT_THAT(progress.messages, IsEmpty());
    EXPECT_EQ(folder.Bytes("DAY01012020.dat"), before);
    WatchedText blanks("  ", Rtf("  "));
    EXPECT_EQ(session.SaveNote(blanks), SaveOutcome::Saved) << "blanks count as text";
    EXPECT_THAT(blanks.steps, ElementsAre("plain", "stop", "rtf"));
}

TEST_F(EditNoteSessionTest, ATextThatNoReaderWouldTakeWholeIsRefused) {
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    WatchedText tooLong("text", std::string(kLargestRtf, 'x'));
    EXPECT_EQ(session.SaveNote(tooLong), SaveOutcome::TooLong);
    ASSERT_EQ(prompts.seen.size(), 1u);
    EXPECT_EQ(session.note.id, -1);
    WatchedText fits("text", std::string(kLargestRtf - 1, 'x'));
    EXPECT_EQ(session.SaveNote(fits), SaveOutcome::Saved);
    EXPECT_EQ(NotesIn("DAY03142026.dat").at(0).rtfText.size(), kLargestRtf - 1);
}

TEST_F(EditNoteSessionTest, BytesThatWouldCutTheRecordStayOut) {
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    session.note.keyWords = std::string("a\0b\x1A, c", 7);
    WatchedText text(std::string("p\0q\x1A", 4), std::string("{\\rtf1 p\0q\x1A}", 12));
    ASSERT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    const CNote read = NotesIn("DAY03142026.dat").at(0);
    EXPECT_EQ(read.plainText, "pq");
    EXPECT_EQ(read.keyWords, "ab, c");
    EXPECT_EQ(read.rtfText, "{\\rtf1 pq}");
}

TEST_F(EditNoteSessionTest, ALostCategoryStaysInTheNoteAndOutOfTheForest) {
    CNote old = TextNote(1, "Text");
    old.categories[0] = PathOf({{900, "Lost"}});
    Stored(old);
    EditNoteSession session = EditNoteSession::ForNote(world, old);
    ASSERT_EQ(Save(session, "Text"), SaveOutcome::Saved);
    EXPECT_TRUE(NotesIn("DAY01012020.dat").at(0).categories[0].IsSameTree(old.categories[0]));
    for (const int32_t id : {3, 4, 5, kUnassignedID})
        EXPECT_FALSE(NotesOf(id).Contains(1)) << id;
}

TEST_F(EditNoteSessionTest, AnAttachmentThatALaterEditMeetsWithoutItsFileIsNotToldOfAgain) {
    const std::filesystem::path file = folder.folder.Path() / "gone.txt";
    CNote old = TextNote(1, "Text", {1011});
    old.attachments.emplace_back().sourceFile = file.string();
    Stored(old);
    for (const bool isBack : {false, true}) {
        if (isBack)
            PutBytes(file, "bytes");
        EditNoteSession session = EditNoteSession::ForNote(world, NotesIn("SRC0000001011.dat").at(0));
        ASSERT_EQ(Save(session, "Text"), SaveOutcome::Saved);
        EXPECT_THAT(faults.faults, IsEmpty());
        const CAttachment stored = NotesIn("SRC0000001011.dat").at(0).attachments.at(0);
        EXPECT_EQ(stored.storedFile, isBack ? "0000001.txt" : "");
        EXPECT_EQ(stored.sourceFile, isBack ? "" : file.string());
    }
}

TEST_F(EditNoteSessionTest, AFileThatCantBeWrittenLeavesTheNoteAsItWasAndTheSaveCanBeRepeated) {
    CNote old = TextNote(1, "Old", {1011});
    old.keyWords = "lamp";
    Stored(old);
    const std::string before = folder.Bytes("SRC0000001011.dat");
    Block(book.paths.NoteFile("SRC0000001012.dat"));
    EditNoteSession session = EditNoteSession::ForNote(world, old);
    session.note.sources = {1012};
    session.note.keyWords = "fog";
    ASSERT_EQ(Save(session, "New"), SaveOutcome::NotWritten);
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_EQ(folder.Bytes("SRC0000001011.dat"), before);
    EXPECT_TRUE(book.keyWords.FindByName("lamp") && !book.keyWords.FindByName("fog"));
    EXPECT_TRUE(book.sources.FindSourceByID(1011)->NoteIDs.Contains(1));
    EXPECT_EQ(*book.index.FindPath(1), book.paths.NoteFile("SRC0000001011.dat").string());

    Unblock(book.paths.NoteFile("SRC0000001012.dat"));
    ASSERT_EQ(Save(session, "New"), SaveOutcome::Saved);
    EXPECT_THAT(IDsIn("SRC0000001011.dat"), IsEmpty());
    EXPECT_EQ(NotesIn("SRC0000001012.dat").at(0).plainText, "New");
    EXPECT_EQ(book.keyWords.FindByName("lamp"), nullptr);
}

TEST_F(EditNoteSessionTest, ANewNoteKeepsItsIdThroughAFailedSave) {
    settings.Set(Option::MaxNoteID, 1000);
    Block(book.paths.NoteFile("DAY03142026.dat"));
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    ASSERT_EQ(Save(session, "Text"), SaveOutcome::NotWritten);
    EXPECT_FALSE(book.index.Contains(1001));
    EXPECT_FALSE(book.notesWithoutSource.Contains(1001));
    Unblock(book.paths.NoteFile("DAY03142026.dat"));
    clock.now = DateTime(2026, 3, 15, 0, 0, 1);
    ASSERT_EQ(Save(session, "Text"), SaveOutcome::Saved);
    EXPECT_EQ(session.note.id, 1001);
    EXPECT_EQ(settings.Int(Option::MaxNoteID), 1001) << "one id for one note";
    EXPECT_TRUE(session.note.dateCreated.IsEarlierOrEqual(session.note.dateEdited));
    EXPECT_THAT(IDsIn(GetNoteFileName(session.note)), ElementsAre(1001));
}

TEST_F(EditNoteSessionTest, CancelAsksWhereTheWarningIsOnAndTheBoxTurnsItOff) {
    const CNote stored = Stored(TextNote(1, "Text"));
    EditNoteSession session = EditNoteSession::ForNote(world, stored);
    prompts.answers = {PromptAnswer::No, PromptAnswer::Yes};
    prompts.ticksBox = true;
    EXPECT_FALSE(session.CancelNote());
    EXPECT_TRUE(settings.Flag(Option::szSaveWarning)) << "only Yes takes the box with it";
    EXPECT_TRUE(session.CancelNote());
    EXPECT_FALSE(settings.Flag(Option::szSaveWarning));
    EXPECT_EQ(optionsSaved, 1);
    EXPECT_TRUE(session.CancelNote());
    EXPECT_EQ(prompts.seen.size(), 2u);
    EXPECT_EQ(prompts.seen[0],
              "Continue?? Are you sure you wish to cancel?\n\nYour changes will be lost and not saved in your "
              "database! [ ] Do not display this warning again.");
}

std::string EditNoteSessionTest::Stamps(const std::function<void(EditNoteSession&, std::string& rtf)>& change) {
    const DateTime before(2020, 1, 1);
    CNote note = FullNote(1);
    note.sources = {1011};
    book.syncLog.ResetLink();
    Link();
    CSyncInfo record = NewSyncRecord(note, before);
    record.Changed = false;
    book.syncLog.ReplaceSyncInfo(record);
    EditNoteSession session = EditNoteSession::ForNote(world, note);
    std::string rtf = note.rtfText;
    change(session, rtf);
    WatchedText text(note.plainText, rtf);
    EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
    const SyncLog read = StoredLog();
    const CSyncInfo* const after = read.FindSyncInfo(note.guid);
    if (!after)
        return "none";
    std::string stamps = after->Changed ? "changed" : "";
    const std::pair<const char*, DateTime> parts[] = {{" state", after->Change1},
                                                      {" text", after->Change2},
                                                      {" sources", after->SourcesChanged},
                                                      {" keyWords", after->KeyWordsChanged},
                                                      {" categories", after->CategoriesChanged}};
    for (const auto& [name, date] : parts)
        stamps += date == clock.now ? name : "";
    return stamps + " " + std::to_string(after->SyncState);
}

TEST_F(EditNoteSessionTest, OnlyThePartsThatDifferAreStamped) {
    using Change = std::function<void(EditNoteSession&, std::string&)>;
    const std::pair<Change, std::string> cases[] = {
        {[](EditNoteSession&, std::string&) {}, "changed 2112"},
        {[](EditNoteSession&, std::string& rtf) { rtf += " "; }, "changed text 2112"},
        {[](EditNoteSession& s, std::string&) { s.note.keyWords = "x"; }, "changed keyWords 2112"},
        {[](EditNoteSession& s, std::string&) {
             s.note.sources = {1011, 1012};
         },
         "changed sources 2112"},
        {[](EditNoteSession& s, std::string&) { s.note.sourceInfo.pop_back(); }, "changed sources 2112"},
        {[](EditNoteSession& s, std::string&) {
             s.note.categories[1] = PathOf({{5, "Places"}});
         },
         "changed categories 2112"},
        {[](EditNoteSession& s, std::string&) { s.note.borderColor = 3; }, "changed 2112"},
        {[](EditNoteSession& s, std::string&) { s.syncTicked = false; }, "changed state -1"},
    };
    for (const auto& [change, expected] : cases)
        EXPECT_EQ(Stamps(change), expected);
}

TEST_F(EditNoteSessionTest, TheSyncLogFollowsTheBox) {
    Link();
    EditNoteSession first = EditNoteSession::ForNewNote(world, nullptr);
    EXPECT_FALSE(first.ShowsSyncBox()) << "the log has no entries yet";
    ASSERT_EQ(Save(first, "First"), SaveOutcome::Saved);
    const CSyncInfo* record = book.syncLog.FindSyncInfo(first.note.guid);
    ASSERT_NE(record, nullptr) << "or the first note of a linked NoteBook would never be logged";
    EXPECT_EQ(record->NoteId, first.note.id);
    EXPECT_EQ(record->NoteFile, "DAY03142026.dat");
    EXPECT_EQ(record->SyncState, kStoredTrue);

    EditNoteSession second = EditNoteSession::ForNewNote(world, nullptr);
    ASSERT_TRUE(second.ShowsSyncBox());
    EXPECT_TRUE(second.syncTicked);
    second.syncTicked = false;
    ASSERT_EQ(Save(second, "Second"), SaveOutcome::Saved);
    EXPECT_EQ(book.syncLog.FindSyncInfo(second.note.guid), nullptr);

    EditNoteSession unticked = EditNoteSession::ForNote(world, first.note);
    unticked.syncTicked = false;
    ASSERT_EQ(Save(unticked, "First again"), SaveOutcome::Saved);
    const std::string rested = BytesOf(book.paths.SyncLog());
    EditNoteSession resting = EditNoteSession::ForNote(world, unticked.note);
    EXPECT_FALSE(resting.syncTicked);
    clock.now = DateTime(2026, 4, 1);
    ASSERT_EQ(Save(resting, "Once more"), SaveOutcome::Saved);
    EXPECT_EQ(BytesOf(book.paths.SyncLog()), rested) << "a record that rests isn't touched";
    resting.syncTicked = true;
    ASSERT_EQ(Save(resting, "Once more"), SaveOutcome::Saved);
    record = book.syncLog.FindSyncInfo(first.note.guid);
    EXPECT_EQ(record->KeyWordsChanged, clock.now) << "ticking stamps all five";
}

TEST_F(EditNoteSessionTest, WhereNotesWaitTheLogOnTheDiskWaitsToo) {
    Link();
    std::vector<CNote> unwritten;
    world.unwritten = &unwritten;
    EditNoteSession session = EditNoteSession::ForNewNote(world, nullptr);
    ASSERT_EQ(Save(session, "Text"), SaveOutcome::Saved);
    EXPECT_THAT(Each(unwritten, &CNote::id), ElementsAre(session.note.id));
    EXPECT_NE(book.syncLog.FindSyncInfo(session.note.guid), nullptr);
    EXPECT_FALSE(std::filesystem::exists(book.paths.SyncLog()));
    EXPECT_THAT(NotesIn("DAY03142026.dat"), IsEmpty());
}

}  // namespace
}  // namespace lore
