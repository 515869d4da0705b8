#include "exchange/import_comparison.h"

#include <gtest/gtest.h>

#include "bibliography/source_builder.h"
#include "notes/note_builder.h"
#include "support/scripted_ports.h"

namespace lore {
namespace {

using Lines = std::vector<std::string>;
using Positions = std::vector<size_t>;

class ImportComparisonTest : public testing::Test {
protected:
    /// Notes 1 to 5: new, older, newer, the same, and the guid of the first again.
    ImportComparison Make() {
        std::vector<ArchiveNote> notes;
        NoteHeads existing;
        for (int32_t id = 1; id <= 4; ++id) {
            notes.push_back({DayNote(id, 10), {}});
            CNote head = DayNote(id + 100, id == 2 ? 11 : id == 3 ? 9 : 10);
            head.guid = notes.back().note.guid;
            if (id > 1)
                existing.emplace(head.guid, head);
        }
        notes.push_back(notes.front());
        notes[0].sources = {FullSource(1011)};
        notes[0].note.categories[0] = PathOf({{3, "Lights"}, {4, "Lenses"}});
        notes[0].note.attachments = FullNote(1).attachments;
        notes[0].note.attachments.push_back({0, 1, "", "", "http://a.b", 12, false});
        notes[0].note.attachments.push_back({0, 1, "", "1.png", "/etc/x.png", 1, false});
        return ImportComparison(std::move(notes), std::move(existing), world_.guids, [](int32_t id) {
            return ArchiveNote{DayNote(id), {}};
        });
    }

    ReadWorld world_;
    ScriptedPrompts prompts_;
};

TEST_F(ImportComparisonTest, HoldsEachNoteAgainstTheNoteBook) {
    const ImportComparison comparison = Make();
    EXPECT_EQ(Each(comparison.Rows(), &ImportComparison::StatusText),
              (Lines{" 1. - <NEW NOTE>    ", " 2. - EXISTS (older)  ", " 3. - EXISTS (newer)  ",
                     " 4. - EXISTS (same)  ", " 5. - <NEW NOTE>    "}));
    EXPECT_NE(comparison.Rows()[4].entry.note.guid, comparison.Rows()[0].entry.note.guid) << "both land";
    EXPECT_EQ(comparison.Shown(), (Positions{0, 1, 2, 4})) << "what is the same is hidden";
    EXPECT_EQ(comparison.Chosen(), (Positions{0, 1, 2, 4}));
    EXPECT_EQ(comparison.Existing(1)->note.id, 102);
    EXPECT_FALSE(comparison.Existing(0));
    const ImportRow& first = comparison.Rows()[0];
    EXPECT_EQ(ImportComparison::MainSourceTitle(first), "The Light\nof 1811");
    EXPECT_EQ(ImportComparison::CategoryName(first, 0) + "/" + ImportComparison::CategoryName(first, 1) + "/" +
                  ImportComparison::CategoryName(first, 2) + ImportComparison::CategoryName(first, 3),
              "Lights/Lenses/");
    EXPECT_EQ(ImportComparison::AttachmentText(first), "A lamp; Site; http://a.b; ");
    EXPECT_EQ(ImportComparison::MainSourceTitle(comparison.Rows()[1]), "");
}

TEST_F(ImportComparisonTest, TicksAllRowsWheneverTheListIsFilled) {
    ImportComparison comparison = Make();
    comparison.TickAll(false);
    EXPECT_FALSE(comparison.Accept(prompts_));
    EXPECT_EQ(prompts_.seen, (Lines{"Invalid Notes: There are no notes selected to import."}));
    comparison.SetShowSame(true);
    EXPECT_EQ(comparison.Chosen(), (Positions{0, 1, 2, 3, 4}));
    comparison.Row(3).ticked = false;
    EXPECT_EQ(comparison.Chosen(), (Positions{0, 1, 2, 4}));
    comparison.SetShowSame(false);
    EXPECT_EQ(comparison.Chosen(), (Positions{0, 1, 2, 4})) << "a hidden row is never chosen";
    EXPECT_TRUE(comparison.Accept(prompts_));
}

}  // namespace
}  // namespace lore
