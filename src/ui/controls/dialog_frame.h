#pragma once

#include <QDialog>
#include <functional>

#include "ports/settings_store.h"

class QBoxLayout;
class QHBoxLayout;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace lore {

class FaultBar;
class Theme;

/// What all dialogs share: content above a row of buttons, all distances multiples of kSpace. Esc cancels, Ctrl+Enter
/// is the main button, Enter the button or the row that has the focus, else the main button. The dialog opens where and
/// as large as it was closed, but no larger than the screen. Content that needs more than the screen has is scrolled;
/// the buttons stay in sight.
class DialogFrame : public QDialog {
    Q_OBJECT

public:
    /// `place` names the dialog in the store.
    DialogFrame(const QString& title, const char* place, SettingsStore& store, QWidget* parent);

    /// The room for the dialog's own controls.
    QVBoxLayout* Content() const { return content_; }
    /// A button at the right end of the row, after those that are there.
    QPushButton* AddButton(const QString& text);
    /// A button at the left end of the row.
    QPushButton* AddSideButton(const QString& text);
    /// The button that Ctrl+Enter presses; drawn as the default one.
    void SetMainButton(QPushButton* button);
    /// The bar above the content that tells of failures; it is made when it is first asked for. A command that runs in
    /// it can be tried again.
    FaultBar& Faults(const Theme& theme);
    /// Runs a save in the bar and accepts the dialog once it says that it was done.
    void AcceptAfter(const std::function<bool()>& save, const Theme& theme);

    void done(int result) override;
    void setVisible(bool visible) override;
    QSize sizeHint() const override;

protected:
    /// The most that the dialog can have: what its screen leaves of it within a frame.
    QSize LargestSize() const;
    /// Scrolls so far that this part of a control of the content is in sight.
    void Reveal(const QWidget& control, const QRect& part);
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* NewButton(const QString& text);
    void TakeWhatIsTyped();
    QSize LargestContent() const;
    void FoldButtons();
    void ShowAllThatCanBe();
    void FitOnScreen();

    const char* place_;
    SettingsStore& store_;
    QScrollArea* pane_ = nullptr;
    QVBoxLayout* content_ = nullptr;
    QBoxLayout* buttons_ = nullptr;  // the two rows, side by side where there is room
    QHBoxLayout *sideRow_ = nullptr, *mainRow_ = nullptr;
    QPushButton* main_ = nullptr;
    FaultBar* faultBar_ = nullptr;
    int sideButtons_ = 0;
    bool isPlaced_ = false;
};

}  // namespace lore
