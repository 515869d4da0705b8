#pragma once

#include <QObject>
#include <cstdint>

#include "notes/note.h"

class QWidget;

namespace lore {

class BoardView;
class CLorebinderApp;
class ListBoardModel;
class Theme;

/// What a card's pictures, attachments and links do when they are used. It listens to the board.
class CardActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what a picture opens above.
    CardActions(CLorebinderApp& app, const ListBoardModel& model, BoardView& board, Theme& theme, QWidget& window);

private:
    /// Null if the note isn't listed.
    const CAttachment* Attachment(int32_t noteId, int attachment) const;
    void Open(int32_t noteId, int attachment);
    void Extract(int32_t noteId, int attachment);

    CLorebinderApp& app_;
    const ListBoardModel& model_;
    Theme& theme_;
    QWidget& window_;
};

}  // namespace lore
