#include <set>

#include "rtf/list_marks.h"
#include "support/read_world.h"
#include "ui/editor/spell_marks.h"
#include "ui/editor/spell_words.h"
#include "ui/editor_window.h"
#include "ui/picture_bytes.h"
#include "ui/tab_walk.h"

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

class EditorTest : public QObject, protected EditorWorld {
    Q_OBJECT

private slots:
    void init() { OpenEditor(); }
    void cleanup() { window_.reset(); }
    void an_unchanged_text_stays_byte_for_byte() {
        const std::string odd = "{\\rtf1 a \\b  b\\b0\\par\n\n{\\*\\odd x}c}";
        edit_->Load(odd);
        QCOMPARE(edit_->Rtf(), odd);
        edit_->moveCursor(QTextCursor::End);
        window_->Type("xy z");
        QVERIFY(edit_->IsModified());
        QVERIFY(edit_->Rtf() != odd && edit_->Rtf().find("\r\n") != std::string::npos);
        QCOMPARE(edit_->PlainText(), std::string("a  b\r\ncxy z"));
        for (int i = 0; i < 9; ++i)
            PressKeys(edit_, {"Ctrl+Z"});
        QVERIFY(!edit_->IsModified());
        QCOMPARE(edit_->Rtf(), odd);
        theme_.SetAppearance(Appearance::Dark);
        QCOMPARE(edit_->Rtf(), odd);
    }

    void typing_leaves_a_font_and_a_size_of_no_list_alone() {
        window_->Type("a");
        auto* const fonts = window_->bar->findChild<QComboBox*>("fontList");
        auto* const sizes = window_->bar->findChild<QComboBox*>("sizeList");
        QCOMPARE(fonts->currentText() + " " + sizes->currentText(), QStringLiteral("Times New Roman 13.5"));
        QSignalSpy changes[] = {{fonts->lineEdit(), &QLineEdit::textChanged},
                                {sizes->lineEdit(), &QLineEdit::textChanged}};
        window_->Type("bcd");
        QCOMPARE(changes[0].count() + changes[1].count(), 0);
        // What is shown is no entry of the list, and no entry stands for it.
        QCOMPARE(fonts->currentIndex() + sizes->currentIndex(), -2);
        QCOMPARE(fonts->lineEdit()->accessibleName(), QStringLiteral("Font"));
        QCOMPARE(sizes->lineEdit()->accessibleName(), QStringLiteral("Font size"));
    }

    void typed_text_carries_its_formats() {
        window_->Type("plain ");
        PressKeys(edit_, {"Ctrl+B"});
        window_->Type("bold");
        PressKeys(edit_, {"Ctrl+B"});
        window_->Type(" end");
        const Document now = Now();
        QCOMPARE(now.text, std::string("plain bold end"));
        QCOMPARE(now.runs.size(), size_t(3));
        QVERIFY(!now.runs[0].format.bold && now.runs[1].format.bold && !now.runs[2].format.bold);
        QCOMPARE(int(now.runs[0].format.halfPoints), 27);
        QCOMPARE(now.fonts[static_cast<size_t>(now.runs[0].format.font)].name, std::string("Times New Roman"));
        // A word at a time is undone.
        PressKeys(edit_, {"Ctrl+Z"});
        QCOMPARE(window_->Text(), std::string("plain bold"));
        edit_->selectAll();
        window_->Run("center");
        edit_->Commands().SetStyle(ParagraphStyle::Heading1);
        QVERIFY(Now().paragraphs[0].format.align == ParagraphAlign::Center);
        QVERIFY(Now().runs[0].format.bold);
        QVERIFY(edit_->Commands().StyleNow() == ParagraphStyle::Heading1);
    }

    void undo_goes_by_pastes_tabs_and_words() {
        const std::pair<QStringList, QString> cases[] = {{{"<p>a</p><p>b</p>", "xy z"}, "a\nbxy z|a\nbxy|a\nb|"},
                                                         {{"xy", "=one ", "=t", "xy"}, "xyone txy|xyone t|xyone |xy|"},
                                                         {{"ab\tcd\tef"}, "ab\tcd\tef|ab\tcd|ab|"}};
        for (const auto& [steps, texts] : cases) {
            edit_->Load("{\\rtf1}");
            for (const QString& step : steps) {
                auto mime = std::make_unique<QMimeData>();
                step[0] == u'<' ? mime->setHtml(step) : mime->setText(step.mid(1));
                step[0].isLetter() ? window_->Type(step) : Paste(mime.release());
            }
            QString seen = edit_->toPlainText();
            for (; edit_->document()->isUndoAvailable(); seen += "|" + edit_->toPlainText())
                edit_->undo();
            QCOMPARE(seen, texts);
            while (edit_->document()->isRedoAvailable())
                edit_->redo();
            QVERIFY(texts.startsWith(edit_->toPlainText() + "|"));
        }
        QString undo;
        QTimer::singleShot(0, edit_, [&undo] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            undo = TextsOf(menu).value(0);
            menu->close();
        });
        OpenMenuAt(*edit_->viewport(), QPoint(5, 5));
        QCOMPARE(undo, QString("Undo\tCtrl+Z"));
    }

    void lists_go_deeper_and_end() {
        window_->Run("numbers");
        PressKeys(edit_, {"A", "Return", "Tab", "B", "Return", "Shift+Backtab", "C", "Return", "Return"});
        window_->Type("out");
        const Document now = Now();
        QCOMPARE(now.text, std::string("a\nb\nc\nout"));
        const int levels[] = {0, 1, 0};
        for (size_t i = 0; i < 3; ++i) {
            QVERIFY(now.paragraphs[i].format.list == ListKind::Decimal);
            QCOMPARE(int(now.paragraphs[i].format.listLevel), levels[i]);
            QCOMPARE(now.paragraphs[i].format.listId, now.paragraphs[0].format.listId);
        }
        QVERIFY(now.paragraphs[3].format.list == ListKind::None);
        QCOMPARE(int(now.paragraphs[3].format.leftIndent), 0);
    }

    void tables_grow_with_tab() {
        window_->Type("x");
        edit_->InsertTableHere(1, 2);
        PressKeys(edit_, {"A", "Tab", "B", "Tab", "C"});
        const Document now = Now();
        QCOMPARE(now.text, std::string("x\na\tb\t\nc\t\t\n"));
        QCOMPARE(now.rowFormats.back().cells.size(), size_t(2));
        QCOMPARE(int(now.rowFormats.back().cells[0].borders), 15);
        UndoAll();
        QCOMPARE(window_->Text(), std::string());
        // A table that is too wide for the window is shown narrower; it stays as wide as it is.
        edit_->Load("{\\rtf1\\trowd\\cellx9000\\cellx30000\\intbl a\\cell b\\cell\\row\\pard}");
        edit_->moveCursor(QTextCursor::Start);
        PressKeys(edit_, {"Down", "Tab", "Tab", "C"});
        const Document wide = Now();
        QCOMPARE(wide.rows.size(), size_t(2));
        for (const auto& row : wide.rows) {
            const auto& cells = wide.rowFormats[static_cast<size_t>(row.format)].cells;
            QVERIFY(std::abs(cells[0].rightEdge - 9000) < 2 && std::abs(cells[1].rightEdge - 30000) < 2);
        }
    }

    void pastes_formatted_text_and_cleans_it() {
        auto* const html = new QMimeData;
        html->setHtml(
            "<body bgcolor=red><script>evil()</script><p>one <b>two</b></p><img src='http://x.example/a.png'></body>");
        Paste(html);
        QVERIFY(window_->Text().find("one two") != std::string::npos);
        QVERIFY(window_->Text().find("evil") == std::string::npos);
        QVERIFY(Now().pictures.empty());
        edit_->selectAll();
        auto* const rtf = new QMimeData;
        rtf->setData("text/rtf", QByteArray("{\\rtf1{\\fonttbl{\\f0 Georgia;}}\\f0\\i sl\x1a"
                                            "anted\\i0\\par next}"));
        rtf->setText("worse");
        Paste(rtf);
        QCOMPARE(window_->Text(), std::string("slanted\nnext"));
        QVERIFY(Now().runs[0].format.italic);
        edit_->selectAll();
        auto* const text = new QMimeData;
        text->setHtml("<b>x</b>");
        text->setText(QStringLiteral("pl\u001aain\r\ntext"));
        QApplication::clipboard()->setMimeData(text);
        PressKeys(edit_, {"Ctrl+Shift+V"});
        QCOMPARE(window_->Text(), std::string("plain\ntext"));
    }

    void pastes_pictures_at_most_as_wide_as_the_text() {
        const QByteArray wide = Encoded(Filled(1500, 300));
        QVERIFY(edit_->InsertPictureBytes(wide));
        QVERIFY(edit_->InsertPictureBytes(Encoded(Filled(3200, 200))));
        QVERIFY(!edit_->InsertPictureBytes("no picture"));
        const Document now = Now();
        QCOMPARE(now.pictures.size(), size_t(2));
        QCOMPARE(now.pictures[0].bytes, wide.toStdString());
        QCOMPARE(now.pictures[0].goalWidth, edit_->TextWidth() * 15);
        QCOMPARE(now.pictures[1].width, 1600);
        window_->SelectPicture();
        edit_->ResizePicture(edit_->SelectedPicture(), QSizeF(100, 20));
        QCOMPARE(Now().pictures[0].goalWidth, 1500);
        QCOMPARE(Now().pictures[0].bytes, wide.toStdString());
        edit_->undo();
        QCOMPARE(Now().pictures[0].goalWidth, edit_->TextWidth() * 15);
    }

    void copies_what_it_pastes() {
        const std::string rtf =
            "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red200\\green0\\blue0;}\\f0\\fs40 big \\cf1 red\\cf0\\par"
            "\\trowd\\cellx2000\\cellx4000\\intbl a\\cell b\\cell\\row\\pard last}";
        edit_->Load(rtf);
        edit_->selectAll();
        edit_->copy();
        const QMimeData* const mime = QApplication::clipboard()->mimeData();
        QVERIFY(mime->hasFormat("text/rtf") && mime->hasHtml() && mime->hasText());
        EditorWindow other(theme_);
        other.edit->paste();
        const Document from = Now(), to = other.Now();
        QCOMPARE(to.text, from.text);
        QCOMPARE(to.runs.size(), from.runs.size());
        QVERIFY(to.runs[1].format.color == from.runs[1].format.color);
        QCOMPARE(int(to.runs[0].format.halfPoints), 40);
    }

    /// The paragraphs with their numbers.
    QString Numbered() const {
        const Document now = Now();
        ListMarks marks;
        std::string lines;
        for (const Paragraph& paragraph : now.paragraphs)
            lines += marks.NextMark(paragraph.format) +
                     now.text.substr(paragraph.begin, paragraph.end - paragraph.begin) + "|";
        return QString::fromStdString(lines);
    }

    void pasted_lists_count_on_their_own() {
        const auto web = [this] {
            auto* const page = new QMimeData;
            page->setHtml("<ol><li>x</li><li>y</li></ol>");
            Paste(page);
        };
        const auto typeList = [this] {
            window_->Run("numbers");
            PressKeys(edit_, {"A", "Return", "B", "Return", "C", "Return", "D"});
        };
        typeList();
        PressKeys(edit_, {"Return", "Return", "E", "Return"});
        web();
        QCOMPARE(Numbered(), QString("1.a|2.b|3.c|4.d|e|1.x|2.y|"));
        // It goes on with the list in whose line it begins.
        web();
        QCOMPARE(Numbered(), QString("1.a|2.b|3.c|4.d|e|1.x|2.yx|3.y|"));
        PressKeys(edit_, {"Return", "Return", "F", "Return"});
        web();
        QCOMPARE(Numbered(), QString("1.a|2.b|3.c|4.d|e|1.x|2.yx|3.y|f|1.x|2.y|"));
        // What moves within its list stays of it, in front of all too; elsewhere it is a list of its own.
        struct Move {
            const char* from;
            const char* keys;
            const char* text;
        };
        for (const Move& move : {Move{"c", "Ctrl+Home", "1.c|2.a|3.b|4.d|e||"},
                                 {"a", "Down", "1.b|2.a|3.c|4.d|e||"},
                                 {"b", "Ctrl+End", "1.a|2.c|3.d|e|1.b|2.|"}}) {
            edit_->Load("{\\rtf1}");
            typeList();
            PressKeys(edit_, {"Return", "Return", "E", "Return"});
            Select(move.from);
            PressKeys(edit_, {"Home", "Shift+Down", "Ctrl+X", "Home", move.keys, "Ctrl+V"});
            QCOMPARE(Numbered(), QString(move.text));
            PressKeys(edit_, {"Ctrl+Z", "Ctrl+Z"});
            QCOMPARE(Numbered(), QString("1.a|2.b|3.c|4.d|e||"));
            // The copy is of another text now, though its list has the same number.
            edit_->Load("{\\rtf1}");
            typeList();
            PressKeys(edit_, {"Return", "Ctrl+V"});
            QCOMPARE(Numbered(), "1.a|2.b|3.c|4.d|1." + QString(move.from) + "|2.|");
        }
    }

    void finds_and_replaces_in_one_step() {
        edit_->Load("{\\rtf1 Lamp lamp lamps \\b lamp\\b0  end}");
        PressKeys(edit_, {"Ctrl+F"});
        FindBar& bar = *window_->find;
        QVERIFY(bar.isVisible());
        auto* const field = In<QLineEdit>(bar, "findField");
        QCOMPARE(ToldDuring([field] { QTest::keyClicks(field, "lamp"); }), QStringList("said 1 of 4"));
        QVERIFY(SeenTexts<QLabel>(bar).contains("1 of 4"));
        QCOMPARE(field->accessibleDescription(), QStringLiteral("1 of 4"));
        PressKeys(edit_, {"F3"});
        QCOMPARE(edit_->textCursor().selectionStart(), 5);
        for (QCheckBox* box : bar.findChildren<QCheckBox*>())
            box->setChecked(true);
        bar.ShowReplace();
        field->setText("lamp");
        In<QLineEdit>(bar, "replaceField")->setText("light");
        QCOMPARE(ToldDuring([&] { bar.ReplaceAll(); }), QStringList("said 2 replaced"));
        QCOMPARE(window_->Text(), std::string("Lamp light lamps light end"));
        QVERIFY(Now().runs[1].format.bold);
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(!bar.isVisible() && edit_->extraSelections().isEmpty());
        edit_->undo();
        QCOMPARE(window_->Text(), std::string("Lamp lamp lamps lamp end"));
        QVERIFY(!edit_->IsModified());
    }

    void marks_words_without_touching_the_text() {
        SmallChecker checker;
        edit_->Load("{\\rtf1 The kepeer of teh light}");
        const std::string before = edit_->Rtf();
        const auto marks = [this] {
            [this] { QTRY_VERIFY(edit_->Spelling().IsDone()); }();
            return edit_->document()->firstBlock().layout()->formats();
        };
        edit_->Spelling().SetChecker(&checker, {0x0000ff, 13});
        QCOMPARE(marks().size(), 2);
        QCOMPARE(marks()[0].start, 4);
        QVERIFY(!edit_->IsModified());
        QCOMPARE(edit_->Rtf(), before);
        QTextCursor cursor(edit_->document());
        cursor.setPosition(6);
        const QTextCursor word = edit_->Spelling().MarkedWordAt(cursor);
        QCOMPARE(word.selectedText(), QStringLiteral("kepeer"));
        QMenu menu;
        edit_->Spelling().AddToMenu(menu, word);
        QCOMPARE(menu.actions().value(0)->text(), QStringLiteral("keeper"));
        menu.actions().value(0)->trigger();
        edit_->setTextCursor(edit_->document()->find(" of"));
        PressKeys(edit_, {"Left", "X", "Ctrl+Z"});
        QCOMPARE(window_->Text(), std::string("The keeper of teh light"));
        QCOMPARE(marks().size(), 1);
        QVERIFY(!marks()[0].format.fontStrikeOut());
        edit_->Spelling().SetChecker(&checker, {0x0000ff, 65});
        QCOMPARE(marks().size(), 1);
        QVERIFY(marks()[0].format.fontStrikeOut());
        // The keys go round, past what isn't judged yet, and say so where nothing is marked.
        edit_->Load("{\\rtf1 teh one\\par two\\par kepeer teh}");
        edit_->setFocus();
        const auto step = [this](const char* key) {
            const QStringList told = ToldDuring([this, key] { PressKeys(edit_, {key}); });
            return QStringLiteral("%1 %2").arg(told.join(' ')).arg(edit_->textCursor().selectionStart());
        };
        for (const auto& [key, told] :
             {std::pair("F7", "teh 0"), {"F7", "kepeer 12"}, {"F7", "teh 19"}, {"F7", "teh 0"}, {"Shift+F7", "teh 19"}})
            QCOMPARE(step(key), QStringLiteral("said Misspelled: ") + told);
        checker.wrong.clear();
        edit_->Spelling().Recheck();
        QCOMPARE(step("F7"), QStringLiteral("said No misspelled words 19"));
        edit_->Spelling().SetEnabled(false);
        QCOMPARE(step("F7"), QStringLiteral("said The spelling of this text is not checked 19"));
        QCOMPARE(marks().size(), 0);
    }

    void chooses_words_to_check() {
        const QString kinds = "B2B USA iPhone Word word2 x 1852";
        struct Case {
            QString text, words;
            SkippedWords skipped = {};
        };
        const Case cases[] = {{QStringLiteral("don't 'quoted' it\u2019s"), QStringLiteral("don't quoted it\u2019s")},
                              {kinds, "Word"},
                              {kinds, "USA Word", {.capitals = false}},
                              {kinds, "Word word2", {.withDigits = false}},
                              {kinds, "iPhone Word", {.mixedCase = false}},
                              {kinds, "B2B USA Word word2", {.capitals = false, .withDigits = false}},
                              {"see https://foo.example/baar me@mail.example www.bla.example /usr/bin end", "see end"},
                              {"me@mail.bla end", "me mail bla end", {.addresses = false}},
                              {QStringLiteral("caf\u00e9 \u043c\u0430\u044f\u043a e\u0301te\u0301"),
                               QStringLiteral("caf\u00e9 \u043c\u0430\u044f\u043a e\u0301te\u0301")}};
        for (const Case& c : cases) {
            QStringList found;
            for (const SpellMark& word : WordsToCheck(c.text, c.skipped))
                found << c.text.mid(word.begin, word.length);
            QCOMPARE(found.join(' '), c.words);
        }
    }

    void captures_beside_the_typing() {
        std::string body;
        for (int i = 0; i < 2000; ++i)
            body += "A line of the log, \\b with\\b0  words.\\par ";
        edit_->Load("{\\rtf1 " + body + "}");
        edit_->moveCursor(QTextCursor::End);
        CapturedTexts texts;
        edit_->CaptureAside([&](CapturedTexts got) { texts = std::move(got); });
        window_->Type("late");
        QTRY_VERIFY(!texts.rtf.empty());
        QCOMPARE(texts.rtf, edit_->Rtf());
        QVERIFY(texts.plainText.ends_with("late"));
    }

    void a_capture_is_handed_over_whatever_comes_between() {
        const std::function<void()> between[] = {[this] { edit_->findChild<QTimer*>("sizeTimer")->start(0); },
                                                 [this] { theme_.SetAppearance(Appearance::Dark); }};
        for (const std::function<void()>& comes : between) {
            OpenEditor();
            window_->Type("Kept");
            CapturedTexts texts;
            edit_->CaptureAside([&](CapturedTexts got) { texts = std::move(got); });
            comes();
            QTRY_COMPARE(texts.plainText, std::string("Kept"));
            QCOMPARE(texts.rtf, edit_->Rtf());
            QTRY_COMPARE(edit_->RtfSize(), static_cast<qint64>(texts.rtf.size()));
        }
    }

    void tells_when_the_text_gets_too_large() {
        QSignalSpy told(edit_, &RichTextEdit::SizeLimitPassed);
        edit_->insertPlainText(QString(300000, u'x'));
        QTRY_COMPARE(edit_->Beside().LongestSlice() > 0, true);
        edit_->insertPlainText(QString(300000, u'y'));
        QVERIFY(told.size() >= 1);
        QTRY_VERIFY(told.last().at(0).toBool() && edit_->RtfSize() < 650000);
        QTRY_COMPARE(told.last().at(1).toLongLong(), static_cast<qint64>(edit_->Rtf().size()));
        edit_->undo();
        edit_->undo();
        QTRY_VERIFY(!told.last().at(0).toBool());
    }

    void takes_pictures_out() {
        edit_->InsertPictureBytes(Encoded(Filled(20, 10)));
        edit_->InsertPictureBytes(Encoded(Filled(30, 10)));
        const auto taken = edit_->TakePictures({edit_->Pictures().at(1).position});
        QCOMPARE(taken.size(), size_t(1));
        QCOMPARE(taken[0].data, Encoded(Filled(30, 10)).toStdString());
        QCOMPARE(taken[0].fileName, QStringLiteral("Picture 2.png"));
        QCOMPARE(Now().pictures.size(), size_t(1));
        edit_->undo();
        QCOMPARE(Now().pictures.size(), size_t(2));
    }

    void looks_right() {
        SmallChecker checker;
        edit_->Load(BytesOf(LORE_TEST_DATA "/editor/looks.rtf"));
        edit_->moveCursor(QTextCursor::End);
        edit_->InsertPictureBytes(Encoded(Filled(220, 90)));
        edit_->Spelling().SetChecker(&checker, {0x0000ff, 13});
        QTRY_VERIFY(edit_->Spelling().IsDone());
        window_->find->ShowReplace();
        In<QLineEdit>(*window_->find, "findField")->setText("the");
        const BothLooks looks{theme_};
        looks.Shoot(window_->frame, "editor");
        window_->find->Close();
        window_->frame.resize(420, 500);
        looks.Shoot(window_->frame, "editor-narrow");
        // The keys open what doesn't fit.
        auto* const more = In<QToolButton>(*window_->bar, "qt_toolbar_ext_button");
        more->setFocus(Qt::TabFocusReason);
        QStringList rest;
        QTimer::singleShot(0, more, [&rest] {
            rest = TextsOf(qobject_cast<QMenu*>(QApplication::activePopupWidget()));
            QApplication::activePopupWidget()->close();
        });
        QTest::keyClick(more, Qt::Key_Space);
        QVERIFY2(rest.contains("Table") && rest.contains("Size of picture"), qPrintable(rest.join(' ')));
    }
};

}  // namespace lore

QTEST_MAIN(lore::EditorTest)
#include "editor_test.moc"
