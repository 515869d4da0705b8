#pragma once

#include <QWidget>

#include "ui/board/board_empty_state.h"

class QLabel;
class QPushButton;

namespace lore {

class Theme;

/// What stands on the board while the list is empty: the logo, what goes here, and the first step.
class BoardEmptyPane : public QWidget {
    Q_OBJECT

public:
    BoardEmptyPane(const Theme& theme, QWidget* parent);

    void SetState(const BoardEmptyState& state);
    const BoardEmptyState& State() const { return state_; }

signals:
    void ActionClicked();
    void OtherActionClicked();

private:
    void Restyle();

    const Theme& theme_;
    BoardEmptyState state_;
    QLabel* logo_;
    QLabel* title_;
    QLabel* text_;
    QPushButton* action_;
    QPushButton* otherAction_;
};

}  // namespace lore
