#include "ui/editor/spell_marks.h"

#include <QAction>
#include <QElapsedTimer>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolTip>
#include <algorithm>

#include "ui/editor/note_block_data.h"
#include "ui/editor/spell_words.h"
#include "ui/look/announce.h"
#include "ui/look/theme.h"

namespace lore {
namespace {

constexpr int kSliceMilliseconds = 4;
constexpr int kPauseMilliseconds = 250;  // after a key, before checking goes on
constexpr qsizetype kMostVerdicts = 200000;

// What effects of a mark mean.
constexpr int kBoldMark = 2, kItalicMark = 4, kUnderlineMark = 8, kStrikeMark = 64;

}  // namespace

SpellMarks::SpellMarks(QTextEdit& edit, const Theme& theme) : QObject(&edit), edit_(edit), theme_(theme) {
    const std::pair<QString, QKeySequence> steps[] = {{tr("Pre&vious misspelled word"), Qt::SHIFT | Qt::Key_F7},
                                                      {tr("&Next misspelled word"), Qt::Key_F7}};
    for (size_t i = 0; i < steps_.size(); ++i) {
        steps_[i] = new QAction(steps[i].first, this);
        steps_[i]->setShortcut(steps[i].second);
        steps_[i]->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        connect(steps_[i], &QAction::triggered, this, [this, forward = i == 1] { GoToWord(forward); });
        edit_.addAction(steps_[i]);
    }
    timer_.setSingleShot(false);
    connect(&timer_, &QTimer::timeout, this, &SpellMarks::Slice);
    connect(&theme, &Theme::Changed, this, [this] {
        for (QTextBlock block = edit_.document()->begin(); block.isValid(); block = block.next())
            if (block.userData() && !NoteBlockData::Of(block).marks.empty())
                ShowMarks(block);
    });
    connect(&edit, &QTextEdit::cursorPositionChanged, this, [this] {
        // A word is judged once the caret has left it.
        if (edit_.textCursor().position() != typedAt_)
            JudgeTyped();
    });
}

void SpellMarks::JudgeTyped() {
    if (typedAt_ < 0)
        return;
    const QTextBlock block = edit_.document()->findBlock(std::exchange(typedAt_, -1));
    if (!block.isValid())
        return;
    NoteBlockData::Of(block).checked = false;
    nextBlock_ = std::min(nextBlock_, block.blockNumber());
    if (checker_ && enabled_)
        timer_.start(kPauseMilliseconds);
}

void SpellMarks::SetChecker(SpellChecker* checker, const MarkStyle& style, const SkippedWords& skipped) {
    checker_ = checker;
    style_ = style;
    skipped_ = skipped;
    // The marks that stand may have another look now.
    Clear();
    Recheck();
}

void SpellMarks::SetEnabled(bool enabled) {
    if (enabled_ == enabled)
        return;
    enabled_ = enabled;
    Recheck();
}

void SpellMarks::Attach() {
    connect(edit_.document(), &QTextDocument::contentsChange, this, &SpellMarks::OnContentsChange);
    typedAt_ = -1;
    Recheck();
}

void SpellMarks::Recheck() {
    verdicts_.clear();
    nextBlock_ = 0;
    for (QTextBlock block = edit_.document()->begin(); block.isValid(); block = block.next())
        if (block.userData())
            NoteBlockData::Of(block).checked = false;
    if (checker_ && enabled_) {
        timer_.start(0);
    } else {
        timer_.stop();
        Clear();
    }
}

void SpellMarks::Clear() {
    for (QTextBlock block = edit_.document()->begin(); block.isValid(); block = block.next())
        if (block.userData() && !NoteBlockData::Of(block).marks.empty()) {
            NoteBlockData::Of(block).marks.clear();
            ShowMarks(block);
        }
}

void SpellMarks::OnContentsChange(int position, int removed, int added) {
    QTextBlock block = edit_.document()->findBlock(position);
    if (!block.isValid())
        return;
    const int number = block.blockNumber();
    nextBlock_ = std::min(nextBlock_, number);
    typedAt_ = added == 1 && removed == 0 ? position + 1 : -1;
    for (; block.isValid() && block.position() <= position + added; block = block.next()) {
        NoteBlockData& data = NoteBlockData::Of(block);
        data.checked = false;
        if (data.marks.empty())
            continue;
        // Marks behind the place move along; those that it touches go until the words are judged again.
        const int from = position - block.position();
        std::erase_if(data.marks, [from, removed](const SpellMark& mark) {
            return mark.begin + mark.length >= from && mark.begin <= from + removed;
        });
        for (SpellMark& mark : data.marks)
            if (mark.begin > from)
                mark.begin += added - removed;
        const int length = block.length() - 1;
        std::erase_if(data.marks,
                      [length](const SpellMark& mark) { return mark.begin < 0 || mark.begin + mark.length > length; });
        ShowMarks(block);
    }
    if (checker_ && enabled_)
        timer_.start(kPauseMilliseconds);
}

void SpellMarks::Slice() {
    if (!checker_ || !enabled_)
        return timer_.stop();
    timer_.setInterval(0);
    QElapsedTimer clock;
    clock.start();
    // What is seen first.
    QTextBlock block = edit_.cursorForPosition(QPoint(0, 0)).block();
    const QTextBlock last = edit_.cursorForPosition(edit_.viewport()->rect().bottomRight()).block();
    for (; block.isValid() && block.blockNumber() <= last.blockNumber(); block = block.next())
        if (CheckBlock(block) && clock.elapsed() >= kSliceMilliseconds)
            return;
    for (block = edit_.document()->findBlockByNumber(nextBlock_); block.isValid(); block = block.next()) {
        CheckBlock(block);
        nextBlock_ = block.blockNumber() + 1;
        if (clock.elapsed() >= kSliceMilliseconds)
            return;
    }
    timer_.stop();
}

bool SpellMarks::CheckBlock(const QTextBlock& block) {
    NoteBlockData& data = NoteBlockData::Of(block);
    if (data.checked)
        return false;
    const QString text = block.text();
    const int typed = typedAt_ - block.position();
    std::vector<SpellMark> marks;
    for (const SpellMark& word : WordsToCheck(text, skipped_))
        if (!(typedAt_ >= 0 && word.begin + word.length == typed) && !IsRight(text.mid(word.begin, word.length)))
            marks.push_back(word);
    data.checked = true;
    if (data.marks != marks) {
        data.marks = std::move(marks);
        ShowMarks(block);
    }
    return true;
}

bool SpellMarks::IsRight(const QString& word) {
    const auto found = verdicts_.constFind(word);
    if (found != verdicts_.constEnd())
        return *found;
    if (verdicts_.size() > kMostVerdicts)
        verdicts_.clear();
    QString letters = word;
    letters.remove(QChar(0xad));
    const bool right = checker_->Check(letters.toStdString());
    verdicts_.insert(word, right);
    return right;
}

QTextCharFormat MarkLook(const MarkStyle& style, const ThemeLook& theme) {
    const QColor chosen(static_cast<int>(style.color & 255u), static_cast<int>(style.color >> 8 & 255u),
                        static_cast<int>(style.color >> 16 & 255u));
    const QColor color = Legible(chosen, theme.Color(ColorRole::Card), 3.0);
    QTextCharFormat look;
    if (style.effects & kBoldMark)
        look.setFontWeight(QFont::Bold);
    if (style.effects & kItalicMark)
        look.setFontItalic(true);
    if (style.effects & kStrikeMark)
        look.setFontStrikeOut(true);
    if (style.effects & kUnderlineMark) {
        look.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        look.setUnderlineColor(color);
    } else {
        look.setForeground(Legible(color, theme.Color(ColorRole::Card)));
    }
    return look;
}

void SpellMarks::LayOver(const QTextBlock& block) {
    QList<QTextLayout::FormatRange> ranges = NoteBlockData::Of(block).colors;
    const QTextCharFormat look = MarkLook(style_, theme_);
    for (const SpellMark& mark : NoteBlockData::Of(block).marks)
        ranges.append({mark.begin, mark.length, look});
    block.layout()->setFormats(ranges);
}

void SpellMarks::ShowMarks(const QTextBlock& block) {
    LayOver(block);
    edit_.document()->markContentsDirty(block.position(), block.length());
}

QTextCursor SpellMarks::MarkedWordAt(const QTextCursor& cursor) const {
    QTextCursor word(cursor);
    word.clearSelection();
    const QTextBlock block = cursor.block();
    if (!block.userData())
        return word;
    for (const SpellMark& mark : NoteBlockData::Of(block).marks)
        if (cursor.positionInBlock() >= mark.begin && cursor.positionInBlock() <= mark.begin + mark.length) {
            word.setPosition(block.position() + mark.begin);
            word.setPosition(block.position() + mark.begin + mark.length, QTextCursor::KeepAnchor);
        }
    return word;
}

/// The first misspelled word of a paragraph from a position of the text on, or the last one up to there; a cursor
/// without selection if there is none.
QTextCursor SpellMarks::WordFrom(const QTextBlock& block, int at, bool forward) {
    CheckBlock(block);
    QTextCursor word(block);
    for (const SpellMark& mark : NoteBlockData::Of(block).marks) {
        const int begin = block.position() + mark.begin, end = begin + mark.length;
        if (forward ? begin < at : end > at)
            continue;
        word.setPosition(begin);
        word.setPosition(end, QTextCursor::KeepAnchor);
        if (forward)
            break;
    }
    return word;
}

void SpellMarks::GoToWord(bool forward) {
    if (!checker_ || !enabled_)
        return Tell(tr("The spelling of this text is not checked"));
    JudgeTyped();
    const QTextDocument& text = *edit_.document();
    const QTextCursor from = edit_.textCursor();
    int at = forward ? from.selectionEnd() : from.selectionStart();
    QTextBlock block = text.findBlock(at);
    // The paragraph of the caret comes again at the end, as a whole.
    for (int left = text.blockCount() + 1; left > 0; --left) {
        if (const QTextCursor word = WordFrom(block, at, forward); word.hasSelection()) {
            edit_.setTextCursor(word);
            edit_.ensureCursorVisible();
            return Announce(edit_, tr("Misspelled: %1").arg(word.selectedText()));
        }
        at = forward ? 0 : text.characterCount();
        block = forward ? block.next() : block.previous();
        if (!block.isValid())
            block = forward ? text.begin() : text.lastBlock();
    }
    Tell(tr("No misspelled words"));
}

/// What there is no other place for stands beside the caret for a while.
void SpellMarks::Tell(const QString& text) {
    QToolTip::showText(edit_.viewport()->mapToGlobal(edit_.cursorRect().bottomLeft()), text, &edit_);
    Announce(edit_, text);
}

void SpellMarks::AddToMenu(QMenu& menu, const QTextCursor& word) {
    if (!checker_)
        return;
    QAction* const before = menu.actions().value(0);
    const auto add = [&menu, before](const QString& text, auto&& does) {
        auto* const action = new QAction(text, &menu);
        connect(action, &QAction::triggered, &menu, does);
        menu.insertAction(before, action);
        return action;
    };
    if (enabled_ && word.hasSelection()) {
        const std::string wrong = word.selectedText().toStdString();
        const std::vector<std::string> suggestions = checker_->Suggest(wrong);
        for (const std::string& suggestion : suggestions) {
            const QString text = QString::fromStdString(suggestion);
            QAction* const action =
                add(QString(text).replace(u'&', QStringLiteral("&&")), [word = QTextCursor(word), text]() mutable {
                    const QTextCharFormat look = word.charFormat();
                    word.insertText(text, look);
                });
            QFont bold = action->font();
            bold.setBold(true);
            action->setFont(bold);
        }
        if (suggestions.empty())
            add(tr("No suggestions"), [] {})->setEnabled(false);
        add(tr("&Add to dictionary"), [this, wrong] {
            checker_->Add(wrong);
            Recheck();
        });
        add(tr("&Ignore"), [this, wrong] {
            checker_->Ignore(wrong);
            Recheck();
        });
    }
    menu.insertActions(before, {steps_[1], steps_[0]});
    AddLanguages(menu, before);
    add(tr("Spelling &options..."), [this] { emit OptionsRequested(); });
    menu.insertSeparator(before);
}

void SpellMarks::AddLanguages(QMenu& menu, QAction* before) {
    auto* const languages = new QMenu(tr("Spelling &language"), &menu);
    for (const std::string& name : checker_->Languages()) {
        const QString language = QString::fromStdString(name);
        const QLocale locale(language);
        const QString words = QStringLiteral("%1 (%2)").arg(QLocale::languageToString(locale.language()), language);
        QAction* const action = languages->addAction(locale == QLocale::c() ? language : words, this, [this, language] {
            if (checker_->Select(language.toStdString()))
                emit LanguageChosen(language);
            Recheck();
        });
        action->setCheckable(true);
        action->setChecked(name == checker_->Language());
    }
    languages->setEnabled(!languages->isEmpty());
    menu.insertMenu(before, languages);
}

}  // namespace lore
