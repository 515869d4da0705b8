#pragma once

#include <memory>

#include "ui/board_fixture.h"
#include "ui/board_view.h"
#include "ui/controls.h"
#include "ui/theme.h"

namespace lore {

/// Gives each test a board of its own, empty and in the light palette.
class BoardWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    void Show(int width = 1000, int height = 700);
    void Wheel(int delta);
    /// The middle of what is seen of a card.
    QPoint Middle(int row) const;
    /// A plain spot of a card, below its actions and left of its text.
    QPoint Spot(int row) const;

    std::unique_ptr<Theme> theme_;
    std::unique_ptr<MemoryBoard> board_;
    std::unique_ptr<BoardView> view_;
};

}  // namespace lore
