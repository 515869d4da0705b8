#pragma once

#include <QAbstractScrollArea>
#include <memory>

#include "app/picture_commands.h"
#include "notes/board_commands.h"
#include "notes/board_model.h"
#include "notes/board_options.h"
#include "ui/board/board_empty_state.h"

namespace lore {

class Theme;

/// The notes of the current list as cards, one under the other. Only the cards in sight are laid out and painted, so
/// that the length of the list doesn't matter; the heights of the others are estimates until they come into sight.
class BoardView : public QAbstractScrollArea {
    Q_OBJECT

public:
    /// Both live longer than the board.
    BoardView(const BoardModel& model, const Theme& theme, QWidget* parent = nullptr);
    ~BoardView() override;

    const BoardOptions& Options() const;
    void SetOptions(const BoardOptions& options);
    void SetEmptyState(const BoardEmptyState& state);
    /// The entries for a note that are carried out; the menu shows no others. At first only RemoveFromList.
    void SetNoteCommands(const QList<BoardCommand>& commands);
    /// The names of the NoteBooks that a note can be copied to.
    void SetOtherNoteBooks(const QStringList& names);

    /// The list or its order is another one now. The focus note keeps its place on the screen if it is still there. The
    /// cards that come into sight are laid out one a turn of the event loop, and painted then.
    void Rebuild();
    /// The same, and a note, whose content may be another one now, becomes the focus note and comes into sight, as by
    /// SetFocusNote.
    void RebuildAt(int32_t noteId);
    /// The same for a note that was saved, at the next turn of the event loop: the content and the marks of all other
    /// notes are what they were. Out of sight, it comes into sight some turns later, when its neighbours are laid out.
    void RebuildAtSavedSoon(int32_t noteId);
    /// One note's content is another one now, the list is the same.
    void RefreshNote(int32_t noteId);
    /// Lays out at once what comes into sight after Rebuild or RebuildAt.
    void FinishShowing();

    /// The id of the focus note, -1 for none.
    int32_t FocusNote() const;
    /// Makes a note the focus note and scrolls to it; -1 or a note that isn't in the list leaves none.
    void SetFocusNote(int32_t noteId);
    /// Asks for the focus note to go one place up (-1) or down (1), as if it were dragged there; nothing at the end.
    void MoveFocusNote(int step);

    // For tests and screen readers.
    /// The rectangle of a card in coordinates of the viewport; beyond its edges for cards out of sight.
    QRect CardRect(int row) const;
    /// The rectangle of one attachment's picture or tile in coordinates of the viewport; empty if it isn't shown.
    QRect AttachmentRect(int row, int attachment) const;
    /// What a screen reader says of a card.
    QString CardText(int row) const;
    /// For tests alone: waits for pictures that are still being read, then paints them.
    void FinishPictures();
    /// The notes of the list, and the place of one in it.
    const BoardModel& Model() const;
    /// The rows in sight: first and one past the last.
    std::pair<int, int> VisibleRows() const;

signals:
    void SelectionChanged(int32_t noteId);
    /// What RebuildAtSavedSoon announced is done, and will be painted next.
    void SavedShown();
    /// A note was dragged onto another one: it goes directly before the target if it stood behind it, else directly
    /// after.
    void MoveRequested(int32_t noteId, int32_t targetId);
    void RemoveRequested(int32_t noteId);
    void DeleteRequested(int32_t noteId);
    /// `noteBook`: a position in what SetOtherNoteBooks got.
    void CopyRequested(int32_t noteId, int noteBook);
    /// A double-click or Enter on a card, or the entry of its menu.
    void EditRequested(int32_t noteId);
    void PictureCommandRequested(int32_t noteId, int attachment, PictureCommand command, const PictureRoom& room);
    /// Open a file or a web link of a note. Whether that is safe is for the receiver to say.
    void OpenRequested(int32_t noteId, int attachment);
    void ExtractRequested(int32_t noteId, int attachment);
    /// A link within the text was clicked.
    void LinkRequested(const QString& address);
    /// Ctrl with the wheel, or with + and -: one step up (1) or down (-1) in the zoom list.
    void ZoomStepRequested(int step);
    /// The buttons of the empty state.
    void FirstStepRequested();
    void OtherStepRequested();

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace lore
