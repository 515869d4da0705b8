#include "ui/controls/dialog_frame.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <functional>
#include <utility>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/fault_bar.h"
#include "ui/controls/main_button_keys.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme_look.h"
#include "ui/look/window_place.h"

namespace lore {

namespace {

/// What is scrolled. Its lists give way before anything has to be.
class ContentPage : public QWidget {
public:
    using QWidget::QWidget;
    int heightForWidth(int width) const override { return layout()->totalMinimumHeightForWidth(width); }
};

/// As large as its content, which it scrolls only where that needs more than there can be.
class ContentPane : public QScrollArea {
public:
    /// `largest` tells what there can be.
    ContentPane(std::function<QSize()> largest, QWidget* parent) : QScrollArea(parent), largest_(std::move(largest)) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        auto* const page = new ContentPage(this);
        rows_ = new QVBoxLayout(page);
        rows_->setContentsMargins(0, 0, 0, 0);
        setWidget(page);
        connect(qApp, &QApplication::focusChanged, this, &ContentPane::Reveal);
    }
    // Its content gives the focus up as it goes, when there is no pane left to show it in.
    ~ContentPane() override { disconnect(qApp, nullptr, this, nullptr); }

    QVBoxLayout* Rows() const { return rows_; }

    QSize minimumSizeHint() const override {
        const QSize needed = rows_->minimumSize(), largest = largest_();
        QSize least = WithBars(needed);
        // What is scrolled anyway may be smaller than the screen too.
        if (needed.width() > largest.width())
            least.setWidth(largest.width() / 2);
        if (needed.height() > largest.height())
            least.setHeight(largest.height() / 2);
        return least.boundedTo(largest);
    }
    QSize sizeHint() const override { return WithBars(rows_->sizeHint()).boundedTo(largest_()); }
    bool hasHeightForWidth() const override { return rows_->hasHeightForWidth(); }
    int heightForWidth(int width) const override {
        return std::min(rows_->minimumHeightForWidth(width), largest_().height());
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget() && event->type() == QEvent::LayoutRequest) {
            updateGeometry();
            parentWidget()->layout()->activate();
            QScrollArea::event(event);  // with the page as large as it has to be now
        }
        return QScrollArea::eventFilter(watched, event);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        // The dialog's, as long as there is nothing to scroll.
        if (verticalScrollBar()->maximum() > 0 || horizontalScrollBar()->maximum() > 0)
            return QScrollArea::keyPressEvent(event);
        event->ignore();
    }

private:
    QSize WithBars(const QSize& size) const {
        const QSize needed = rows_->minimumSize(), largest = largest_();
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        return size + QSize(needed.height() > largest.height() ? bar : 0, needed.width() > largest.width() ? bar : 0);
    }

    /// Keys take the focus to controls that are out of sight; what is under the mouse is left where it is.
    void Reveal(const QWidget*, QWidget* now) {
        if (!now || !widget()->isAncestorOf(now) || QApplication::mouseButtons() != Qt::NoButton)
            return;
        for (QWidget* within = now; within != this; within = within->parentWidget()) {
            if (auto* const area = qobject_cast<QScrollArea*>(within->parentWidget()->parentWidget()))
                RevealIn(*area, *now);
        }
    }
    /// Of what is higher than the area, its top.
    static void RevealIn(QScrollArea& area, QWidget& now) {
        const int room = area.viewport()->height();
        if (now.height() <= room)
            return area.ensureWidgetVisible(&now);
        const QPoint top = now.mapTo(area.widget(), QPoint());
        area.ensureVisible(top.x(), top.y(), 0, room / 4);
    }

    std::function<QSize()> largest_;
    QVBoxLayout* rows_ = nullptr;
};

}  // namespace

DialogFrame::DialogFrame(const QString& title, const char* place, SettingsStore& store, QWidget* parent)
    : QDialog(parent), place_(place), store_(store) {
    setWindowTitle(title);
    setObjectName(QString::fromLatin1(place));
    setModal(true);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 5, kSpace * 5, kSpace * 5, kSpace * 4);
    layout->setSpacing(kSpace * 4);
    buttons_ = new QBoxLayout(QBoxLayout::LeftToRight);
    sideRow_ = new QHBoxLayout;
    mainRow_ = new QHBoxLayout;
    for (QBoxLayout* const row : std::initializer_list<QBoxLayout*>{buttons_, sideRow_, mainRow_})
        row->setSpacing(kSpace * 2);
    buttons_->addLayout(sideRow_);
    buttons_->addLayout(mainRow_, 1);
    sideRow_->addStretch(1);
    mainRow_->addStretch(1);
    auto* const pane = new ContentPane([this] { return LargestContent(); }, this);
    pane_ = pane;
    content_ = pane->Rows();
    content_->setSpacing(kSpace * 3);
    layout->addWidget(pane, 1);
    layout->addLayout(buttons_);
    OnCtrlEnter(this, [this] {
        if (main_)
            main_->click();
    });
}

QPushButton* DialogFrame::AddButton(const QString& text) {
    QPushButton* const button = NewButton(text);
    mainRow_->addWidget(button);
    return button;
}

QPushButton* DialogFrame::AddSideButton(const QString& text) {
    QPushButton* const button = NewButton(text);
    sideRow_->insertWidget(sideButtons_++, button);
    return button;
}

QPushButton* DialogFrame::NewButton(const QString& text) {
    QPushButton* const button = MakeButton(text, this);
    connect(button, &QPushButton::pressed, this, &DialogFrame::TakeWhatIsTyped);
    return button;
}

/// Keys press a button while a date or a number is being typed in a field, which would have told of it when it lost the
/// focus.
void DialogFrame::TakeWhatIsTyped() {
    if (auto* const field = qobject_cast<QAbstractSpinBox*>(focusWidget()))
        field->interpretText();
}

void DialogFrame::SetMainButton(QPushButton* button) {
    main_ = button;
    button->setDefault(true);
}

FaultBar& DialogFrame::Faults(const Theme& theme) {
    if (faultBar_)
        return *faultBar_;
    faultBar_ = new FaultBar(theme, this);
    faultBar_->OfferTryAgain(false);
    content_->insertWidget(0, faultBar_);
    // What stands first comes first with Tab, though the dialog may have all its controls by now.
    const Qt::FocusPolicy before = focusPolicy();
    setFocusPolicy(Qt::TabFocus);  // else it gives no place in the order
    QWidget* last = this;
    for (QPushButton* const button : faultBar_->findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
        setTabOrder(std::exchange(last, button), button);
    }
    setFocusPolicy(before);
    // Once the bar has its place in the layout.
    connect(faultBar_, &FaultBar::Changed, this, &DialogFrame::FitOnScreen, Qt::QueuedConnection);
    const auto tryAgain = [this] {
        if (const std::function<bool()> command = faultBar_->TakeFailed())
            faultBar_->Run(command);
    };
    connect(faultBar_, &FaultBar::TryAgainRequested, this, tryAgain, Qt::QueuedConnection);
    return *faultBar_;
}

void DialogFrame::AcceptAfter(const std::function<bool()>& save, const Theme& theme) {
    Faults(theme).Run([this, save] {
        const bool isDone = save();
        if (isDone)
            accept();
        return isDone;
    });
}

void DialogFrame::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QDialog::keyPressEvent(event);
    QWidget* const focus = focusWidget();
    if (qobject_cast<QPushButton*>(focus) || qobject_cast<QToolButton*>(focus))
        return static_cast<QAbstractButton*>(focus)->click();
    if (qobject_cast<QAbstractItemView*>(focus))
        return event->accept();  // it has had its key
    QDialog::keyPressEvent(event);
}

void DialogFrame::done(int result) {
    StoreWindowPlace(store_, place_, *this);
    QDialog::done(result);
}

void DialogFrame::setVisible(bool visible) {
    if (visible) {
        pane_->updateGeometry();  // what was put in since it was asked for its size
        FoldButtons();
        if (!isPlaced_ && !testAttribute(Qt::WA_Resized))
            resize(sizeHint());
    }
    QDialog::setVisible(visible);
}

/// Text that is wrapped has its height from the dialog's width, and lists open higher than they must be.
QSize DialogFrame::sizeHint() const {
    QSize size = QDialog::sizeHint();
    if (content_->hasHeightForWidth()) {
        const QMargins edges = layout()->contentsMargins();
        const int width = size.width() - edges.left() - edges.right();
        size.rheight() += content_->heightForWidth(width) - content_->minimumHeightForWidth(width);
    }
    return size.boundedTo(LargestSize());
}

QSize DialogFrame::LargestSize() const {
    return RoomForWindow(*this).size();
}

void DialogFrame::Reveal(const QWidget& control, const QRect& part) {
    const QPoint middle = control.mapTo(pane_->widget(), part.center());
    pane_->ensureVisible(middle.x(), middle.y(), part.width() / 2 + 1, part.height() / 2 + 1);
}

QSize DialogFrame::LargestContent() const {
    return LargestSize().shrunkBy(layout()->contentsMargins()) -
           QSize(0, layout()->spacing() + buttons_->minimumSize().height());
}

/// The buttons at the left go above the others where one row doesn't hold all.
void DialogFrame::FoldButtons() {
    const int wanted = sideRow_->minimumSize().width() + buttons_->spacing() + mainRow_->minimumSize().width();
    const bool fits = wanted <= LargestSize().shrunkBy(layout()->contentsMargins()).width();
    buttons_->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

bool DialogFrame::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest)
        FoldButtons();
    return QDialog::event(event);
}

void DialogFrame::showEvent(QShowEvent* event) {
    if (event->spontaneous())  // it has been minimised
        return QDialog::showEvent(event);
    const bool isFirst = !std::exchange(isPlaced_, true);
    if (isFirst && !RestoreWindowPlace(*this, store_, place_))
        ShowAllThatCanBe();
    FitOnScreen();
    QDialog::showEvent(event);  // without a kept place it goes over the middle of its parent
    FitWindow(*this);
}

/// What has to be scrolled gets the whole screen.
void DialogFrame::ShowAllThatCanBe() {
    const QSize needed = content_->minimumSize(), room = LargestContent();
    resize(needed.width() > room.width() ? LargestSize().width() : width(),
           needed.height() > room.height() ? LargestSize().height() : height());
}

/// A dialog takes no notice of the lines that a text needs when it is wrapped, nor of how large the screen is.
void DialogFrame::FitOnScreen() {
    const int needed = layout()->hasHeightForWidth() ? layout()->totalMinimumHeightForWidth(width()) : 0;
    resize(QSize(width(), std::max(height(), needed)).boundedTo(LargestSize()));
}

}  // namespace lore
