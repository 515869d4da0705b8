#include "app/undo_history.h"

#include "app/three_notes.h"
#include "support/matchers.h"

namespace lore {
namespace {

class UndoHistoryTest : public ThreeNotes {};

TEST_F(UndoHistoryTest, WhatUndoCannotWriteComesBackWhenItIsTriedAgain) {
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

    commands.History().Undo();
    EXPECT_THAT(Listed(), ElementsAre(1, 3));
    EXPECT_EQ(faults.faults.size(), 2u);
    EXPECT_EQ(commands.History().Next(), NextUndo::Deletion) << "one note and a file are missing";

    for (const auto& blocked : {note, attached})
        std::filesystem::remove_all(blocked);
    commands.History().Undo();
    EXPECT_EQ(commands.History().Next(), NextUndo::None);
    EXPECT_THAT(Listed(), ElementsAre(1, 2, 3));
    EXPECT_EQ(BytesOf(attached), "attached");
    for (const CNote& deleted : before)
        EXPECT_EQ(NoteFileBytes({&commands.EditNote(deleted.id)->note, 1}), NoteFileBytes({&deleted, 1}));
    EXPECT_EQ(faults.faults.size(), 2u);
}

TEST_F(UndoHistoryTest, UndoingADeletionLeavesWhatTheUserHasOrderedSince) {
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
                commands.History().Undo();
            EXPECT_EQ(Listed(), expected) << order << ", case " << &c - cases;
        }
    }
}

TEST_F(UndoHistoryTest, UndoingAnImportOfManyNotesAsksWithTheirNumber) {
    // The third note has been deleted by hand, and isn't counted.
    for (const auto& [landed, replaced, asks] :
         {std::tuple(LongList{1, 2}, LongList{}, true), {{1, 2}, {1, 2}, false}, {{7}, {}, false}}) {
        ImportChanges changes;
        for (const int32_t id : landed)
            changes.landed.emplace(id, 0);
        for (const int32_t id : replaced)
            changes.replaced.push_back(DayNote(id));
        commands.History().ImportDone(std::move(changes), {});
        prompts.seen.clear();
        commands.History().Undo();
        EXPECT_EQ(commands.History().Next() == NextUndo::Import, asks) << "refused, it waits on";
        EXPECT_EQ(!prompts.seen.empty() && prompts.seen[0].find("*2*  of the  *3*") != std::string::npos, asks);
        prompts.answers = {PromptAnswer::Yes};
        commands.History().Undo();
        prompts.answers.clear();
        EXPECT_EQ(commands.History().Next(), NextUndo::None);
        EXPECT_EQ(app.NoteBook().TotalNoteCount(), 3u) << "they were changed since";
    }
}

TEST_F(UndoHistoryTest, UndoingAnImportKeepsWhatHasComeIntoTheListSince) {
    const CNote imported = commands.EditNote(2)->note;
    struct Case {
        std::optional<LongList> former;
        std::function<void()> since;
        std::vector<int32_t> listed;
    };
    const Case cases[] = {
        {{}, [] {}, {1, 3}},
        {{}, [this] { app.TakeOut(LongList{1}); }, {3}},
        {{}, [this] { app.ClearList(); }, {}},
        {{{3}}, [this] { app.ShowNotes(LongList{2}); }, {3}},
        {{{3}}, [this] { app.ShowNotes(LongList{2}), app.Gather(LongList{1}); }, {3, 1}},
        {{{3, 2}}, [this] { app.ShowNotes(LongList{2}); }, {3}},
    };
    for (const Case& c : cases) {
        folder.Put("DAY01022020.dat", {imported});
        app.ReloadNotes(LongList{1, 2, 3});
        ImportChanges changes;
        changes.landed.emplace(2, FingerprintOf(imported));
        commands.History().ImportDone(std::move(changes), c.former);
        c.since();
        prompts.answers = {PromptAnswer::Yes};
        commands.History().Undo();
        EXPECT_EQ(Listed(), c.listed) << "case " << &c - cases;
        EXPECT_EQ(commands.History().Next(), NextUndo::None);
    }
}

TEST_F(UndoHistoryTest, AnImportedNoteThatStaysStaysInTheList) {
    ImportChanges changes;
    for (const int32_t id : {1, 2})
        changes.landed.emplace(id, FingerprintOf(commands.EditNote(id)->note) + (id == 1 ? 1 : 0));
    commands.History().ImportDone(std::move(changes), LongList{3});
    app.ShowNotes(LongList{1, 2});
    prompts.answers = {PromptAnswer::Yes};
    commands.History().Undo();
    EXPECT_THAT(Listed(), ElementsAre(3, 1));
    EXPECT_THAT(prompts.seen.back(), HasSubstr("1 of the imported notes has been changed since"));
}

TEST_F(UndoHistoryTest, AnUndoWithinTheQuestionOfAnotherTakesTheStepBefore) {
    prompts.answers = {PromptAnswer::Yes};
    ASSERT_TRUE(commands.DeleteNote(3));
    ImportChanges changes;
    for (const int32_t id : {1, 2})
        changes.landed.emplace(id, 0);
    commands.History().ImportDone(std::move(changes), {});
    for (const PromptAnswer answer : {PromptAnswer::No, PromptAnswer::Yes}) {
        prompts.answers = {answer};
        prompts.whileShown = [this] {
            prompts.whileShown = nullptr;
            commands.History().Undo();
        };
        commands.History().Undo();
        EXPECT_EQ(app.NoteBook().TotalNoteCount(), 3u) << "the deletion is undone";
        EXPECT_EQ(commands.History().Next(), answer == PromptAnswer::No ? NextUndo::Import : NextUndo::None);
    }
}

}  // namespace
}  // namespace lore
