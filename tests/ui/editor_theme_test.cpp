#include <vector>

#include "support/read_world.h"
#include "ui/editor_window.h"

namespace lore {

/// A note that stands in the editor while the desktop changes between light and dark.
class EditorThemeTest : public QObject {
    Q_OBJECT

private:
    /// How a stretch of text is painted: its format, and what lies over it.
    static QTextCharFormat Painted(const QTextBlock& block, const QTextFragment& fragment) {
        QTextCharFormat look = fragment.charFormat();
        for (const QTextLayout::FormatRange& range : block.layout()->formats())
            if (range.start <= fragment.position() - block.position() &&
                range.start + range.length >= fragment.position() + fragment.length() - block.position())
                look.merge(range.format);
        return look;
    }

    static QColor GroundOf(const QTextBlock& block, const QTextCharFormat& look, const QTextEdit& edit) {
        if (look.background().style() != Qt::NoBrush)
            return look.background().color();
        const QTextCursor cursor(block);
        const QTextTable* const table = cursor.currentTable();
        const QBrush cell = table ? table->cellAt(cursor).format().background() : QBrush();
        return cell.style() != Qt::NoBrush ? cell.color() : edit.palette().color(QPalette::Base);
    }

    /// The words that can't be read where they stand.
    QStringList Illegible() const {
        QStringList words;
        for (QTextBlock block = edit_->document()->begin(); block.isValid(); block = block.next())
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextCharFormat look = Painted(block, it.fragment());
                const QColor text = look.hasProperty(QTextFormat::ForegroundBrush)
                                        ? look.foreground().color()
                                        : edit_->palette().color(QPalette::Text);
                if (look.objectType() == QTextFormat::NoObject && ContrastOf(text, GroundOf(block, look, *edit_)) < 4.5)
                    words.append(it.fragment().text());
            }
        return words;
    }

    void Show(Appearance appearance) {
        theme_->SetAppearance(appearance);
        QCoreApplication::processEvents();  // windows get their palette
    }

    void Change(const std::function<void()>& change) {
        change();
        states_.push_back(edit_->Rtf());
    }

    /// A text that is changed in four steps, of which one takes coloured words away.
    void EditNote() {
        window_ = std::make_unique<EditorWindow>(
            *theme_, [](RichTextEdit& edit) { edit.Load(BytesOf(LORE_TEST_DATA "/editor/looks.rtf")); });
        edit_ = window_->edit;
        states_ = {edit_->Rtf()};
        edit_->moveCursor(QTextCursor::End);
        Change([this] { window_->Type("late"); });
        Change([this] {
            edit_->moveCursor(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
            edit_->Commands().Characters([](CharFormat& format) {
                format.color = TextColor{0, 0, 110};
                format.background = TextColor{255, 255, 120};
            });
        });
        Change([this] { edit_->textCursor().removeSelectedText(); });
        Change([this] {
            edit_->selectAll();
            window_->Press(Qt::Key_Delete);
        });
    }

private slots:
    void init() {
        theme_ = std::make_unique<Theme>(*qApp, Appearance::Light);
        EditNote();
    }
    void cleanup() { window_.reset(); }

    void EachStepIsUndoneAndDoneAgain() {
        edit_->undo();
        size_t state = states_.size() - 2;
        Show(Appearance::Dark);
        QVERIFY(edit_->document()->isUndoAvailable() && edit_->document()->isRedoAvailable());
        for (const Appearance next : {Appearance::Light, Appearance::Dark, Appearance::Light}) {
            while (state > 0) {
                QVERIFY2(Illegible().isEmpty(), qPrintable(Illegible().join("|")));
                edit_->undo();
                QCOMPARE(edit_->Rtf(), states_[--state]);
            }
            QVERIFY(!edit_->IsModified());
            Show(next);
            while (edit_->document()->isRedoAvailable()) {
                edit_->redo();
                QCOMPARE(edit_->Rtf(), states_[++state]);
                QVERIFY2(Illegible().isEmpty(), qPrintable(Illegible().join("|")));
            }
            QCOMPARE(state, states_.size() - 1);
        }
    }

    void TypingGoesOnInTheNewColors() {
        edit_->undo();
        edit_->undo();
        edit_->moveCursor(QTextCursor::End);
        Show(Appearance::Dark);
        edit_->moveCursor(QTextCursor::Left);
        window_->Type("typed ");
        window_->Press(Qt::Key_Return);
        QCOMPARE(Illegible(), QStringList());
        TakeShot(window_->frame, "editor-after-dark");
        Show(Appearance::Light);
        QCOMPARE(Illegible(), QStringList());
        // The text as it is shown from the start.
        edit_->Load(edit_->Rtf());
        for (QTextBlock block = edit_->document()->begin(); block.isValid(); block = block.next())
            QVERIFY(block.layout()->formats().isEmpty());
    }

private:
    std::unique_ptr<Theme> theme_;
    std::unique_ptr<EditorWindow> window_;
    RichTextEdit* edit_ = nullptr;
    std::vector<std::string> states_;  // the text before and behind each step
};

}  // namespace lore

QTEST_MAIN(lore::EditorThemeTest)
#include "editor_theme_test.moc"
