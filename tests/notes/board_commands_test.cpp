#include "notes/board_commands.h"

#include "notes/attachment_kind.h"
#include "notes/board_drag.h"
#include "support/each.h"
#include "support/matchers.h"

namespace lore {
namespace {

std::vector<std::string_view> Words(const std::vector<BoardCommand>& commands) {
    return Each(commands, &BoardCommandText);
}

TEST(BoardCommands, FollowWhatIsUnderTheMouse) {
    CAttachment attachment;
    attachment.type = kImageFile;
    EXPECT_THAT(Words(AttachmentCommands(attachment)),
                ElementsAre("Zoom In", "Zoom Out", "Shift Left", "Shift Right", "Restore", "Extract Attachment"));
    attachment.show = false;
    EXPECT_THAT(Words(AttachmentCommands(attachment)), ElementsAre("Open Attachment", "Extract Attachment"));
    attachment = CAttachment();
    attachment.type = kPdfFile;
    EXPECT_THAT(Words(AttachmentCommands(attachment)), ElementsAre("Open Attachment", "Extract Attachment"));
    attachment.type = kWebLink;
    EXPECT_THAT(Words(AttachmentCommands(attachment)), ElementsAre("Open Link"));
    EXPECT_THAT(Words(NoteCommands(true)), ElementsAre("Edit Note", "Remove From Current List", "Copy Note To NoteBook",
                                                       "Delete Note Permanently"));
    EXPECT_THAT(Words(NoteCommands(false)),
                ElementsAre("Edit Note", "Remove From Current List", "Delete Note Permanently"));
}

TEST(BoardDrag, StartsAtThirtyPixelsWithTwoNotesOrMore) {
    const std::tuple<int, int, int, int, bool> cases[] = {
        {0, 2, 100, 129, false}, {0, 2, 100, 130, true},   {0, 2, 118, 124, true}, {0, 2, 117, 124, false},
        {0, 1, 500, 500, false}, {-1, 9, 500, 500, false}, {5, 9, 70, 100, true}};
    for (const auto& [row, notes, x, y, runs] : cases) {
        BoardDrag drag;
        drag.Press(row, {100, 100});
        EXPECT_EQ(drag.Move({x, y}, 800, 600, notes), runs) << x << " " << y;
        EXPECT_EQ(drag.IsRunning(), runs);
    }
    BoardDrag drag;
    drag.Press(0, {100, 100});
    drag.Move({100, 140}, 800, 600, 5);
    EXPECT_TRUE(drag.Move({100, 101}, 800, 600, 5)) << "a drag that runs goes on near its start";
}

TEST(BoardDrag, KeepsTheMouseInsideAndScrollsAtItsOutermostPlaces) {
    const int cases[][5] = {{-50, 300, 2, 300, 0},   {900, 300, 797, 300, 0}, {400, -9, 400, 2, -1},
                            {400, 4, 400, 4, -1},    {400, 5, 400, 5, 0},     {400, 592, 400, 592, 1},
                            {400, 591, 400, 591, 0}, {400, 9000, 400, 594, 1}};
    for (const auto& [x, y, keptX, keptY, direction] : cases) {
        BoardDrag drag;
        drag.Press(1, {400, 100});
        drag.Move({400, 300}, 800, 600, 5);
        drag.Move({x, y}, 800, 600, 5);
        EXPECT_EQ(drag.Mouse().x, keptX);
        EXPECT_EQ(drag.Mouse().y, keptY);
        EXPECT_EQ(drag.ScrollStep() > 0, direction > 0) << y;
        EXPECT_EQ(drag.ScrollStep() < 0, direction < 0) << y;
    }
}

TEST(BoardDrag, DropsBeforeAnEarlierNoteAndAfterALaterOne) {
    const std::tuple<int, int, bool, DropSide> cases[] = {{5, 2, true, DropSide::Before},
                                                          {2, 5, true, DropSide::After},
                                                          {3, 3, false, DropSide::After},
                                                          {3, -1, false, DropSide::Before}};
    for (const auto& [from, to, moves, side] : cases) {
        BoardDrag drag;
        drag.Press(from, {10, 10});
        drag.SetTarget(to);
        EXPECT_FALSE(drag.MovesNote()) << "no drag runs";
        drag.Move({10, 90}, 800, 600, 9);
        drag.SetTarget(to);
        EXPECT_EQ(drag.MovesNote(), moves);
        EXPECT_TRUE(!moves || drag.Side() == side) << from;
        drag.Cancel();
        EXPECT_FALSE(drag.MovesNote() || drag.IsRunning());
    }
}

}  // namespace
}  // namespace lore
