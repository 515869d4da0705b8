#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <memory>
#include <string>

#include "ports/background.h"
#include "ports/progress.h"

class QEvent;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

namespace lore {

class Theme;

/// The progress window and the stand-by window: panels in the middle of the main window, which takes no input while one
/// of them is shown. Work in the background gets a panel with a button to stop it; until it ends, the windows paint and
/// take no other input.
class QtProgress : public Progress, public Background {
public:
    explicit QtProgress(const Theme& theme);
    ~QtProgress() override;
    /// The window that the panels stand in; without one nothing is shown.
    void SetParent(QWidget* parent) { parent_ = parent; }

    void SetRange(int low, int high) override;
    void SetMessage(const std::string& text) override;
    void StepIt() override;
    void SetPosition(int position) override;
    void Show() override;
    void Hide() override;
    void ShowStandBy(const std::string& text) override;
    void HideStandBy() override;
    /// A flow that asks can be stopped: from then on its panel has a button.
    bool Cancelled() const override;
    bool Run(const std::string& text, const Work& work) override;

private:
    void MakePanel();
    bool ShowText(const std::string& text);
    void ShowStop(const std::string& text, QObject& stopper);
    void Place();
    void ReleaseCursor();
    void ShowState();
    /// Lets the window paint, at most so often that painting costs little beside the work.
    void Paint(bool always);

    const Theme& theme_;
    QPointer<QWidget> parent_;
    QPointer<QWidget> panel_;
    QLabel* message_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QPushButton* stop_ = nullptr;
    bool holdsCursor_ = false;  // the wait cursor of the stand-by window
    int low_ = 0, high_ = 0, position_ = 0;
    std::string text_;
    QElapsedTimer lastPaint_, shown_;
    mutable std::stop_source cancel_;
    mutable std::unique_ptr<QObject> cancelGuard_;  // while the panel has the button
    QObject alive_;
};

}  // namespace lore
