#include "ui/ports/qt_progress.h"

#include <QApplication>
#include <QDragLeaveEvent>
#include <QEvent>
#include <QEventLoop>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <system_error>
#include <thread>
#include <utility>

#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {
constexpr qint64 kPaintEvery = 5;  // milliseconds; with a step of the work less than a picture of the screen
constexpr int kPanelChars = 48;    // width of the panel in characters
constexpr int kStopAfter = 400;    // milliseconds of work after which it can be stopped

/// While it lives, windows take no input besides a click on the stop button and Esc. A question that is opened
/// meanwhile takes all of it: the work could not end before it is answered.
class InputGuard : public QObject {
public:
    InputGuard(std::stop_source& stop, const QPointer<QWidget>& panel)
        : stop_(stop), panel_(panel), before_(QApplication::activeModalWidget()) {
        qApp->installEventFilter(this);
    }
    void Stop() { stop_.request_stop(); }

    bool eventFilter(QObject* target, QEvent* event) override {
        if (IsOfQuestion(*target))
            return false;
        switch (event->type()) {
            case QEvent::KeyPress:
                if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
                    Stop();
                return target->isWidgetType();
            case QEvent::Close:
                event->ignore();
                return target->isWidgetType();
            case QEvent::Shortcut:
                return true;
            case QEvent::KeyRelease:
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonRelease:
            case QEvent::MouseButtonDblClick:
            case QEvent::Wheel:
            case QEvent::ContextMenu:
            case QEvent::DragEnter:
            case QEvent::Drop:
                return target->isWidgetType() && !IsOfPanel(static_cast<QWidget*>(target));
            default:
                return false;
        }
    }

private:
    bool IsOfPanel(QWidget* widget) const { return panel_ && (widget == panel_ || panel_->isAncestorOf(widget)); }

    /// Windows themselves, which hand events on to their widgets, count as those of the question.
    bool IsOfQuestion(const QObject& target) const {
        const QWidget* const question = QApplication::activeModalWidget();
        return question && question != before_ &&
               (!target.isWidgetType() || static_cast<const QWidget&>(target).window() == question);
    }

    std::stop_source& stop_;
    const QPointer<QWidget>& panel_;
    const QPointer<QWidget> before_;  // the dialog that the work began in
};

/// A drop comes however the events are chosen. While it lives, fields don't take one: what a command has read from them
/// already would lack it. Whoever drags keeps what they have. Windows see for themselves.
class DropGuard : public QObject {
public:
    DropGuard() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* target, QEvent* event) override {
        if (event->type() != QEvent::Drop || !target->isWidgetType() || static_cast<QWidget*>(target)->isWindow())
            return false;
        QDragLeaveEvent leaves;
        QCoreApplication::sendEvent(target, &leaves);
        event->ignore();
        return true;
    }
};
}  // namespace

QtProgress::QtProgress(const Theme& theme) : theme_(theme) {
    lastPaint_.start();
}

QtProgress::~QtProgress() {
    ReleaseCursor();
    delete panel_;
}

void QtProgress::MakePanel() {
    QWidget* const dialog = QApplication::activeModalWidget();
    QWidget* const below = dialog ? dialog : parent_.data();
    if (panel_ || !below)
        return;
    auto* const panel = new QFrame(below);
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
    stop_ = new QPushButton(QObject::tr("Cancel"), panel);
    stop_->hide();
    layout->addWidget(stop_, 0, Qt::AlignRight);
    panel_ = panel;
    text_.clear();
}

void QtProgress::Place() {
    const QWidget& below = *panel_->parentWidget();
    panel_->setFixedWidth(std::min(below.width() - kSpace * 4, panel_->fontMetrics().averageCharWidth() * kPanelChars));
    panel_->adjustSize();
    panel_->move((below.width() - panel_->width()) / 2, (below.height() - panel_->height()) / 3);
    panel_->show();
    panel_->raise();
}

void QtProgress::Paint(bool always) {
    if (!panel_ || (!always && lastPaint_.elapsed() < kPaintEvery))
        return;
    ShowState();
    const Busy busy;
    const DropGuard guard;
    QApplication::processEvents(cancelGuard_ ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    lastPaint_.restart();
}

// Widgets are told only what is painted: a load steps ten thousand times in the time of one picture.
void QtProgress::ShowState() {
    bar_->setRange(low_, high_);
    bar_->setValue(position_);
    message_->setText(ToQString(text_));
}

void QtProgress::SetRange(int low, int high) {
    MakePanel();
    low_ = position_ = low;
    high_ = high;
}

void QtProgress::SetMessage(const std::string& text) {
    MakePanel();
    text_ = text;
    Paint(false);
}

void QtProgress::StepIt() {
    SetPosition(position_ + 1);
}

void QtProgress::SetPosition(int position) {
    position_ = std::min(position, high_);
    Paint(false);
}

void QtProgress::Show() {
    MakePanel();
    if (!panel_)
        return;
    bar_->show();
    cancel_ = std::stop_source();
    shown_.start();
    ShowState();
    Place();
    Paint(true);
}

void QtProgress::Hide() {
    cancelGuard_.reset();
    ReleaseCursor();
    delete panel_;
    // A flow of several parts asks once more between two panels; the next command begins anew.
    if (cancel_.stop_requested())
        QTimer::singleShot(0, &alive_, [this] { cancel_ = std::stop_source(); });
}

bool QtProgress::Cancelled() const {
    if (panel_ && !cancelGuard_ && shown_.isValid() && shown_.elapsed() > kStopAfter) {
        auto guard = std::make_unique<InputGuard>(cancel_, panel_);
        InputGuard* const stopper = guard.get();
        QObject::connect(stop_, &QPushButton::clicked, stopper, [stopper] { stopper->Stop(); });
        cancelGuard_ = std::move(guard);
        stop_->show();
        panel_->adjustSize();
    }
    return cancel_.stop_requested();
}

/// The panel with a text and no bar; false where there is no window to show it on.
bool QtProgress::ShowText(const std::string& text) {
    MakePanel();
    if (!panel_)
        return false;
    text_ = text;
    ShowState();
    bar_->hide();
    return true;
}

void QtProgress::ShowStandBy(const std::string& text) {
    if (!ShowText(text))
        return;
    // A command may show one text after the other, and hides the window once.
    if (!std::exchange(holdsCursor_, true))
        QApplication::setOverrideCursor(Qt::WaitCursor);
    Place();
    Paint(true);
}

void QtProgress::HideStandBy() {
    Hide();
}

void QtProgress::ReleaseCursor() {
    if (std::exchange(holdsCursor_, false))
        QApplication::restoreOverrideCursor();
}

void QtProgress::ShowStop(const std::string& text, QObject& stopper) {
    if (!ShowText(text))
        return;
    stop_->show();
    QObject::connect(stop_, &QPushButton::clicked, &stopper, [&stopper] { static_cast<InputGuard&>(stopper).Stop(); });
    Place();
}

bool QtProgress::Run(const std::string& text, const Work& work) {
    const Busy busy;
    std::stop_source stop;
    InputGuard guard(stop, panel_);
    QEventLoop loop;
    std::jthread worker;
    try {
        worker = std::jthread([&] {
            work(stop.get_token());
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
    } catch (const std::system_error&) {
        work({});  // a system that gives no thread
        return true;
    }
    const bool hadPanel = panel_;
    QTimer::singleShot(kStopAfter, &guard, [&] { ShowStop(text, guard); });
    loop.exec();
    worker.join();
    if (panel_ && !hadPanel)
        Hide();
    else if (panel_ && !cancelGuard_)
        stop_->hide();
    return !stop.stop_requested();
}

}  // namespace lore
