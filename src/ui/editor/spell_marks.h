#pragma once

#include <QHash>
#include <QObject>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>
#include <array>

#include "ports/spell_checker.h"
#include "settings/spell_settings.h"

class QAction;
class QMenu;

namespace lore {

class Theme;
class ThemeLook;

/// How a misspelled word looks in a note's text.
QTextCharFormat MarkLook(const MarkStyle& style, const ThemeLook& theme);

/// Checks the spelling of an editor's text beside the typing and marks the words that are not known: what is seen
/// first, then the rest, in slices of a few milliseconds. Marks are a matter of painting and never part of the text.
class SpellMarks : public QObject {
    Q_OBJECT

public:
    SpellMarks(QTextEdit& edit, const Theme& theme);

    /// Checks with `checker` from here on (not owned, may be null), marking as the settings say.
    void SetChecker(SpellChecker* checker, const MarkStyle& style, const SkippedWords& skipped = {});
    /// Turns the marks on or off.
    void SetEnabled(bool enabled);
    bool IsEnabled() const { return enabled_; }
    /// Follows a new document of the editor.
    void Attach();
    /// Checks everything anew, as after a change of language.
    void Recheck();
    /// True when nothing is left to check.
    bool IsDone() const { return !timer_.isActive(); }
    /// Lays what is remembered of a paragraph over its text: its colours, and its marks over these. It is painted once
    /// the document is told of a change there.
    void LayOver(const QTextBlock& block);

    /// The marked word at a position; a cursor without selection if there is none.
    QTextCursor MarkedWordAt(const QTextCursor& cursor) const;
    /// Selects the misspelled word that comes next, or the one before, once round the text, and has it read. Words that
    /// aren't judged yet are.
    void GoToWord(bool forward);
    /// Puts suggestions and commands for the word, the menu of languages and the way to the options in front of a
    /// menu's first action.
    void AddToMenu(QMenu& menu, const QTextCursor& word);

signals:
    void LanguageChosen(const QString& language);
    void OptionsRequested();

private:
    void OnContentsChange(int position, int removed, int added);
    void Slice();
    bool CheckBlock(const QTextBlock& block);
    bool IsRight(const QString& word);
    void JudgeTyped();
    QTextCursor WordFrom(const QTextBlock& block, int at, bool forward);
    void Tell(const QString& text);
    void ShowMarks(const QTextBlock& block);
    void Clear();
    void AddLanguages(QMenu& menu, QAction* before);

    QTextEdit& edit_;
    const Theme& theme_;
    std::array<QAction*, 2> steps_;  ///< to the misspelled word before and to the next one
    SpellChecker* checker_ = nullptr;
    MarkStyle style_;
    SkippedWords skipped_;
    bool enabled_ = true;
    QTimer timer_;
    QHash<QString, bool> verdicts_;
    int nextBlock_ = 0;  ///< the blocks before it are checked
    int typedAt_ = -1;   ///< where typing goes on: the word there isn't judged yet
};

}  // namespace lore
