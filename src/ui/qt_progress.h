#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <memory>

#include "ports/progress.h"

class QLabel;
class QProgressBar;
class QWidget;

namespace lore {

class Theme;

/// The progress window and the stand-by window: panels in the middle of the main window, which takes no input while one
/// of them is shown.
class QtProgress : public Progress {
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

private:
    void MakePanel();
    void Place();
    /// Lets the window paint, at most so often that painting costs little beside the work.
    void Paint(bool always);

    const Theme& theme_;
    QPointer<QWidget> parent_;
    QPointer<QWidget> panel_;
    QLabel* message_ = nullptr;
    QProgressBar* bar_ = nullptr;
    QElapsedTimer lastPaint_;
};

}  // namespace lore
