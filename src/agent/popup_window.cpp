#include "agent/popup_window.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <algorithm>

#include "calendar/event_text.h"
#include "ui/controls/dialog_parts.h"
#include "ui/controls/quiet_view.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/window_place.h"

namespace lore {

namespace {

constexpr int kChars = 66;        // width of the window in characters
constexpr int kTextLines = 9;     // height of the texts
constexpr int kMostRows = 5;      // of the list, without scrolling
constexpr int kSnoozeChars = 12;  // width of the list of times, at least
constexpr int kBell = 24;         // pixels

}  // namespace

PopupWindow::PopupWindow(PopupAgent& agent, const Theme& theme, std::function<void(const Popup&)> open)
    : QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint), agent_(agent), theme_(theme), open_(std::move(open)) {
    setObjectName("popups");
    setWindowTitle(tr("Reminders"));  // the program's name is put behind it
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 3);
    MakeList();
    MakeText();
    MakeButtons();
    connect(&theme_, &Theme::Changed, this, &PopupWindow::Restyle);
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this), &QShortcut::activated, this,
            &PopupWindow::Dismiss);
    Restyle();
}

void PopupWindow::MakeList() {
    list_ = new QuietView<QListWidget>(this);
    list_->setObjectName("list");
    list_->setAccessibleName(tr("Reminders"));
    list_->setUniformItemSizes(true);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setTextElideMode(Qt::ElideRight);
    layout()->addWidget(list_);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        const auto& popups = agent_.Schedule().OnScreen();
        if (row < 0 || static_cast<size_t>(row) >= popups.size())
            return;
        chosen_ = popups[static_cast<size_t>(row)].Key();
        ShowChosen();
    });
    connect(list_, &QListWidget::itemActivated, this, &PopupWindow::Open);
}

QLabel* PopupWindow::MakeLabel(const char* name) {
    auto* const label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setFocusPolicy(Qt::ClickFocus);
    return label;
}

void PopupWindow::MakeText() {
    bell_ = new QLabel(this);
    label_ = MakeLabel("label");
    time_ = MakeLabel("time");
    late_ = MakeLabel("late");
    late_->setWordWrap(false);
    late_->setMargin(kSpace);
    late_->setAutoFillBackground(true);
    message_ = MakeLabel("message");
    description_ = MakeLabel("description");
    auto* const head = new QGridLayout;
    head->setHorizontalSpacing(kSpace * 3);
    head->setVerticalSpacing(kSpace);
    head->setColumnStretch(1, 1);
    head->addWidget(bell_, 0, 0, Qt::AlignTop);
    head->addWidget(label_, 0, 1);
    head->addWidget(time_, 1, 1);
    head->addWidget(late_, 2, 1, Qt::AlignLeft);
    static_cast<QVBoxLayout*>(layout())->addLayout(head);

    auto* const inside = new QWidget(this);
    auto* const column = MakeInner<QVBoxLayout>(inside, kSpace * 3);
    column->addWidget(message_);
    column->addWidget(description_);
    column->addStretch(1);
    texts_ = new QScrollArea(this);
    texts_->setObjectName("texts");
    texts_->setAccessibleName(tr("Message and description"));
    texts_->setWidgetResizable(true);
    texts_->setFrameShape(QFrame::NoFrame);
    texts_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    texts_->setWidget(inside);
    static_cast<QVBoxLayout*>(layout())->addWidget(texts_, 1);
}

void PopupWindow::MakeButtons() {
    openButton_ = new QPushButton(tr("&Open"), this);
    openButton_->setObjectName("open");
    openButton_->setToolTip(tr("Opens what the reminder is about in Lorebinder"));
    snoozeFor_ = new QComboBox(this);
    snoozeFor_->setObjectName("snoozeFor");
    snoozeFor_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    snoozeFor_->setMinimumContentsLength(kSnoozeChars);
    snoozeFor_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);  // the window grows rather than cut it
    NameBox(*snoozeFor_, tr("Snooze for"));
    snooze_ = new QPushButton(tr("&Snooze"), this);
    snooze_->setObjectName("snooze");
    dismissAll_ = new QPushButton(tr("Dismiss &All"), this);
    dismissAll_->setObjectName("dismissAll");
    dismiss_ = new QPushButton(tr("&Dismiss"), this);
    dismiss_->setObjectName("dismiss");
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(openButton_);
    row->addStretch(1);
    row->addWidget(snoozeFor_);
    row->addWidget(snooze_);
    row->addSpacing(kSpace * 2);
    row->addWidget(dismissAll_);
    row->addWidget(dismiss_);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(openButton_, &QPushButton::clicked, this, &PopupWindow::Open);
    connect(snooze_, &QPushButton::clicked, this, &PopupWindow::Snooze);
    connect(dismiss_, &QPushButton::clicked, this, &PopupWindow::Dismiss);
    connect(dismissAll_, &QPushButton::clicked, this, [this] {
        agent_.DismissAll();
        Done();
    });
}

void PopupWindow::Restyle() {
    bell_->setPixmap(theme_.IconPixmap("bell", ColorRole::Accent, kBell, devicePixelRatioF()));
    label_->setFont(theme_.Font(TextSize::Title));
    const auto color = [this](QLabel* label, QPalette::ColorRole part, ColorRole role) {
        QPalette palette = label->palette();
        palette.setColor(part, theme_.Color(role));
        label->setPalette(palette);
    };
    color(time_, QPalette::WindowText, ColorRole::DimText);
    color(description_, QPalette::WindowText, ColorRole::DimText);
    color(late_, QPalette::WindowText, ColorRole::WarningText);
    color(late_, QPalette::Window, ColorRole::Warning);
}

const Popup* PopupWindow::Chosen() const {
    const auto& popups = agent_.Schedule().OnScreen();
    const auto found = std::find_if(popups.begin(), popups.end(),
                                    [this](const Popup& popup) { return chosen_ && popup.Key() == *chosen_; });
    return found == popups.end() ? nullptr : &*found;
}

void PopupWindow::FillList() {
    const auto& popups = agent_.Schedule().OnScreen();
    const QSignalBlocker quiet(list_);
    const int before = std::max(list_->currentRow(), 0);
    list_->clear();
    int row = -1;
    for (const Popup& popup : popups) {
        const PopupText text = TextOf(popup, agent_.Now());
        const std::string due = popup.due.Format("%m/%d/%y") + "  " + ClockTime(popup.due);
        list_->addItem(tr("%1  -  %2").arg(ToQString(due), ToQString(text.label).simplified()));
        if (chosen_ && popup.Key() == *chosen_)
            row = list_->count() - 1;
    }
    // The neighbour of one that has gone, so that the keys go on where they were.
    if (row < 0)
        row = std::min(before, list_->count() - 1);
    list_->setCurrentRow(row);
    chosen_ = row < 0 ? std::nullopt : std::optional(popups[static_cast<size_t>(row)].Key());
    SetListRows(kMostRows);
    list_->setVisible(list_->count() > 1);
}

/// What is beyond them is scrolled.
void PopupWindow::SetListRows(int most) {
    const int rows = std::min(list_->count(), most);
    list_->setFixedHeight(rows * std::max(list_->sizeHintForRow(0), 1) + 2 * list_->frameWidth());
    layout()->activate();
}

void PopupWindow::ShowChosen() {
    const Popup* const popup = Chosen();
    for (QWidget* const control : std::initializer_list<QWidget*>{snoozeFor_, snooze_, dismiss_})
        control->setVisible(popup);
    dismissAll_->setVisible(list_->count() > 1);
    if (!popup)
        return ShowNothing();
    const PopupText text = TextOf(*popup, agent_.Now());
    const auto set = [](QLabel* label, const std::string& shown) {
        label->setText(ToQString(shown));
        label->setVisible(!shown.empty());
    };
    set(label_, text.label);
    set(time_, text.time);
    set(late_, text.late);
    set(message_, text.message);
    set(description_, text.description);
    FillSnooze(*popup);
    if (isPlaced_)
        MakeRoom();
}

void PopupWindow::ShowNothing() {
    const DateTime next = agent_.Schedule().NextTime();
    label_->setText(tr("No reminder is waiting"));
    const std::string when = next.Format("%A, %B %d %Y") + " at " + ClockTime(next);
    time_->setText(next.IsValid() ? tr("The next one comes on %1.").arg(ToQString(when))
                                  : tr("Popup reminders of the Event Calendar come up here at their time."));
    time_->show();
    for (QLabel* const label : {late_, message_, description_})
        label->hide();
}

void PopupWindow::FillSnooze(const Popup& popup) {
    const std::pair now(popup.Key(), popup.due);
    const bool isSame = snoozeOf_ == now;
    QStringList choices;
    for (const SnoozeChoice& choice : SnoozeChoices(popup.reminder, agent_.Now()))
        choices.append(tr(choice.text));
    if (isSame && choices.size() == snoozeFor_->count())
        return;
    const qsizetype kept = isSame ? choices.indexOf(snoozeFor_->currentText()) : -1;
    snoozeOf_ = now;
    snoozeFor_->clear();
    snoozeFor_->addItems(choices);
    snoozeFor_->setCurrentIndex(kept < 0 ? static_cast<int>(kUsualSnooze) : static_cast<int>(kept));
    if (!isSame)
        texts_->verticalScrollBar()->setValue(0);
    layout()->activate();  // another reminder may have longer choices
}

void PopupWindow::FollowTime() {
    const Popup* const popup = Chosen();
    if (popup && ToQString(TextOf(*popup, agent_.Now()).time) != time_->text())
        ShowChosen();
}

void PopupWindow::Refresh(size_t came) {
    FillList();
    ShowChosen();
    if (agent_.Schedule().OnScreen().empty())
        return hide();
    if (came == 0 && !isVisible())
        return;
    Place();
    show();
    raise();
}

void PopupWindow::BringUp() {
    FillList();
    ShowChosen();
    Place();
    showNormal();
    raise();
    activateWindow();
}

void PopupWindow::Place() {
    const int width = std::max(fontMetrics().averageCharWidth() * kChars + kSpace * 8, layout()->minimumSize().width());
    texts_->setMinimumHeight(fontMetrics().lineSpacing() * kTextLines / 2);
    if (isPlaced_)
        return;
    isPlaced_ = true;
    resize(std::max(width, minimumSizeHint().width()),
           std::max(minimumSizeHint().height(), fontMetrics().lineSpacing() * (kTextLines + 8)));
    MakeRoom();
    QRect place = geometry();
    place.moveBottomRight(RoomForWindow(*this).bottomRight() - QPoint(kSpace, kSpace) * 4);
    setGeometry(place);
}

void PopupWindow::MakeRoom() {
    const int room = RoomForWindow(*this).height();
    const auto needed = [this] { return layout()->totalMinimumHeightForWidth(width()); };
    SetListRows(kMostRows);
    for (int rows = std::min(list_->count(), kMostRows) - 1; rows > 0 && needed() > room; --rows)
        SetListRows(rows);
    resize(width(), std::max(height(), needed()));
    FitWindow(*this);
}

void PopupWindow::Snooze() {
    const Popup* const popup = Chosen();
    if (!popup)
        return;
    // Counted from now, not from when the list was filled.
    const std::vector<SnoozeChoice> choices = SnoozeChoices(popup->reminder, agent_.Now());
    const auto index = static_cast<size_t>(std::max(snoozeFor_->currentIndex(), 0));
    if (index >= choices.size())
        return ShowChosen();  // the event has just started: the user sees what is left, and chooses
    agent_.Snooze(popup->Key(), choices[index]);
    Done();
}

void PopupWindow::Open() {
    if (const Popup* const popup = Chosen()) {
        const Popup opened = *popup;
        agent_.Dismiss(opened.Key());
        open_(opened);
        return Done();
    }
    open_({});
    hide();
}

void PopupWindow::Dismiss() {
    if (const Popup* const popup = Chosen())
        agent_.Dismiss(popup->Key());
    Done();
}

void PopupWindow::Done() {
    Refresh(0);
    emit Changed();
}

void PopupWindow::PutOffAll() {
    agent_.SnoozeAll();  // they may have come between the user and another key
    Done();
}

// The end of the agent closes the window too: what nobody has answered then comes again with the next start.
void PopupWindow::closeEvent(QCloseEvent* event) {
    event->accept();
    if (event->spontaneous())
        PutOffAll();
}

void PopupWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        PutOffAll();
    else
        QWidget::keyPressEvent(event);
}

}  // namespace lore
