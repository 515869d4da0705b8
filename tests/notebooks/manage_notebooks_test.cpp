#include "notebooks/manage_notebooks.h"

#include "notebooks/notebooks_world.h"
#include "support/matchers.h"

namespace lore {
namespace {

struct ManageNoteBooksTest : NoteBooksWorld, testing::Test {
    NoteBookManager manager{data, main.guid, Ports()};

    ManageNoteBooks Opened(const std::string& openGuid) {
        ManageNoteBooks dialog(manager, data, main, openGuid, context, Ports());
        dialog.Open();
        return dialog;
    }
    static std::vector<std::string> Rows(const ManageNoteBooks& dialog) {
        std::vector<std::string> texts;
        for (size_t row = 0; row < dialog.Count(); ++row)
            texts.push_back(dialog.RowText(row));
        return texts;
    }
};

TEST_F(ManageNoteBooksTest, ShowsAllNoteBooksWithTheOpenOneChosen) {
    PutNotes(main, {DayNote(1), DayNote(2, 2)});
    Add("Zebra", 7, {DayNote(3)});
    Add("Lamps", 9, {DayNote(4), DayNote(5, 5), SourceNote(6, {1011})});
    ManageNoteBooks dialog = Opened("{NB9}");
    EXPECT_THAT(progress.messages, ElementsAre("Gathering databases information...."));
    EXPECT_THAT(Rows(dialog), ElementsAre("<LOREBINDER MAIN>", "Zebra", "Lamps"));
    EXPECT_EQ(dialog.Selected(), 2u);
    EXPECT_EQ(dialog.Details().name, "Lamps");
    EXPECT_EQ(dialog.Details().notes, "# Notes:  3");
    EXPECT_EQ(dialog.Details().created, "Created:  07/12/11");
    EXPECT_TRUE(dialog.Details().canChange);
    dialog.Select(0);
    EXPECT_EQ(dialog.Details().name, "");
    EXPECT_EQ(dialog.Details().notes, "# Notes:  2");
    EXPECT_EQ(dialog.Details().created, "Created: ");
    EXPECT_FALSE(dialog.Details().canChange);
    EXPECT_EQ(Opened("{GONE}").Selected(), 0u);
}

TEST_F(ManageNoteBooksTest, EachCommandRefillsTheListAndChoosesTheRowTold) {
    Add("Zebra", 7, {DayNote(3)});
    ManageNoteBooks dialog = Opened("{NB7}");
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_TRUE(dialog.Create("Light houses"));
    EXPECT_THAT(Rows(dialog), ElementsAre("<LOREBINDER MAIN>", "Zebra", "Light houses"));
    EXPECT_EQ(dialog.Selected(), 2u);
    EXPECT_EQ(dialog.Details().notes, "# Notes:  0");
    EXPECT_FALSE(dialog.Create("Fog signals"));
    dialog.Select(1);
    EXPECT_TRUE(dialog.ChangeName("Horse"));
    EXPECT_EQ(dialog.Selected(), 1u);
    EXPECT_EQ(dialog.Details().name, "Horse");
    EXPECT_EQ(dialog.Details().notes, "# Notes:  1");
}

TEST_F(ManageNoteBooksTest, DeletingTheOpenNoteBookIsRemembered) {
    Add("Zebra", 7, {DayNote(3)});
    Add("Lamps", 9);
    ManageNoteBooks dialog = Opened("{NB7}");
    dialog.Select(2);
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No, PromptAnswer::Yes};
    EXPECT_TRUE(dialog.Delete());
    EXPECT_FALSE(dialog.HasDeletedOpen());
    dialog.Select(1);
    EXPECT_FALSE(dialog.Delete());
    EXPECT_FALSE(dialog.HasDeletedOpen());
    dialog.Select(1);
    EXPECT_TRUE(dialog.Delete());
    EXPECT_TRUE(dialog.HasDeletedOpen());
    EXPECT_EQ(dialog.Selected(), 0u);
    EXPECT_TRUE(dialog.Chosen().IsMain());
    EXPECT_NE(prompts.seen.back().find("DELETE ALL  1  NOTES"), std::string::npos);
}

TEST_F(ManageNoteBooksTest, TheOpenNoteBookMayComeBackAtOnceOrLater) {
    NoteBookTrash trash(faults);
    ManagerPorts ports = Ports();
    ports.trash = &trash;
    Add("Zebra", 7, {DayNote(3)});
    const auto run = [&](bool deletes, bool restores) {
        NoteBookManager keeping(data, main.guid, ports);
        ManageNoteBooks dialog(keeping, data, main, "{NB7}", context, ports);
        dialog.Open();
        dialog.Select(1);
        prompts.answers = {PromptAnswer::Yes};
        EXPECT_EQ(deletes && dialog.Delete(), deletes);
        EXPECT_EQ(restores && dialog.Restore(), restores);
        if (restores) {
            EXPECT_EQ(dialog.Details().name + dialog.Details().notes, "Zebra# Notes:  1");
        }
        return std::pair(dialog.HasDeletedOpen(), dialog.HasRestoredOpen());
    };
    EXPECT_EQ(run(true, true), std::pair(false, false));
    EXPECT_EQ(run(true, false), std::pair(true, false));
    EXPECT_EQ(run(false, true), std::pair(false, true));
}

TEST_F(ManageNoteBooksTest, ClosingAsksForNamesThatWereTypedAlone) {
    ManageNoteBooks dialog = Opened("{LOCAL}");
    EXPECT_TRUE(dialog.MayClose(false, false));
    EXPECT_TRUE(prompts.seen.empty());
    prompts.answers = {PromptAnswer::Yes, PromptAnswer::No};
    EXPECT_TRUE(dialog.MayClose(true, false));
    EXPECT_NE(prompts.seen.back().find("\"Change Name\""), std::string::npos);
    EXPECT_FALSE(dialog.MayClose(true, true));
    EXPECT_NE(prompts.seen.back().find("\"Create NoteBook\""), std::string::npos);
}

}  // namespace
}  // namespace lore
