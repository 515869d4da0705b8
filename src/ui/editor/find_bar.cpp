#include "ui/editor/find_bar.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/look/announce.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kSearchAgain = 150;  // milliseconds after a change of the text
const QColor kHitColor(255, 214, 90);

}  // namespace

FindBar::FindBar(RichTextEdit& edit, const Theme& theme, QWidget* parent)
    : QWidget(parent), edit_(edit), theme_(theme) {
    setObjectName("findBar");
    setAccessibleName(tr("Find and replace"));
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(kSpace * 2, kSpace, kSpace * 2, kSpace);
    rows->setSpacing(kSpace);
    MakeRow();
    MakeReplaceRow();
    MakeActions();
    again_.setSingleShot(true);
    again_.setInterval(kSearchAgain);
    connect(&again_, &QTimer::timeout, this, &FindBar::Search);
    connect(&edit_, &QTextEdit::textChanged, this, [this] {
        if (isVisible())
            again_.start();
    });
    connect(edit_.verticalScrollBar(), &QScrollBar::valueChanged, this, &FindBar::ShowHits);
    connect(&edit_, &QTextEdit::cursorPositionChanged, this, &FindBar::ShowCount);
    connect(&theme_, &Theme::Changed, this, &FindBar::ShowHits);
    hide();
}

QToolButton* FindBar::MakeTool(const char* icon, const QString& text, void (FindBar::*slot)()) {
    auto* const button = new QToolButton(this);
    button->setAutoRaise(true);
    button->setIcon(theme_.Icon(icon));
    button->setToolTip(text);
    button->setAccessibleName(text);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, slot);
    return button;
}

void FindBar::MakeRow() {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    find_ = NewTextField(this);
    find_->setObjectName("findField");
    find_->setPlaceholderText(tr("Find in note"));
    find_->setAccessibleName(tr("Find in note"));
    OfferClearing(*find_);
    count_ = new QLabel(this);
    count_->setMinimumWidth(fontMetrics().horizontalAdvance(tr("%1 of %2").arg(8888).arg(8888)));
    QToolButton* const previous = MakeTool("chevron-up", tr("Previous hit (Shift+F3)"), &FindBar::FindPrevious);
    QToolButton* const next = MakeTool("chevron-down", tr("Next hit (F3)"), &FindBar::FindNext);
    matchCase_ = new QCheckBox(tr("Match &case"), this);
    wholeWords_ = new QCheckBox(tr("&Whole words"), this);
    QToolButton* const close = MakeTool("x", tr("Close (Esc)"), &FindBar::Close);
    row->addWidget(find_, 1);
    row->addWidget(count_);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(matchCase_);
    row->addWidget(wholeWords_);
    row->addWidget(close);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(find_, &QLineEdit::textChanged, this, [this] {
        Search();
        if (!hits_.empty())
            Step(0);
    });
    connect(matchCase_, &QCheckBox::toggled, this, &FindBar::Search);
    connect(wholeWords_, &QCheckBox::toggled, this, &FindBar::Search);
}

void FindBar::MakeReplaceRow() {
    replaceRow_ = new QWidget(this);
    auto* const row = MakeInner<QHBoxLayout>(replaceRow_, kSpace * 2);
    replace_ = NewTextField(replaceRow_);
    replace_->setObjectName("replaceField");
    replace_->setPlaceholderText(tr("Replace with"));
    replace_->setAccessibleName(tr("Replace with"));
    row->addWidget(replace_, 1);
    const std::pair<QString, void (FindBar::*)()> buttons[] = {{tr("&Replace"), &FindBar::Replace},
                                                               {tr("Replace &all"), &FindBar::ReplaceAll}};
    for (const auto& [text, slot] : buttons) {
        QPushButton* const button = MakeButton(text, replaceRow_);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
        replaceButtons_.push_back(button);
    }
    layout()->addWidget(replaceRow_);
}

void FindBar::MakeActions() {
    struct Entry {
        const char* text;
        QKeySequence shortcut;
        void (FindBar::*slot)();
    };
    const Entry entries[] = {
        {QT_TR_NOOP("&Find..."), QKeySequence::Find, &FindBar::ShowFind},
        {QT_TR_NOOP("&Replace..."), QKeySequence(Qt::CTRL | Qt::Key_H), &FindBar::ShowReplace},
        {QT_TR_NOOP("Find &next"), QKeySequence(Qt::Key_F3), &FindBar::FindNext},
        {QT_TR_NOOP("Find &previous"), QKeySequence(Qt::SHIFT | Qt::Key_F3), &FindBar::FindPrevious}};
    for (const Entry& entry : entries) {
        auto* const action = new QAction(tr(entry.text), this);
        action->setShortcut(entry.shortcut);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(action, &QAction::triggered, this, entry.slot);
        edit_.addAction(action);
        addAction(action);
    }
}

void FindBar::ShowFind() {
    Show(false);
}

void FindBar::ShowReplace() {
    Show(true);
}

void FindBar::Show(bool withReplace) {
    const QString selected = edit_.textCursor().selectedText();
    replaceRow_->setVisible(withReplace);
    show();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        find_->setText(selected);
    find_->setFocus(Qt::ShortcutFocusReason);
    find_->selectAll();
    Search();
}

void FindBar::Close() {
    hide();
    hits_.clear();
    edit_.setExtraSelections({});
    edit_.setFocus(Qt::OtherFocusReason);
}

void FindBar::Search() {
    FindHits();
    ShowCount();
}

void FindBar::FindHits() {
    hits_ = SearchText(*edit_.document(), {find_->text(), matchCase_->isChecked(), wholeWords_->isChecked()});
    again_.stop();
    ShowHits();
    for (QPushButton* const button : replaceButtons_)
        button->setEnabled(!hits_.empty());
}

void FindBar::Step(int by) {
    if (!isVisible() && !find_->text().isEmpty())
        Show(false);
    if (again_.isActive())
        Search();
    if (hits_.empty())
        return Announce(*this, count_->text());
    const QTextCursor cursor = edit_.textCursor();
    // Forward from behind the selection, backward from in front of it; what is selected itself stays with 0.
    const int from = by > 0 ? cursor.selectionEnd() : cursor.selectionStart();
    auto hit = std::lower_bound(hits_.begin(), hits_.end(), from,
                                [](const SearchHit& each, int at) { return each.begin < at; });
    if (by < 0)
        hit = hit == hits_.begin() ? hits_.end() - 1 : hit - 1;
    else if (hit == hits_.end())
        hit = hits_.begin();
    Select(static_cast<size_t>(hit - hits_.begin()));
}

void FindBar::Select(size_t hit) {
    QTextCursor cursor(edit_.document());
    cursor.setPosition(hits_[hit].begin);
    cursor.setPosition(hits_[hit].end, QTextCursor::KeepAnchor);
    edit_.setTextCursor(cursor);
    edit_.ensureCursorVisible();
    ShowHits();
}

void FindBar::ShowHits() {
    if (!isVisible())
        return;
    const int first = edit_.cursorForPosition(QPoint(0, 0)).position();
    const int last = edit_.cursorForPosition(edit_.viewport()->rect().bottomRight()).position();
    QList<QTextEdit::ExtraSelection> marks;
    auto hit = std::lower_bound(hits_.begin(), hits_.end(), first,
                                [](const SearchHit& each, int at) { return each.end < at; });
    for (; hit != hits_.end() && hit->begin <= last; ++hit) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(edit_.document());
        mark.cursor.setPosition(hit->begin);
        mark.cursor.setPosition(hit->end, QTextCursor::KeepAnchor);
        const QColor ground = theme_.Mark(kHitColor);
        mark.format.setBackground(ground);
        mark.format.setForeground(Legible(theme_.Color(ColorRole::Text), ground));
        marks.append(mark);
    }
    edit_.setExtraSelections(marks);
}

void FindBar::ShowCount() {
    if (!isVisible())
        return;
    const QTextCursor cursor = edit_.textCursor();
    const SearchHit selected{cursor.selectionStart(), cursor.selectionEnd()};
    const auto at = std::find(hits_.begin(), hits_.end(), selected);
    if (find_->text().isEmpty())
        ShowResult({});
    else if (hits_.empty())
        ShowResult(tr("No hits"));
    else if (at == hits_.end())
        ShowResult(WithPlural(tr("%n hit(s)", nullptr, static_cast<int>(hits_.size())), hits_.size()));
    else
        ShowResult(tr("%1 of %2").arg(at - hits_.begin() + 1).arg(hits_.size()));
}

void FindBar::ShowResult(const QString& text) {
    if (text == count_->text())
        return;
    count_->setText(text);
    for (QLineEdit* const field : {find_, replace_})
        field->setAccessibleDescription(text);
    // In the text, what is found is read because it is selected.
    if (isAncestorOf(QApplication::focusWidget()))
        Announce(*this, text);
}

void FindBar::Replace() {
    if (again_.isActive())
        Search();
    const QTextCursor cursor = edit_.textCursor();
    const SearchHit selected{cursor.selectionStart(), cursor.selectionEnd()};
    if (std::find(hits_.begin(), hits_.end(), selected) != hits_.end()) {
        ReplaceHits(*edit_.document(), {selected}, replace_->text());
        QTextCursor behind = edit_.textCursor();
        behind.setPosition(selected.begin + static_cast<int>(replace_->text().size()));
        edit_.setTextCursor(behind);
        Search();
    }
    Step(1);
}

void FindBar::ReplaceAll() {
    FindHits();
    const size_t count = hits_.size();
    ReplaceHits(*edit_.document(), hits_, replace_->text());
    FindHits();
    ShowResult(count == 1 ? tr("1 replaced") : tr("%1 replaced").arg(count));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape)
        Close();
    else if (enter && !(event->modifiers() & Qt::ControlModifier) && replace_->hasFocus())
        Replace();
    else if (enter && !(event->modifiers() & Qt::ControlModifier))
        Step(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
    else
        QWidget::keyPressEvent(event);
}

}  // namespace lore
