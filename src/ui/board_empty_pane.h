#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace lore {

class Theme;
struct BoardEmptyState;

/// What stands on the board while the list is empty: the logo, what goes here, and the first step.
class BoardEmptyPane : public QWidget {
    Q_OBJECT

public:
    BoardEmptyPane(const Theme& theme, QWidget* parent);

    void SetState(const BoardEmptyState& state);

signals:
    void ActionClicked();

private:
    void Restyle();

    const Theme& theme_;
    QLabel* logo_;
    QLabel* title_;
    QLabel* text_;
    QPushButton* action_;
};

}  // namespace lore
