#include "app/panel_actions.h"

#include "app/app_world.h"
#include "app/category_editing.h"
#include "bibliography/source_builder.h"
#include "edit/note_removal.h"
#include "notes/print_preview.h"
#include "support/matchers.h"
#include "support/note_reading.h"

namespace lore {
namespace {

constexpr Rgb kRed = MakeRgb(200, 0, 0), kNearRed = MakeRgb(204, 3, 1), kBlue = MakeRgb(0, 0, 200);

/// The main NoteBook with four notes in three files, one of them of a source, and a second NoteBook.
class PanelActionsTest : public AppWorld {
protected:
    PanelActionsTest() {
        PutSources(folder.paths, {TitledSource(1011, "A title")});
        PutCategories(folder.paths, {PathOf({{3, "Lights"}, {4, "Lenses"}}), PathOf({{5, "Places"}})});
        const auto note = [](int32_t id, int day, Rgb color, const std::string& keyWords) {
            CNote made = DayNote(id, day);
            made.plainText = "Note " + std::to_string(id);
            made.rtfText = "{\\rtf1\\ansi " + made.plainText + "}";
            made.borderColor = color;
            made.keyWords = keyWords;
            return made;
        };
        CNote first = note(1, 1, kRed, "lamp, fog"), fourth = note(4, 1, 0, "");
        first.categories[0] = PathOf({{3, "Lights"}, {4, "Lenses"}});
        fourth.sources = {1011};
        folder.Put("DAY01012020.dat", {first, note(2, 1, kNearRed, "Lamp")});
        folder.Put("DAY01032020.dat", {note(3, 3, kBlue, "fog,")});
        folder.Put("SRC0000001011.dat", {fourth});
        PutBytes(folder.paths.SyncLog(), "2112, 7, Online, Desktop, 01/01/2020 01:00:00 AM, {NB},\n" + Record(1) +
                                             Record(2) + Record(3) + Record(4));
        const CDatabase other{7, 0, "Thesis", "Folder7", "", {}, "{NB7}"};
        EXPECT_TRUE(SaveDatabases(folder.data.DatabasesFile(), {other}).Ok());
        CreateNoteBookFolders(NoteBookPaths(folder.data, other.folder));
        Start(app);
        app.Gather(LongList{1, 2, 3, 4});
    }
    static std::string Record(int32_t note) {
        return std::to_string(note) + ", 2112, -1, 9, {G" + std::to_string(note) + "}, FILE.dat, , , , , ,\n";
    }
    /// The order that a command of an entry gives, by the words of the menu.
    PanelOrder Order(PanelKind kind, const std::string& entry, const std::string& words) {
        FilterPanel panel;
        const OpenNoteBook& book = app.NoteBook();
        const int set = CategorySetOf(app.GetSettings().Int(Option::CtrlBarCatSet));
        panel.SetEntries(kind == PanelKind::Categories ? CategoryEntries(book.categories, set)
                         : kind == PanelKind::Sources
                             ? SourceEntries(book.sources, SourceGrouping::Title, book.notesWithoutSource)
                         : kind == PanelKind::KeyWords ? KeyWordEntries(book.keyWords)
                                                       : ColorEntries(book.colors));
        for (size_t i = 0; i < panel.Entries().size(); ++i) {
            if (panel.Entries()[i].name != entry)
                continue;
            for (const PanelCommand& command : EntryCommands(kind, panel.Entries()[i], true))
                if (command.text == words)
                    return panel.OrderOf(static_cast<int>(i), command);
        }
        ADD_FAILURE() << "no " << words << " of " << entry;
        return {};
    }
    PanelOutcome Run(PanelKind kind, const std::string& entry, const std::string& words, int32_t focus = -1) {
        return actions.Run(Order(kind, entry, words), focus);
    }
    /// A note as the disk has it.
    CNote OnDisk(const std::string& file, int32_t id) {
        for (const CNote& note : NotesOfFile(folder.paths.NoteFile(file), app.Context()))
            if (note.id == id)
                return note;
        return {};
    }
    CSyncInfo Logged(int32_t id) {
        SyncLog log;
        LoadSyncLogFrom(folder.paths.SyncLog(), log);
        const CSyncInfo* const found = log.FindSyncInfo("{G" + std::to_string(id) + "}");
        return found ? *found : CSyncInfo();
    }
    using Next = NextUndo;
    /// The bytes of all note files.
    std::vector<std::string> Files() const {
        return {folder.Bytes(firstDay), folder.Bytes(thirdDay), folder.Bytes("SRC0000001011.dat")};
    }
    void Later() { clock.now = clock.now.PlusSeconds(60); }
    void Edit(int32_t id, const std::function<void(CNote&)>& change) {
        EditNoteSession session = *commands.EditNote(id);
        change(session.note);
        FixedNoteText text("{\\rtf1\\ansi Edited}");
        EXPECT_EQ(session.SaveNote(text), SaveOutcome::Saved);
        commands.NoteSaved(session.note);
    }
    std::vector<int32_t> Listed() const { return app.List().GetNoteIDs().Values(); }
    std::string Colors() const {
        std::string text;
        for (const CSearchColor& entry : app.NoteBook().colors.Entries())
            text += std::to_string(RedOf(entry.color)) + "/" + std::to_string(BlueOf(entry.color)) + "=" +
                    std::to_string(entry.notes.Count()) + " ";
        return text;
    }

    CLorebinderApp app{folder.folder.Path(), Ports()};
    WritingCommands commands{app};
    std::optional<Rgb> picked;
    PanelActions actions{app, commands, [this] { return picked; }};
    const std::string firstDay = "DAY01012020.dat", thirdDay = "DAY01032020.dat";
};

TEST_F(PanelActionsTest, BulkColorsReachFileListAndLog) {
    EXPECT_EQ(Run(PanelKind::KeyWords, "fog", "Set Border Color of Notes With This Key Word"), PanelOutcome::Nothing);
    EXPECT_THAT(progress.messages, testing::Not(testing::Contains("Updating notes....."))) << "cancelled";
    picked = kBlue;
    EXPECT_EQ(Run(PanelKind::KeyWords, "fog", "Set Border Color of Notes With This Key Word"),
              PanelOutcome::NotesChanged);
    EXPECT_EQ(progress.messages.back(), "Updating notes.....");
    EXPECT_EQ(OnDisk(firstDay, 1).borderColor, kBlue);
    EXPECT_EQ(OnDisk(firstDay, 1).dateEdited, clock.now);
    EXPECT_EQ(OnDisk(firstDay, 2).borderColor, kNearRed);
    EXPECT_EQ(OnDisk(thirdDay, 3).dateEdited, DayNote(3, 3).dateEdited) << "it had the colour";
    EXPECT_EQ(app.List().Find(1)->borderColor, kBlue);
    EXPECT_EQ(app.List().Find(1)->dateEdited, clock.now);
    EXPECT_EQ(Logged(1).Change1, clock.now);
    EXPECT_TRUE(Logged(1).Changed);
    EXPECT_FALSE(Logged(1).Change2.IsValid());
    EXPECT_FALSE(Logged(3).Changed);
    EXPECT_EQ(Colors(), "200/0=1 0/200=2 0/0=1 ") << "the entry keeps its colour, though only the near one is left";
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(PanelActionsTest, AColorLeavesWhatIsNearlyAlike) {
    app.TakeOut(LongList{4});
    EXPECT_EQ(Run(PanelKind::Colors, "#c80000", "Remove This Color From All Notes In List"),
              PanelOutcome::NotesChanged);
    EXPECT_EQ(OnDisk(firstDay, 1).borderColor, 0u);
    EXPECT_EQ(OnDisk(firstDay, 2).borderColor, 0u);
    EXPECT_EQ(Colors(), "0/200=1 0/0=3 ");
    EXPECT_EQ(Run(PanelKind::Colors, "#0000c8", "Set All Notes In List To This Color"), PanelOutcome::NotesChanged);
    EXPECT_EQ(Colors(), "0/200=3 0/0=1 ") << "note 4 isn't in the list";
}

TEST_F(PanelActionsTest, ASourceGoesToTheEndOfTheFocusNoteAndAFirstOneMovesIt) {
    EXPECT_EQ(Run(PanelKind::Sources, "Book: A title", "Add Note To Source"), PanelOutcome::Nothing)
        << "no note has the focus";
    EXPECT_EQ(Run(PanelKind::Sources, "Book: A title", "Add Note To Source", 3), PanelOutcome::NotesChanged);
    EXPECT_EQ(OnDisk(thirdDay, 3).id, -1);
    EXPECT_EQ(OnDisk("SRC0000001011.dat", 3).dateEdited, clock.now);
    EXPECT_EQ(*app.NoteBook().index.FindPath(3), folder.paths.NoteFile("SRC0000001011.dat").string());
    EXPECT_THAT(app.NoteBook().sources.FindSourceByID(1011)->NoteIDs.Values(), ElementsAre(4, 3));
    EXPECT_FALSE(app.NoteBook().notesWithoutSource.Contains(3));
    EXPECT_EQ(Logged(3).SourcesChanged, clock.now);
    EXPECT_EQ(Logged(3).NoteFile, "SRC0000001011.dat");
    EXPECT_TRUE(app.List().Notes()[static_cast<size_t>(app.List().PositionOf(3))].citations)
        << "its card cites the source";
    EXPECT_EQ(Run(PanelKind::Sources, "Book: A title", "Add Note To Source", 3), PanelOutcome::Nothing);
}

TEST_F(PanelActionsTest, TreesAndTheWholePanelFillAndClearTheList) {
    const LongList all = app.List().GetNoteIDs();
    EXPECT_EQ(Run(PanelKind::Categories, "Lenses", "Clear Current Tree"), PanelOutcome::ListChanged);
    EXPECT_THAT(Listed(), UnorderedElementsAre(2, 3, 4)) << "the tree above it too";
    FilterPanel panel;
    panel.SetEntries(CategoryEntries(app.NoteBook().categories, kAllSets));
    actions.Run(panel.OrderOf(-1, AreaCommands(PanelKind::Categories)[1]), -1);
    EXPECT_THAT(Listed(), IsEmpty());
    EXPECT_EQ(actions.Run(panel.OrderOf(-1, AreaCommands(PanelKind::Categories)[0]), -1), PanelOutcome::Gathered);
    EXPECT_EQ(app.List().Count(), all.Count());
}

TEST_F(PanelActionsTest, NotesAreCopiedExportedPrintedAndDeleted) {
    PanelOrder copy = Order(PanelKind::KeyWords, "fog", "Copy Notes With This Key Word To NoteBook");
    copy.noteBook = 0;
    actions.Run(copy, -1);
    EXPECT_THAT(progress.messages, testing::Contains("Loading notes to copy....."));
    EXPECT_EQ(prompts.seen.back(), "Finished!: Your  *2*  notes have been successfully copied to Thesis!");
    const std::filesystem::path archive = folder.folder / "out.lbe";
    prompts.savePaths = {archive.string()};
    Run(PanelKind::KeyWords, "fog", "Export Notes With This Key Word");
    EXPECT_EQ(prompts.seen.back(), "Finished!: Your  *2*  notes have been successfully exported!");
    EXPECT_TRUE(std::filesystem::exists(archive));
    Run(PanelKind::Colors, "#0000c8", "Print Notes With This Color");
    EXPECT_THAT(BytesOf(folder.data.PrintPreview()), HasSubstr("{G3}"));
    EXPECT_EQ(Run(PanelKind::Colors, "#0000c8", "Delete Notes With This Color"), PanelOutcome::Nothing) << "refused";
    prompts.answers = {PromptAnswer::Yes};
    EXPECT_EQ(Run(PanelKind::Colors, "#0000c8", "Delete Notes With This Color"), PanelOutcome::NotesChanged);
    EXPECT_THAT(Listed(), UnorderedElementsAre(1, 2, 4));
}

TEST_F(PanelActionsTest, AFileThatCantBeWrittenChangesNothing) {
    Block(folder.paths.NoteFile(firstDay));
    picked = kBlue;
    EXPECT_EQ(Run(PanelKind::Colors, "#c80000", "Add Note To Color", 3), PanelOutcome::NotesChanged);
    const std::string before = Colors();
    EXPECT_EQ(Run(PanelKind::KeyWords, "lamp", "Set Border Color of Notes With This Key Word"), PanelOutcome::Nothing);
    EXPECT_FALSE(faults.faults.empty());
    EXPECT_EQ(Colors(), before);
    EXPECT_EQ(app.List().Find(1)->borderColor, kRed);
    EXPECT_FALSE(Logged(1).Changed);
}

TEST_F(PanelActionsTest, WhatAPanelHasChangedComesBackWithUndo) {
    struct Step {
        PanelKind kind;
        std::string entry, words;
        int32_t focus;
        Next undo;
    };
    picked = MakeRgb(9, 90, 9);
    const Step steps[] = {
        {PanelKind::KeyWords, "fog", "Attach All Notes In List To This Key Word", -1, Next::KeyWords},
        {PanelKind::KeyWords, "fog", "Remove Key Word From All Notes In List", -1, Next::KeyWords},
        {PanelKind::KeyWords, "lamp", "Add Note To Key Word", 3, Next::KeyWords},
        {PanelKind::Colors, "#c80000", "Remove This Color From All Notes In List", -1, Next::Colors},
        {PanelKind::Colors, "#0000c8", "Set All Notes In List To This Color", -1, Next::Colors},
        {PanelKind::KeyWords, "lamp", "Set Border Color of Notes With This Key Word", -1, Next::Colors},
    };
    app.SetSortOrder(801);
    std::vector<std::vector<std::string>> files;
    for (const Step& step : steps) {
        files.push_back(Files());
        Later();
        EXPECT_EQ(Run(step.kind, step.entry, step.words, step.focus), PanelOutcome::NotesChanged) << step.words;
        EXPECT_EQ(commands.History().Next(), step.undo) << step.words;
    }
    for (; !files.empty(); files.pop_back()) {
        Later();
        commands.History().Undo();
        EXPECT_EQ(Files(), files.back()) << steps[files.size() - 1].words;
    }
    EXPECT_EQ(commands.History().Next(), Next::None);
    EXPECT_EQ(app.List().Find(1)->keyWords, "lamp, fog");
    EXPECT_EQ(app.List().Find(3)->keyWords, "fog,");
    EXPECT_EQ(app.List().Find(2)->borderColor, kNearRed);
    EXPECT_EQ(app.List().Find(2)->dateEdited, DayNote(2, 1).dateEdited);
    EXPECT_EQ(Colors(), "0/200=1 0/0=1 200/0=2 ");
    EXPECT_EQ(app.NoteBook().keyWords.FindByName("fog")->notes.Count(), 2u);
    EXPECT_EQ(app.NoteBook().keyWords.FindByName("lamp")->notes, LongList{1});
    EXPECT_EQ(Logged(2).KeyWordsChanged, clock.now) << "the other side gets the former line, too";
    EXPECT_EQ(Logged(2).Change1, clock.now.PlusSeconds(-180)) << "three undos before";
    EXPECT_THAT(prompts.seen, IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(PanelActionsTest, UndoLeavesWhatNotesHaveGotSince) {
    Run(PanelKind::Colors, "#0000c8", "Set All Notes In List To This Color");
    Run(PanelKind::KeyWords, "fog", "Attach All Notes In List To This Key Word");
    Later();
    const DateTime edited = clock.now;
    Edit(1, [](CNote&) {});
    Edit(2, [](CNote& note) {
        note.borderColor = 7;
        note.keyWords = "fog, Lamp";
    });
    const ReadContext context = app.Context();
    NoteRemoval(app.NoteBook(), context, faults, nullptr).DeleteNotes(LongList{4}, GoneFiles::Deleted);
    Later();
    commands.History().Undo();
    EXPECT_EQ(prompts.seen.back(),
              "Undo Key Word: 1 of the notes has got other key words since, and keeps what it has.");
    EXPECT_EQ(OnDisk(firstDay, 2).keyWords, "fog, Lamp");
    commands.History().Undo();
    EXPECT_EQ(prompts.seen.back(),
              "Undo Border Color: 1 of the notes has got another border color since, and keeps what it has.");
    EXPECT_EQ(OnDisk(firstDay, 2).borderColor, 7u);
    EXPECT_EQ(OnDisk(firstDay, 2).dateEdited, edited);
    EXPECT_EQ(OnDisk(firstDay, 1).borderColor, kRed);
    EXPECT_EQ(OnDisk(firstDay, 1).plainText, "Edited");
    EXPECT_EQ(OnDisk(firstDay, 1).dateEdited, edited) << "it was edited since";
    EXPECT_EQ(app.List().Find(1)->borderColor, kRed);
    EXPECT_EQ(OnDisk("SRC0000001011.dat", 4).id, -1);
    EXPECT_EQ(commands.History().Next(), Next::None);
    EXPECT_EQ(prompts.seen.size(), 2u);
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(PanelActionsTest, AnUndoThatCantBeWrittenIsTriedAgain) {
    const std::vector<std::string> before = Files();
    Run(PanelKind::KeyWords, "fog", "Remove Key Word From All Notes In List");
    const std::filesystem::path file = folder.paths.NoteFile(thirdDay), aside = folder.folder / "aside";
    std::filesystem::rename(file, aside);
    std::filesystem::create_directories(file / "in the way");
    commands.History().Undo();
    EXPECT_EQ(folder.Bytes(firstDay), before[0]) << "the others are back";
    const size_t told = faults.faults.size();
    EXPECT_GT(told, 0u);
    EXPECT_EQ(commands.History().Next(), Next::KeyWords);
    EXPECT_EQ(app.List().Find(3)->keyWords, "");
    EXPECT_EQ(app.NoteBook().keyWords.FindByName("fog")->notes, LongList{1});
    std::filesystem::remove_all(file);
    std::filesystem::rename(aside, file);
    commands.History().Undo();
    EXPECT_EQ(Files(), before);
    EXPECT_EQ(commands.History().Next(), Next::None);
    EXPECT_EQ(app.NoteBook().keyWords.FindByName("fog")->notes.Count(), 2u);
    EXPECT_EQ(faults.faults.size(), told);
    EXPECT_THAT(prompts.seen, IsEmpty());
}

TEST_F(PanelActionsTest, EditedTreesReachListAndCounter) {
    const int32_t last = app.GetSettings().Int(Option::MaxCategoryID);
    {
        CategoryEditing editing(app, commands);
        prompts.texts = {"Dropped"};
        editing.Model().CreateRoot();
        prompts.answers = {PromptAnswer::No, PromptAnswer::Yes};
        EXPECT_FALSE(editing.MayDrop());
        EXPECT_TRUE(editing.MayDrop());
    }
    EXPECT_EQ(app.GetSettings().Int(Option::MaxCategoryID), last + 1) << "the number isn't given out again";
    EXPECT_EQ(*store.Get("Options", "MaxCategoryID"), std::to_string(last + 1));
    app.SetSortOrder(704);
    CategoryEditing editing(app, commands);
    EXPECT_TRUE(editing.MayDrop());
    prompts.texts = {"Aerials"};
    EXPECT_EQ(editing.Model().CreateRoot(), last + 2);
    editing.Model().DropOn(4, last + 2);
    EXPECT_TRUE(editing.Save());
    EXPECT_EQ(progress.messages.back(), "Updating Category Changes....");
    EXPECT_EQ(app.List().Find(1)->categories[0].name, "Aerials");
    EXPECT_EQ(OnDisk(firstDay, 1).categories[0].name, "Aerials");
    EXPECT_EQ(app.NoteBook().categories.FindByID(4)->parent->name, "Aerials");
    EXPECT_FALSE(app.NoteBook().categories.FindRootByName("Dropped"));
}

TEST_F(PanelActionsTest, ACategoryAndASourceOfTheFocusNoteAreTakenBack) {
    const std::vector<std::string> before = Files();
    app.GetSettings().Set(Option::CtrlBarCatSet, 2);
    Run(PanelKind::Categories, "Places", "Add Note To Level", 1);
    EXPECT_EQ(commands.History().Next(), Next::Category);
    const std::vector<std::string> filed = Files();
    Later();
    Run(PanelKind::Sources, "Book: A title", "Add Note To Source", 3);
    EXPECT_EQ(commands.History().Next(), Next::Sources);
    Later();
    commands.History().Undo();
    EXPECT_EQ(Files(), filed) << "the note is back in the file of its day";
    EXPECT_THAT(app.NoteBook().sources.FindSourceByID(1011)->NoteIDs.Values(), ElementsAre(4));
    EXPECT_TRUE(app.NoteBook().notesWithoutSource.Contains(3));
    EXPECT_EQ(Logged(3).SourcesChanged, clock.now);
    EXPECT_EQ(Logged(3).NoteFile, thirdDay);
    EXPECT_TRUE(app.List().Find(3)->sources.IsEmpty());
    EXPECT_FALSE(app.List().Notes()[static_cast<size_t>(app.List().PositionOf(3))].citations);
    commands.History().Undo();
    EXPECT_EQ(Files(), before);
    EXPECT_TRUE(app.List().Find(1)->categories[1].IsEmptyPath());
    const CProCategoryList& forest = app.NoteBook().categories;
    EXPECT_TRUE(forest.FindByID(kUnassignedID)->notes[1].Contains(1) && !forest.FindByID(5)->notes[1].Contains(1));
    EXPECT_EQ(Logged(1).CategoriesChanged, clock.now);
    EXPECT_EQ(commands.History().Next(), Next::None);
    EXPECT_THAT(prompts.seen, IsEmpty());
    EXPECT_THAT(faults.faults, IsEmpty());
}

TEST_F(PanelActionsTest, TakingBackACategoryFollowsTheForest) {
    const auto change = [this](const std::function<void(CategoryTrees&)>& steps) {
        CategoryEditing editing(app, commands);
        steps(editing.Model());
        EXPECT_TRUE(editing.Save());
    };
    prompts.texts = {"Glass", "Sites"};
    const std::tuple<const char*, std::function<void(CategoryTrees&)>, std::string, bool> cases[] = {
        {"both have other names now",
         [](CategoryTrees& trees) {
             trees.RenameCategory(4);
             trees.RenameCategory(5);
         },
         "Glass", false},
        {"it was filed elsewhere since", [](CategoryTrees& trees) { trees.DropOn(5, kUnassignedID); }, "", true},
        {"where it came from has gone", [](CategoryTrees& trees) { trees.DeleteCategory(4); }, "Sites", true},
    };
    // What was done since, the category that the note is in afterwards, and whether it stays there.
    for (const auto& [words, since, name, stays] : cases) {
        ValueChanges(commands.World(), app.List()).FileInCategory(LongList{1}, 4, 1);
        Run(PanelKind::Categories, app.NoteBook().categories.FindByID(5)->name, "Add Note To Level", 1);
        prompts.answers = {PromptAnswer::Yes};
        change(since);
        prompts.seen.clear();
        commands.History().Undo();
        const CProCategoryTree path = OnDisk(firstDay, 1).categories[0];
        EXPECT_EQ(path.children.empty() ? path.name : path.children[0].name, name) << words;
        EXPECT_EQ(prompts.seen.size(), stays ? 1u : 0u) << words;
        EXPECT_EQ(commands.History().Next(), Next::None) << words;
    }
    EXPECT_TRUE(prompts.seen.back().starts_with("Undo Category: 1 of the notes has been filed elsewhere since, or "));
}

}  // namespace
}  // namespace lore
