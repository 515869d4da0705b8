#include <QTextTable>
#include <functional>

#include "ui/editor/color_menu.h"
#include "ui/editor_window.h"

namespace lore {
namespace {

const std::string kMerged =
    "{\\rtf1 before\\par\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\clvmgf\\cellx3000\\pard\\intbl wide\\cell\\cell "
    "tall\\cell\\row\\trowd\\cellx1000\\cellx2000\\clvmrg\\cellx3000\\pard\\intbl left\\cell mid\\cell\\cell\\row"
    "\\pard end}";
/// The words of each cell of the first table; a cell stands at each place that it spans.
QString CellsOf(const RichTextEdit& edit) {
    const QList<QTextFrame*> frames = edit.document()->rootFrame()->childFrames();
    const auto* const table = qobject_cast<QTextTable*>(frames.value(0));
    QStringList rows;
    for (int r = 0; table && r < table->rows(); ++r) {
        QStringList cells;
        for (int c = 0; c < table->columns(); ++c) {
            const QString words = table->cellAt(r, c).firstCursorPosition().block().text();
            cells.append(words.isEmpty() ? QStringLiteral("-") : words);
        }
        rows.append(cells.join(' '));
    }
    return rows.join('/');
}

/// How the first characters of a text look, and its first paragraph.
struct Look {
    explicit Look(const Document& document)
        : characters(document.runs[0].format), paragraph(document.paragraphs[0].format) {
        characters.font = -1;  // a number of the file
    }
    bool operator==(const Look&) const = default;
    CharFormat characters;
    ParagraphFormat paragraph;
};

QAction* EntryOf(const QMenu& menu, const QString& text) {
    for (QAction* const action : menu.actions())
        if (action->text().remove('&') == text)
            return action;
    return nullptr;
}

}  // namespace

/// The commands of the editor's bars, and what an input method writes.
class EditorCommandsTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        theme_ = std::make_unique<Theme>(*qApp, Appearance::Light);
        window_ = std::make_unique<EditorWindow>(*theme_);
        edit_ = window_->edit;
    }
    void cleanup() { window_.reset(); }
    void TablesChangeAtTheCaret() {
        struct Case {
            const char *word, *command;
            QString cells;
            QString stored = cells;  // spans that no other row needs aren't stored
        };
        const QString rowBetween = "wide wide tall/- - tall/left mid tall";
        const QString columnBetween = "wide wide - tall/left mid - tall";
        const Case cases[] = {{"left", "Row above", rowBetween},
                              {"wide", "Row below", rowBetween},
                              {"wide", "Row above", "- - -/wide wide tall/left mid tall"},
                              {"tall", "Row below", "wide wide tall/left mid tall/- - -"},
                              {"mid", "Column before", "wide wide wide tall/left - mid tall"},
                              {"tall", "Column before", columnBetween},
                              {"wide", "Column after", columnBetween},
                              {"left", "Remove row", "wide wide tall", "wide tall"},
                              {"tall", "Remove row", "left mid tall"},
                              {"wide", "Remove row", "left mid tall"},
                              {"tall", "Row above", "- - -/wide wide tall/left mid tall"},
                              {"mid", "Remove column", "wide tall/left tall"},
                              {"wide", "Remove column", "wide tall/mid tall"},
                              {"tall", "Remove column", "wide wide/left mid"},
                              {"mid", "Remove table", ""}};
        for (const Case& c : cases) {
            const QByteArray name = QByteArray(c.command) + " at " + c.word;
            edit_->Load(kMerged);
            QTextCursor caret = edit_->document()->find(c.word);
            caret.setPosition(caret.selectionStart() + 1);
            edit_->setTextCursor(caret);
            EntryOf(*window_->bar->Command("table")->menu(), c.command)->trigger();
            QVERIFY2(CellsOf(*edit_) == c.cells, name + ": " + CellsOf(*edit_).toUtf8());
            const std::string changed = edit_->Rtf();
            edit_->undo();
            QVERIFY2(!edit_->IsModified() && edit_->Rtf() == kMerged, name);
            edit_->Load(changed);
            QVERIFY2(CellsOf(*edit_) == c.stored, name + ", stored: " + CellsOf(*edit_).toUtf8());
            const std::string text = window_->Text();
            QVERIFY2(text.starts_with("before\n") && text.ends_with("\nend"), name);
        }
    }

    void TypingOverAPartOfATableCanBeUndone() {
        const std::string rtf =
            "{\\rtf1\\ansi fo\\par\\trowd\\cellx4500\\cellx9000\\pard\\intbl 1\\cell "
            "2\\cell\\row\\trowd\\clmgf\\cellx4500"
            "\\clmrg\\cellx9000\\pard\\intbl 3\\cell\\cell\\row\\pard after\\par}";
        edit_->Load(rtf);
        QTextCursor selection = edit_->textCursor();
        selection.setPosition(4);
        selection.setPosition(3, QTextCursor::KeepAnchor);
        edit_->setTextCursor(selection);
        QTest::keyClicks(edit_, "x");
        for (int step = 0; edit_->document()->isUndoAvailable() && step < 10; ++step)
            edit_->undo();
        QCOMPARE(edit_->Rtf(), rtf);
    }

    void EachCommandChangesOneThing() {
        const std::string rtf =
            "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red200\\green0\\blue0;}\\pard\\li720\\qc\\f0\\b\\cf1 word"
            "\\par next}";
        struct Case {
            const char* command;
            std::function<void(Look&)> change;
        };
        const Case cases[] = {
            {"strike", [](Look& look) { look.characters.strike = true; }},
            {"superscript", [](Look& look) { look.characters.position = ScriptPosition::kSuperscript; }},
            {"subscript", [](Look& look) { look.characters.position = ScriptPosition::kSubscript; }},
            {"left", [](Look& look) { look.paragraph.align = ParagraphAlign::kLeft; }},
            {"right", [](Look& look) { look.paragraph.align = ParagraphAlign::kRight; }},
            {"justify", [](Look& look) { look.paragraph.align = ParagraphAlign::kJustify; }},
            {"indent", [](Look& look) { look.paragraph.left_indent = 1080; }},
            {"outdent", [](Look& look) { look.paragraph.left_indent = 360; }},
            {"plain", [](Look& look) {
                 look.characters = CharFormat{};
                 look.characters.half_points = 27;
             }}};
        const Look first(ReadRtf(rtf));
        for (const Case& c : cases) {
            SelectWord(rtf);
            Look wanted = first;
            c.change(wanted);
            window_->Run(c.command);
            QVERIFY2(Look(window_->Now()) == wanted, c.command);
            edit_->undo();
            QVERIFY2(edit_->Rtf() == rtf, c.command);
        }
        for (const auto& [menu, field] :
             {std::pair("color", &CharFormat::color), std::pair("highlight", &CharFormat::background)}) {
            for (QAction* const entry : window_->bar->Command(menu)->menu()->actions()) {
                const QString text = entry->text().remove('&');
                if (entry->isSeparator() || text == "Other...")
                    continue;
                SelectWord(rtf);
                entry->trigger();
                Look now(window_->Now());
                if (const std::optional<TextColor> chosen = now.characters.*field)
                    QCOMPARE(NearestColorName(QColor(chosen->red, chosen->green, chosen->blue)), text);
                else
                    QVERIFY2(text == "Automatic" || text == "No highlight", qPrintable(text));
                now.characters.*field = first.characters.*field;
                QVERIFY2(now == first, qPrintable(text));
            }
        }
    }

    void ALinkIsOpenedFromWithinItAlone() {
        QSignalSpy opened(edit_, &RichTextEdit::LinkOpened);
        window_->Type("word ");
        window_->Run("openLink");
        edit_->Commands().SetLink("https://lamps.example", "lamps");
        QCOMPARE(opened.size(), 0);
        edit_->moveCursor(QTextCursor::Left);
        window_->Run("openLink");
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened[0][0].toString(), QStringLiteral("https://lamps.example"));
    }

    void OneHitIsReplacedAndTheSearchTurnsAtBothEnds() {
        edit_->Load("{\\rtf1 lamp one \\b lamp\\b0  two lamp}");
        window_->find->ShowReplace();
        window_->find->findChild<QLineEdit*>("findField")->setText("lamp");
        const auto hit = [this] {
            return edit_->textCursor().hasSelection() ? edit_->textCursor().selectionStart() : -1;
        };
        QCOMPARE(hit(), 0);
        const std::pair<Qt::KeyboardModifiers, int> steps[] = {
            {Qt::ShiftModifier, 18}, {Qt::ShiftModifier, 9}, {Qt::NoModifier, 18}, {Qt::NoModifier, 0}};
        for (const auto& [modifiers, place] : steps) {
            window_->Press(Qt::Key_F3, modifiers);
            QCOMPARE(hit(), place);
        }
        // The words that come in hold the word that is sought.
        window_->find->findChild<QLineEdit*>("replaceField")->setText("lamp post");
        Press(*window_->find, "Replace");
        QCOMPARE(window_->Text(), std::string("lamp post one lamp two lamp"));
        QCOMPARE(hit(), 14);
        Press(*window_->find, "Replace");
        const std::string both = "lamp post one lamp post two lamp";
        QCOMPARE(window_->Text(), both);
        QCOMPARE(hit(), 28);
        const Document now = window_->Now();
        QVERIFY(now.runs[1].format.bold && TextOf(now, now.runs[1]) == "lamp post");
        // Without a hit that is selected it goes to the next one first.
        QTextCursor caret = edit_->textCursor();
        caret.setPosition(3);
        edit_->setTextCursor(caret);
        Press(*window_->find, "Replace");
        QCOMPARE(window_->Text(), both);
        QCOMPARE(hit(), 14);
        edit_->undo();
        QCOMPARE(window_->Text(), std::string("lamp post one lamp two lamp"));
        edit_->undo();
        QVERIFY(!edit_->IsModified());
    }

    void AnInputMethodWritesAsKeysDo() {
        const QString text = QStringLiteral("\u706f\u53f0");
        const std::string written = text.toStdString(), rtf = "{\\rtf1 one two three}";
        edit_->Load(rtf);
        edit_->setTextCursor(edit_->document()->find("two"));
        Commit(text);
        QCOMPARE(window_->Text(), "one " + written + " three");
        while (edit_->document()->isUndoAvailable())
            edit_->undo();
        QCOMPARE(edit_->Rtf(), rtf);
        // The look of what is written next, and not the link in front of it.
        edit_->Load("{\\rtf1 one {\\field{\\*\\fldinst HYPERLINK \"http://a\"}{\\fldrslt two}}}");
        edit_->moveCursor(QTextCursor::End);
        window_->bar->Command("bold")->trigger();
        Commit(text);
        const Document now = ReadRtf(edit_->Rtf());
        QCOMPARE(now.text, "one two" + written);
        QVERIFY(now.runs.back().format.bold && now.runs.back().format.link < 0);
    }

private:
    /// Shows a text and selects its first word.
    void SelectWord(const std::string& rtf) {
        edit_->Load(rtf);
        edit_->setTextCursor(edit_->document()->find("word"));
    }
    void Commit(const QString& text) {
        QInputMethodEvent composing(QStringLiteral("deng"), {}), event;
        QApplication::sendEvent(edit_, &composing);
        event.setCommitString(text);
        QApplication::sendEvent(edit_, &event);
    }

    std::unique_ptr<Theme> theme_;
    std::unique_ptr<EditorWindow> window_;
    RichTextEdit* edit_ = nullptr;
};

}  // namespace lore

QTEST_MAIN(lore::EditorCommandsTest)
#include "editor_commands_test.moc"
