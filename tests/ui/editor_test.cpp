#include <set>

#include "support/read_world.h"
#include "ui/board_fixture.h"
#include "ui/editor/spell_marks.h"
#include "ui/editor/spell_words.h"
#include "ui/editor_window.h"
#include "ui/picture_bytes.h"

Q_DECLARE_METATYPE(lore::SkippedWords)

namespace lore {
namespace {

/// Knows a few words.
class SmallChecker : public SpellChecker {
public:
    std::vector<std::string> Languages() const override { return {"en_GB", "en_US"}; }
    std::string Language() const override { return "en_US"; }
    bool Select(const std::string&) override { return true; }
    bool Check(const std::string& word) override { return !wrong.contains(word); }
    std::vector<std::string> Suggest(const std::string&) override { return {"keeper"}; }
    bool Add(const std::string& word) override { return wrong.erase(word) > 0; }
    void Ignore(const std::string& word) override { wrong.erase(word); }
    std::set<std::string> wrong = {"kepeer", "teh"};
};

}  // namespace

class EditorTest : public QObject {
    Q_OBJECT

private slots:
    void init() { theme_ = std::make_unique<Theme>(*qApp, Appearance::Light); }
    void AnUnchangedTextStaysByteForByte() {
        EditorWindow window(*theme_);
        const std::string odd = "{\\rtf1 a \\b  b\\b0\\par\n\n{\\*\\odd x}c}";
        window.edit->Load(odd);
        QCOMPARE(window.edit->Rtf(), odd);
        window.edit->moveCursor(QTextCursor::End);
        window.Type("xy z");
        QVERIFY(window.edit->IsModified());
        QVERIFY(window.edit->Rtf() != odd && window.edit->Rtf().find("\r\n") != std::string::npos);
        QCOMPARE(window.edit->PlainText(), std::string("a  b\r\ncxy z"));
        for (int i = 0; i < 9 && window.edit->document()->isUndoAvailable(); ++i)
            window.Press(Qt::Key_Z, Qt::ControlModifier);
        QVERIFY(!window.edit->IsModified());
        QCOMPARE(window.edit->Rtf(), odd);
        theme_->SetAppearance(Appearance::Dark);
        QCOMPARE(window.edit->Rtf(), odd);
    }

    void TypingLeavesAFontAndASizeOfNoListAlone() {
        EditorWindow window(*theme_);
        window.Type("a");
        auto* const fonts = window.bar->findChild<QComboBox*>("fontList");
        auto* const sizes = window.bar->findChild<QComboBox*>("sizeList");
        QCOMPARE(fonts->currentText() + " " + sizes->currentText(), QStringLiteral("Times New Roman 13.5"));
        QSignalSpy changes[] = {{fonts->lineEdit(), &QLineEdit::textChanged},
                                {sizes->lineEdit(), &QLineEdit::textChanged}};
        window.Type("bcd");
        QCOMPARE(changes[0].count() + changes[1].count(), 0);
        // What is shown is no entry of the list, and no entry stands for it.
        QCOMPARE(fonts->currentIndex() + sizes->currentIndex(), -2);
        QCOMPARE(fonts->lineEdit()->accessibleName(), QStringLiteral("Font"));
        QCOMPARE(sizes->lineEdit()->accessibleName(), QStringLiteral("Font size"));
    }

    void TypedTextCarriesItsFormats() {
        EditorWindow window(*theme_);
        window.Type("plain ");
        window.Press(Qt::Key_B, Qt::ControlModifier);
        window.Type("bold");
        window.Press(Qt::Key_B, Qt::ControlModifier);
        window.Type(" end");
        const Document now = window.Now();
        QCOMPARE(now.text, std::string("plain bold end"));
        QCOMPARE(now.runs.size(), size_t(3));
        QVERIFY(!now.runs[0].format.bold && now.runs[1].format.bold && !now.runs[2].format.bold);
        QCOMPARE(int(now.runs[0].format.half_points), 27);
        QCOMPARE(now.fonts[static_cast<size_t>(now.runs[0].format.font)].name, std::string("Times New Roman"));
        // A word at a time is undone.
        window.Press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.Text(), std::string("plain bold"));
        window.edit->selectAll();
        window.Run("center");
        window.edit->Commands().SetStyle(ParagraphStyle::Heading1);
        QVERIFY(window.Now().paragraphs[0].format.align == ParagraphAlign::kCenter);
        QVERIFY(window.Now().runs[0].format.bold);
        QVERIFY(window.edit->Commands().StyleNow() == ParagraphStyle::Heading1);
    }

    void ListsGoDeeperAndEnd() {
        EditorWindow window(*theme_);
        window.Run("numbers");
        window.Type("a");
        window.Press(Qt::Key_Return);
        window.Press(Qt::Key_Tab);
        window.Type("b");
        window.Press(Qt::Key_Return);
        window.Press(Qt::Key_Backtab, Qt::ShiftModifier);
        window.Type("c");
        window.Press(Qt::Key_Return);
        window.Press(Qt::Key_Return);
        window.Type("out");
        const Document now = window.Now();
        QCOMPARE(now.text, std::string("a\nb\nc\nout"));
        const int levels[] = {0, 1, 0};
        for (size_t i = 0; i < 3; ++i) {
            QVERIFY(now.paragraphs[i].format.list == ListKind::kDecimal);
            QCOMPARE(int(now.paragraphs[i].format.list_level), levels[i]);
            QCOMPARE(now.paragraphs[i].format.list_id, now.paragraphs[0].format.list_id);
        }
        QVERIFY(now.paragraphs[3].format.list == ListKind::kNone);
        QCOMPARE(int(now.paragraphs[3].format.left_indent), 0);
    }

    void TablesGrowWithTab() {
        EditorWindow window(*theme_);
        window.Type("x");
        window.edit->InsertTableHere(1, 2);
        window.Type("a");
        window.Press(Qt::Key_Tab);
        window.Type("b");
        window.Press(Qt::Key_Tab);
        window.Type("c");
        const Document now = window.Now();
        QCOMPARE(now.text, std::string("x\na\tb\t\nc\t\t\n"));
        QCOMPARE(now.row_formats.back().cells.size(), size_t(2));
        QCOMPARE(int(now.row_formats.back().cells[0].borders), 15);
        while (window.edit->document()->isUndoAvailable())
            window.edit->undo();
        QCOMPARE(window.Text(), std::string());
        // A table that is too wide for the window is shown narrower; it stays as wide as it is.
        window.edit->Load("{\\rtf1\\trowd\\cellx9000\\cellx30000\\intbl a\\cell b\\cell\\row\\pard}");
        window.edit->moveCursor(QTextCursor::Start);
        window.Press(Qt::Key_Down);
        window.Press(Qt::Key_Tab);
        window.Press(Qt::Key_Tab);
        window.Type("c");
        const Document wide = window.Now();
        QCOMPARE(wide.rows.size(), size_t(2));
        for (const auto& row : wide.rows) {
            const RowFormat& format = wide.row_formats[static_cast<size_t>(row.format)];
            QVERIFY(std::abs(format.cells[0].right_edge - 9000) < 2 &&
                    std::abs(format.cells[1].right_edge - 30000) < 2);
        }
    }

    void PastesFormattedTextAndCleansIt() {
        EditorWindow window(*theme_);
        auto* const mime = new QMimeData;
        mime->setHtml(
            "<body bgcolor=red><script>evil()</script><p>one <b>two</b></p><img src='http://x.example/a.png'></body>");
        QApplication::clipboard()->setMimeData(mime);
        window.edit->paste();
        QVERIFY(window.Text().find("one two") != std::string::npos);
        QVERIFY(window.Text().find("evil") == std::string::npos);
        QVERIFY(window.Now().pictures.empty());
        window.edit->selectAll();
        auto* const rtf = new QMimeData;
        rtf->setData("text/rtf", QByteArray("{\\rtf1{\\fonttbl{\\f0 Georgia;}}\\f0\\i sl\x1a"
                                            "anted\\i0\\par next}"));
        rtf->setText("worse");
        QApplication::clipboard()->setMimeData(rtf);
        window.edit->paste();
        QCOMPARE(window.Text(), std::string("slanted\nnext"));
        QVERIFY(window.Now().runs[0].format.italic);
        window.edit->selectAll();
        auto* const text = new QMimeData;
        text->setHtml("<b>x</b>");
        text->setText(QStringLiteral("pl\u001aain\r\ntext"));
        QApplication::clipboard()->setMimeData(text);
        window.Press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(window.Text(), std::string("plain\ntext"));
    }

    void PastesPicturesAtMostAsWideAsTheText() {
        EditorWindow window(*theme_);
        const QByteArray wide = Encoded(Filled(1500, 300));
        QVERIFY(window.edit->InsertPictureBytes(wide));
        QVERIFY(window.edit->InsertPictureBytes(Encoded(Filled(3200, 200))));
        QVERIFY(!window.edit->InsertPictureBytes("no picture"));
        const Document now = window.Now();
        QCOMPARE(now.pictures.size(), size_t(2));
        QCOMPARE(now.pictures[0].bytes, wide.toStdString());
        QCOMPARE(now.pictures[0].goal_width, window.edit->TextWidth() * 15);
        QCOMPARE(now.pictures[1].width, 1600);
        window.SelectPicture();
        window.edit->ResizePicture(window.edit->SelectedPicture(), QSizeF(100, 20));
        QCOMPARE(window.Now().pictures[0].goal_width, 1500);
        QCOMPARE(window.Now().pictures[0].bytes, wide.toStdString());
        window.edit->undo();
        QCOMPARE(window.Now().pictures[0].goal_width, window.edit->TextWidth() * 15);
    }

    void CopiesWhatItPastes() {
        EditorWindow window(*theme_);
        const std::string rtf =
            "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red200\\green0\\blue0;}\\f0\\fs40 big \\cf1 red\\cf0\\par"
            "\\trowd\\cellx2000\\cellx4000\\intbl a\\cell b\\cell\\row\\pard last}";
        window.edit->Load(rtf);
        window.edit->selectAll();
        window.edit->copy();
        const QMimeData* const mime = QApplication::clipboard()->mimeData();
        QVERIFY(mime->hasFormat("text/rtf") && mime->hasHtml() && mime->hasText());
        EditorWindow other(*theme_);
        other.edit->paste();
        const Document from = window.Now(), to = other.Now();
        QCOMPARE(to.text, from.text);
        QCOMPARE(to.runs.size(), from.runs.size());
        QVERIFY(to.runs[1].format.color == from.runs[1].format.color);
        QCOMPARE(int(to.runs[0].format.half_points), 40);
    }

    void FindsAndReplacesInOneStep() {
        EditorWindow window(*theme_);
        window.edit->Load("{\\rtf1 Lamp lamp lamps \\b lamp\\b0  end}");
        window.Press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(window.find->isVisible());
        auto* const field = window.find->findChild<QLineEdit*>("findField");
        QTest::keyClicks(field, "lamp");
        QStringList labels;
        for (const QLabel* label : window.find->findChildren<QLabel*>())
            labels << label->text();
        QVERIFY2(labels.contains("1 of 4"), qPrintable(labels.join('|')));
        window.Press(Qt::Key_F3);
        QCOMPARE(window.edit->textCursor().selectionStart(), 5);
        for (QCheckBox* box : window.find->findChildren<QCheckBox*>())
            box->setChecked(true);
        window.find->ShowReplace();
        field->setText("lamp");
        window.find->findChild<QLineEdit*>("replaceField")->setText("light");
        window.find->ReplaceAll();
        QCOMPARE(window.Text(), std::string("Lamp light lamps light end"));
        QVERIFY(window.Now().runs[1].format.bold);
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!window.find->isVisible() && window.edit->extraSelections().isEmpty());
        window.edit->undo();
        QCOMPARE(window.Text(), std::string("Lamp lamp lamps lamp end"));
        QVERIFY(!window.edit->IsModified());
    }

    void MarksWordsWithoutTouchingTheText() {
        EditorWindow window(*theme_);
        SmallChecker checker;
        window.edit->Load("{\\rtf1 The kepeer of teh light}");
        const std::string before = window.edit->Rtf();
        window.edit->Spelling().SetChecker(&checker, {0x0000ff, 13});
        QTRY_VERIFY(window.edit->Spelling().IsDone());
        const QTextBlock block = window.edit->document()->firstBlock();
        QCOMPARE(block.layout()->formats().size(), 2);
        QCOMPARE(block.layout()->formats()[0].start, 4);
        QVERIFY(!window.edit->IsModified());
        QCOMPARE(window.edit->Rtf(), before);
        QTextCursor cursor(block);
        cursor.setPosition(6);
        const QTextCursor word = window.edit->Spelling().MarkedWordAt(cursor);
        QCOMPARE(word.selectedText(), QStringLiteral("kepeer"));
        QMenu menu;
        window.edit->Spelling().AddToMenu(menu, word);
        QCOMPARE(menu.actions().value(0)->text(), QStringLiteral("keeper"));
        menu.actions().value(0)->trigger();
        QCOMPARE(window.Text(), std::string("The keeper of teh light"));
        QTRY_VERIFY(window.edit->Spelling().IsDone());
        QCOMPARE(block.layout()->formats().size(), 1);
        QVERIFY(!block.layout()->formats()[0].format.fontStrikeOut());
        window.edit->Spelling().SetChecker(&checker, {0x0000ff, 65});
        QTRY_VERIFY(window.edit->Spelling().IsDone());
        QCOMPARE(block.layout()->formats().size(), 1);
        QVERIFY(block.layout()->formats()[0].format.fontStrikeOut());
        window.edit->Spelling().SetEnabled(false);
        QCOMPARE(block.layout()->formats().size(), 0);
    }

    void ChoosesWordsToCheck_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<SkippedWords>("skipped");
        const SkippedWords all;
        QTest::newRow("apostrophes") << QStringLiteral("don't 'quoted' it\u2019s")
                                     << QStringList{"don't", "quoted", QStringLiteral("it\u2019s")} << all;
        const QString kinds = "B2B USA iPhone Word word2 x 1852";
        QTest::newRow("kinds skipped") << kinds << QStringList{"Word"} << all;
        QTest::newRow("capitals") << kinds << QStringList{"USA", "Word"} << SkippedWords{.capitals = false};
        QTest::newRow("digits") << kinds << QStringList{"Word", "word2"} << SkippedWords{.withDigits = false};
        QTest::newRow("mixed case") << kinds << QStringList{"iPhone", "Word"} << SkippedWords{.mixedCase = false};
        QTest::newRow("capitals with digits") << kinds << QStringList{"B2B", "USA", "Word", "word2"}
                                              << SkippedWords{.capitals = false, .withDigits = false};
        QTest::newRow("addresses") << "see https://foo.example/baar me@mail.example www.bla.example /usr/bin end"
                                   << QStringList{"see", "end"} << all;
        QTest::newRow("addresses judged")
            << "me@mail.bla end" << QStringList{"me", "mail", "bla", "end"} << SkippedWords{.addresses = false};
        QTest::newRow("scripts") << QStringLiteral("caf\u00e9 \u043c\u0430\u044f\u043a e\u0301te\u0301")
                                 << QStringList{QStringLiteral("caf\u00e9"), QStringLiteral("\u043c\u0430\u044f\u043a"),
                                                QStringLiteral("e\u0301te\u0301")}
                                 << all;
    }

    void ChoosesWordsToCheck() {
        QFETCH(QString, text);
        QFETCH(QStringList, words);
        QFETCH(SkippedWords, skipped);
        QStringList found;
        for (const SpellMark& word : WordsToCheck(text, skipped))
            found << text.mid(word.begin, word.length);
        QCOMPARE(found, words);
    }

    void CapturesBesideTheTyping() {
        EditorWindow window(*theme_);
        std::string body;
        for (int i = 0; i < 2000; ++i)
            body += "A line of the log, \\b with\\b0  words.\\par ";
        window.edit->Load("{\\rtf1 " + body + "}");
        window.edit->moveCursor(QTextCursor::End);
        CapturedTexts texts;
        window.edit->CaptureAside([&](CapturedTexts got) { texts = std::move(got); });
        window.Type("late");
        QTRY_VERIFY(!texts.rtf.empty());
        QCOMPARE(texts.rtf, window.edit->Rtf());
        QVERIFY(texts.plainText.ends_with("late"));
    }

    void ACaptureIsHandedOverWhateverComesBetween_data() {
        QTest::addColumn<bool>("isTheme");
        QTest::newRow("the size is measured") << false;
        QTest::newRow("another theme shows the text anew") << true;
    }

    void ACaptureIsHandedOverWhateverComesBetween() {
        QFETCH(bool, isTheme);
        EditorWindow window(*theme_);
        window.Type("Kept");
        CapturedTexts texts;
        window.edit->CaptureAside([&](CapturedTexts got) { texts = std::move(got); });
        if (isTheme)
            theme_->SetAppearance(Appearance::Dark);
        else
            window.edit->findChild<QTimer*>("sizeTimer")->start(0);
        QTRY_COMPARE(texts.plainText, std::string("Kept"));
        QCOMPARE(texts.rtf, window.edit->Rtf());
        QTRY_COMPARE(window.edit->RtfSize(), static_cast<qint64>(texts.rtf.size()));
    }

    void TellsWhenTheTextGetsTooLarge() {
        EditorWindow window(*theme_);
        QSignalSpy told(window.edit, &RichTextEdit::SizeLimitPassed);
        window.edit->insertPlainText(QString(300000, u'x'));
        QTRY_COMPARE(window.edit->Beside().LongestSlice() > 0, true);
        window.edit->insertPlainText(QString(300000, u'y'));
        QVERIFY(told.size() >= 1);
        QTRY_VERIFY(told.last().at(0).toBool() && window.edit->RtfSize() < 650000);
        QTRY_COMPARE(told.last().at(1).toLongLong(), static_cast<qint64>(window.edit->Rtf().size()));
        window.edit->undo();
        window.edit->undo();
        QTRY_VERIFY(!told.last().at(0).toBool());
    }

    void TakesPicturesOut() {
        EditorWindow window(*theme_);
        window.Type("a");
        window.edit->InsertPictureBytes(Encoded(Filled(20, 10)));
        window.Type("b");
        window.edit->InsertPictureBytes(Encoded(Filled(30, 10)));
        const auto pictures = window.edit->Pictures();
        QCOMPARE(pictures.size(), size_t(2));
        const auto taken = window.edit->TakePictures({pictures[1].position});
        QCOMPARE(taken.size(), size_t(1));
        QCOMPARE(taken[0].data, Encoded(Filled(30, 10)).toStdString());
        QCOMPARE(taken[0].fileName, QStringLiteral("Picture 2.png"));
        QCOMPARE(window.Now().pictures.size(), size_t(1));
        window.edit->undo();
        QCOMPARE(window.Now().pictures.size(), size_t(2));
    }

    void LooksRight() {
        for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
            theme_->SetAppearance(appearance);
            EditorWindow window(*theme_);
            SmallChecker checker;
            window.edit->Load(BytesOf(LORE_TEST_DATA "/editor/looks.rtf"));
            window.edit->moveCursor(QTextCursor::End);
            window.edit->InsertPictureBytes(Encoded(Filled(220, 90)));
            window.edit->Spelling().SetChecker(&checker, {0x0000ff, 13});
            QTRY_VERIFY(window.edit->Spelling().IsDone());
            window.find->ShowReplace();
            window.find->findChild<QLineEdit*>("findField")->setText("the");
            TakeShot(window.frame, appearance == Appearance::Light ? "editor-light" : "editor-dark");
            window.find->Close();
            window.frame.resize(420, 500);
            TakeShot(window.frame, appearance == Appearance::Light ? "editor-narrow-light" : "editor-narrow-dark");
            // The keys open what doesn't fit.
            auto* const more = window.bar->findChild<QToolButton*>("qt_toolbar_ext_button");
            more->setFocus(Qt::TabFocusReason);
            QStringList rest;
            QTimer::singleShot(0, more, [&rest] {
                QWidget* const menu = QApplication::activePopupWidget();
                for (const QAction* const action : menu->actions())
                    rest.append(action->text());
                menu->close();
            });
            QTest::keyClick(more, Qt::Key_Space);
            QVERIFY2(rest.contains("Table") && rest.contains("Size of picture"), qPrintable(rest.join(' ')));
        }
    }

private:
    std::unique_ptr<Theme> theme_;
};

}  // namespace lore

QTEST_MAIN(lore::EditorTest)
#include "editor_test.moc"
