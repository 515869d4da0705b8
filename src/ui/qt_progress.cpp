#include "ui/qt_progress.h"

#include <QApplication>
#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "ui/qt_text.h"
#include "ui/theme.h"

namespace lore {

namespace {
constexpr qint64 kPaintEvery = 40;  // milliseconds
constexpr int kPanelChars = 48;     // width of the panel in characters
}  // namespace

QtProgress::QtProgress(const Theme& theme) : theme_(theme) {
    lastPaint_.start();
}

QtProgress::~QtProgress() {
    delete panel_;
}

void QtProgress::MakePanel() {
    if (panel_ || !parent_)
        return;
    auto* const panel = new QFrame(parent_);
    panel->setObjectName("progressPanel");
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setAutoFillBackground(true);
    panel->setAccessibleName(QObject::tr("Progress"));
    auto* const layout = new QVBoxLayout(panel);
    layout->setContentsMargins(kSpace * 5, kSpace * 4, kSpace * 5, kSpace * 4);
    layout->setSpacing(kSpace * 2);
    message_ = new QLabel(panel);
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    message_->setFont(theme_.Font(TextSize::Body));
    bar_ = new QProgressBar(panel);
    bar_->setTextVisible(false);
    bar_->setAccessibleName(QObject::tr("Progress"));
    layout->addWidget(message_);
    layout->addWidget(bar_);
    panel_ = panel;
}

void QtProgress::Place() {
    panel_->setFixedWidth(
        std::min(parent_->width() - kSpace * 4, panel_->fontMetrics().averageCharWidth() * kPanelChars));
    panel_->adjustSize();
    panel_->move((parent_->width() - panel_->width()) / 2, (parent_->height() - panel_->height()) / 3);
    panel_->show();
    panel_->raise();
}

void QtProgress::Paint(bool always) {
    if (!panel_ || (!always && lastPaint_.elapsed() < kPaintEvery))
        return;
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    lastPaint_.restart();
}

void QtProgress::SetRange(int low, int high) {
    MakePanel();
    if (!panel_)
        return;
    bar_->setRange(low, high);
    bar_->setValue(low);
}

void QtProgress::SetMessage(const std::string& text) {
    MakePanel();
    if (!panel_)
        return;
    message_->setText(ToQString(text));
    Paint(false);
}

void QtProgress::StepIt() {
    if (panel_)
        SetPosition(bar_->value() + 1);
}

void QtProgress::SetPosition(int position) {
    if (!panel_)
        return;
    bar_->setValue(position);
    Paint(false);
}

void QtProgress::Show() {
    MakePanel();
    if (!panel_)
        return;
    bar_->show();
    Place();
    Paint(true);
}

void QtProgress::Hide() {
    delete panel_;
}

void QtProgress::ShowStandBy(const std::string& text) {
    MakePanel();
    if (!panel_)
        return;
    message_->setText(ToQString(text));
    bar_->hide();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    Place();
    Paint(true);
}

void QtProgress::HideStandBy() {
    if (panel_)
        QApplication::restoreOverrideCursor();
    Hide();
}

}  // namespace lore
