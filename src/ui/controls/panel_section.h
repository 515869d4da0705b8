#pragma once

#include <QToolButton>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace lore {

class Theme;

/// A titled part of the side panel.
class PanelSection : public QWidget {
    Q_OBJECT

public:
    PanelSection(const QString& title, const Theme& theme, QWidget* parent = nullptr);

    /// Where the contents go.
    QVBoxLayout* Body() const { return body_; }
    QLabel* Title() const { return title_; }

private:
    QLabel* title_;
    QVBoxLayout* body_;
};

/// A small button with an icon; its name is its tool tip and what a screen reader says.
QToolButton* MakeIconButton(const QString& icon, const QString& name, const Theme& theme, QWidget* parent);

}  // namespace lore
