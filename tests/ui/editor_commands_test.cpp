#include "support/read_world.h"
#include "ui/editor/block_place.h"
#include "ui/editor/color_menu.h"
#include "ui/editor/picture_frame.h"
#include "ui/editor_window.h"
#include "ui/picture_bytes.h"

namespace lore {
namespace {

const std::string kMerged =
    "{\\rtf1 before\\par\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\clvmgf\\cellx3000\\pard\\intbl wide\\cell\\cell "
    "tall\\cell\\row\\trowd\\cellx1000\\cellx2000\\clvmrg\\cellx3000\\pard\\intbl left\\cell mid\\cell\\cell\\row"
    "\\pard end}";

/// The words of each cell of a table; a cell stands at each place that it spans.
QString CellsOf(const QTextTable* table) {
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

QByteArray Address(const QByteArray& bytes, const char* form) {
    return QByteArray("data:image/") + form + ";base64," + bytes.toBase64();
}

}  // namespace

/// The commands of the editor's bars, and what comes in by other ways than keys: an input method, drops, pastes,
/// dialogs and the corner of a picture.
class EditorCommandsTest : public QObject, protected EditorWorld {
    Q_OBJECT

private slots:
    void init() { OpenEditor(); }
    void cleanup() { window_.reset(); }
    void tables_change_at_the_caret() {
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
            QVERIFY2(CellsOf(Tables().value(0)) == c.cells, name + ": " + CellsOf(Tables().value(0)).toUtf8());
            const std::string changed = edit_->Rtf();
            edit_->undo();
            QVERIFY2(!edit_->IsModified() && edit_->Rtf() == kMerged, name);
            edit_->Load(changed);
            QVERIFY2(CellsOf(Tables().value(0)) == c.stored, name + ", stored: " + CellsOf(Tables().value(0)).toUtf8());
            const std::string text = window_->Text();
            QVERIFY2(text.starts_with("before\n") && text.ends_with("\nend"), name);
        }
    }

    void typing_over_a_part_of_a_table_can_be_undone() {
        const std::string rtf =
            "{\\rtf1\\ansi fo\\par\\trowd\\cellx4500\\cellx9000\\pard\\intbl 1\\cell 2\\cell\\row"
            "\\trowd\\clmgf\\cellx4500\\clmrg\\cellx9000\\pard\\intbl 3\\cell\\cell\\row\\pard after\\par}";
        edit_->Load(rtf);
        QTextCursor selection = edit_->textCursor();
        selection.setPosition(4);
        selection.setPosition(3, QTextCursor::KeepAnchor);
        edit_->setTextCursor(selection);
        QTest::keyClicks(edit_, "x");
        UndoAll();
        QCOMPARE(edit_->Rtf(), rtf);
    }

    void each_command_changes_one_thing() {
        const std::string rtf =
            "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red200\\green0\\blue0;}\\pard\\li720\\qc\\f0\\b\\cf1 word"
            "\\par next}";
        struct Case {
            const char* command;
            std::function<void(Look&)> change;
        };
        const Case cases[] = {
            {"strike", [](Look& look) { look.characters.strike = true; }},
            {"superscript", [](Look& look) { look.characters.position = ScriptPosition::Superscript; }},
            {"subscript", [](Look& look) { look.characters.position = ScriptPosition::Subscript; }},
            {"left", [](Look& look) { look.paragraph.align = ParagraphAlign::Left; }},
            {"right", [](Look& look) { look.paragraph.align = ParagraphAlign::Right; }},
            {"justify", [](Look& look) { look.paragraph.align = ParagraphAlign::Justify; }},
            {"indent", [](Look& look) { look.paragraph.leftIndent = 1080; }},
            {"outdent", [](Look& look) { look.paragraph.leftIndent = 360; }},
            {"plain", [](Look& look) {
                 look.characters = CharFormat{};
                 look.characters.halfPoints = 27;
             }}};
        const Look first(ReadRtf(rtf));
        for (const Case& c : cases) {
            SelectWord(rtf);
            Look wanted = first;
            c.change(wanted);
            window_->Run(c.command);
            QVERIFY2(Look(Now()) == wanted, c.command);
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
                Look now(Now());
                if (const std::optional<TextColor> chosen = now.characters.*field)
                    QCOMPARE(NearestColorName(QColor(chosen->red, chosen->green, chosen->blue)), text);
                else
                    QVERIFY2(text == "Automatic" || text == "No highlight", qPrintable(text));
                now.characters.*field = first.characters.*field;
                QVERIFY2(now == first, qPrintable(text));
            }
        }
    }

    void a_link_is_opened_from_within_it_alone() {
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

    void one_hit_is_replaced_and_the_search_turns_at_both_ends() {
        edit_->Load("{\\rtf1 lamp one \\b lamp\\b0  two lamp}");
        window_->find->ShowReplace();
        window_->find->findChild<QLineEdit*>("findField")->setText("lamp");
        const auto hit = [this] {
            return edit_->textCursor().hasSelection() ? edit_->textCursor().selectionStart() : -1;
        };
        QCOMPARE(hit(), 0);
        for (const auto& [key, place] : {std::pair("Shift+F3", 18), {"Shift+F3", 9}, {"F3", 18}, {"F3", 0}}) {
            PressKeys(edit_, {key});
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
        const Document now = Now();
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

    void an_input_method_writes_as_keys_do() {
        const QString text = QStringLiteral("\u706f\u53f0");
        const std::string written = text.toStdString(), rtf = "{\\rtf1 one two three}";
        edit_->Load(rtf);
        Select("two");
        Commit(text);
        QCOMPARE(window_->Text(), "one " + written + " three");
        UndoAll();
        QCOMPARE(edit_->Rtf(), rtf);
        // The look of what is written next, and not the link in front of it.
        edit_->Load("{\\rtf1 one {\\field{\\*\\fldinst HYPERLINK \"http://a\"}{\\fldrslt two}}}");
        edit_->moveCursor(QTextCursor::End);
        window_->bar->Command("bold")->trigger();
        Commit(text);
        const Document now = Now();
        QCOMPARE(now.text, "one two" + written);
        QVERIFY(now.runs.back().format.bold && now.runs.back().format.link < 0);
    }

    void drops_land_where_they_fall() {
        QTest::keyClicks(edit_, "begin end");
        QTextCursor middle(edit_->document());
        middle.setPosition(6);
        const QPoint at = edit_->cursorRect(middle).center();
        QMimeData words;
        words.setHtml("<b>bold</b> ");
        words.setText("bold ");
        QVERIFY(DropOn(edit_->viewport(), words, at));
        QVERIFY(QString::fromStdString(Now().text).startsWith("begin bold"));
        const Document dropped = Now();
        QVERIFY(
            std::any_of(dropped.runs.begin(), dropped.runs.end(), [](const TextRun& run) { return run.format.bold; }));

        QMimeData picture;
        picture.setImageData(Filled(30, 20));
        QVERIFY(DropOn(edit_->viewport(), picture, at));
        QCOMPARE(Now().pictures.size(), size_t{1});

        QTemporaryDir folder;
        const QString png = folder.filePath("a.png"), text = folder.filePath("b.txt");
        PutBytes(png.toStdString(), Encoded(Filled(40, 20)).toStdString());
        PutBytes(text.toStdString(), "words");
        QSignalSpy others(edit_, &RichTextEdit::FilesDropped);
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(png), QUrl::fromLocalFile(text)});
        QVERIFY(DropOn(edit_->viewport(), files, at));
        QCOMPARE(Now().pictures.size(), size_t{2});
        QCOMPARE(others.size(), 1);
        QCOMPARE(others[0][0].toStringList(), QStringList{text});
        QVERIFY(QString::fromStdString(Now().text).endsWith("end"));
        UndoAll();
        QCOMPARE(Now().text, std::string());
    }

    void pictures_of_pasted_pages_come_in() {
        const QByteArray bmp = Encoded(Filled(12, 8, Qt::red), "BMP");
        auto* const page = new QMimeData;
        page->setHtml("<p>one <img width=50 src=\"" + QString::fromLatin1(Address(Encoded(Filled(100, 40)), "png")) +
                      "\"> two <img src=\"" + QString::fromLatin1(Address(bmp, "bmp")) +
                      "\"><img alt=\"three\" src=\"data:image/png;base64,bm8gcGljdHVyZQ==\"></p>");
        Paste(page);
        const Document now = Now();
        QCOMPARE(now.text, std::string("one  two three"));
        QCOMPARE(now.pictures.size(), size_t{2});
        QCOMPARE(now.pictures[0].bytes, Encoded(Filled(100, 40)).toStdString());
        QCOMPARE(now.pictures[0].goalWidth, 750);
        QCOMPARE(int(now.pictures[1].kind), int(PictureKind::Png));
        QCOMPARE(now.pictures[1].width, 12);
        edit_->undo();
        QCOMPARE(Now().text, std::string());
        QVERIFY(Now().pictures.empty());
    }

    void a_copied_picture_comes_instead_of_its_description() {
        for (const QString& words : {QString(), QStringLiteral("a ")}) {
            auto* const copied = new QMimeData;
            copied->setHtml("<p>" + words + "<img src=\"https://far.example/t.png\" alt=\"tower\">");
            copied->setImageData(Filled(12, 8, Qt::red));
            Paste(copied);
            QCOMPARE(Now().text, words.isEmpty() ? std::string() : std::string("a tower"));
            QCOMPARE(Now().pictures.size(), size_t{words.isEmpty() ? 1u : 0u});
            edit_->undo();
        }
    }

    void a_copied_picture_comes_from_its_bytes_and_one_that_cant_be_read_is_told() {
        const std::tuple<const char*, QByteArray, size_t> cases[] = {{"image/png", Encoded(Filled(12, 8)), 1},
                                                                     {"image/bmp", Encoded(Filled(12, 8), "BMP"), 1},
                                                                     {"image/png", "no picture", 0}};
        for (const auto& [form, bytes, count] : cases) {
            auto* const copied = new QMimeData;
            copied->setImageData(QImage());  // as Qt gives one that is too large
            copied->setData(QLatin1String(form), bytes);
            Paste(copied);
            bool told = false;
            QTimer::singleShot(0, edit_, [&] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                told = box;
                if (box)
                    box->accept();
            });
            QCoreApplication::processEvents();
            QCOMPARE(told, count == 0);
            QCOMPARE(Now().pictures.size(), count);
            UndoAll();
        }
    }

    void pictures_of_pasted_texts_are_held_to_the_same_size() {
        auto* const page = new QMimeData;
        page->setHtml("<img src=\"" + QString::fromLatin1(Address(Encoded(Filled(3200, 100)), "png")) + "\">");
        Paste(page);
        auto* const text = new QMimeData;
        text->setData("text/rtf", "{\\rtf1 a{\\pict\\pngblip\\picw2400\\pich100\\picwgoal60000\\pichgoal2500 " +
                                      Encoded(Filled(2400, 100)).toHex() + "}b}");
        Paste(text);
        const Document now = Now();
        QCOMPARE(now.pictures.size(), size_t{2});
        for (const Picture& picture : now.pictures) {
            QCOMPARE(picture.width, 1600);
            QVERIFY(picture.goalWidth <= edit_->TextWidth() * 15);
            QVERIFY(picture.goalHeight > 0 && picture.goalWidth > 10 * picture.goalHeight);
        }
    }

    void a_corner_drag_keeps_the_shape() {
        QVERIFY(edit_->InsertPictureBytes(Encoded(Filled(200, 100))));
        window_->SelectPicture();
        const PictureFrame frame(*edit_, theme_);
        const QPoint corner = frame.RectOf(edit_->SelectedPicture()).bottomRight().toPoint();
        const auto drag = [this, corner](const QPoint& by) {
            DragOn(*edit_->viewport(), corner, corner + by);
            TakeShot(window_->frame, QStringLiteral("editor-picture-drag"));
            QTest::mouseRelease(edit_->viewport(), Qt::LeftButton, {}, corner + by);
        };
        drag({-100, -30});
        QCOMPARE(Now().pictures[0].goalWidth / 15, 140);
        QCOMPARE(Now().pictures[0].goalHeight / 15, 70);
        QCOMPARE(Now().pictures[0].bytes, Encoded(Filled(200, 100)).toStdString());
        edit_->undo();
        QCOMPARE(Now().pictures[0].goalWidth / 15, 200);
        window_->SelectPicture();
        drag({5000, 0});
        QVERIFY(Now().pictures[0].goalWidth <= edit_->TextWidth() * 15);
    }

    void dialogs_ask_for_links_tables_and_sizes() {
        const auto run = [this](const char* name) { return [this, name] { window_->Run(name); }; };
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) {
            const QList<QLineEdit*> fields = dialog.findChildren<QLineEdit*>();
            QCOMPARE(fields.size(), 2);
            fields[0]->setText("a lamp");
            fields[1]->setText("lamps.example");
        });
        QCOMPARE(Now().text, std::string("a lamp"));
        QCOMPARE(Now().links.size(), size_t{1});
        QCOMPARE(Now().links[0], std::string("https://lamps.example"));
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) {
            QCOMPARE(dialog.findChildren<QLineEdit*>().size(), 1);
            dialog.reject();
        });
        QCOMPARE(Now().links.size(), size_t{1});
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) { Press(dialog, "Remove link"); });
        QVERIFY(Now().links.empty() || Now().runs[0].format.link < 0);
        QCOMPARE(Now().text, std::string("a lamp"));

        edit_->clear();
        window_->InDialog(
            "tableDialog", [this] { emit window_->bar->findChild<QAction*>("insertTable")->triggered(); },
            [](QDialog& dialog) {
                const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
                QTest::keyClicks(numbers[0], "4");
                numbers[1]->setValue(2);
            });
        QCOMPARE(Now().rows.size(), size_t{2});
        const Document table = Now();
        QCOMPARE(table.rowFormats[table.rows[0].format].cells.size(), size_t{4});

        edit_->clear();
        QVERIFY(edit_->InsertPictureBytes(Encoded(Filled(200, 100))));
        window_->SelectPicture();
        window_->InDialog("pictureDialog", run("pictureSize"), [](QDialog& dialog) {
            const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
            numbers[1]->setValue(30);
            QCOMPARE(numbers[0]->value(), 60);
        });
        QCOMPARE(Now().pictures[0].goalWidth, 60 * 15);
        QCOMPARE(Now().pictures[0].goalHeight, 30 * 15);
    }

    void enter_in_a_row_without_a_grid_stays_in_it() {
        // A row whose cells no row format describes.
        edit_->Load("{\\rtf1 before\\par\\pard\\intbl first\\cell second\\cell\\row\\pard after\\par}");
        const Document before = Now();
        QTextCursor caret = edit_->document()->find("first");
        caret.setPosition(caret.selectionStart() + 2);
        edit_->setTextCursor(caret);
        QTest::keyClick(edit_, Qt::Key_Return);
        const Document now = Now();
        const auto ends = [](const Document& document, ParagraphEnd end) {
            return std::count_if(document.paragraphs.begin(), document.paragraphs.end(),
                                 [end](const Paragraph& paragraph) { return paragraph.endedBy == end; });
        };
        QCOMPARE(ends(now, ParagraphEnd::Cell), ends(before, ParagraphEnd::Cell));
        QCOMPARE(ends(now, ParagraphEnd::Row), ends(before, ParagraphEnd::Row));
        QVERIFY(now.text.find("fi\nrst") != std::string::npos);
        edit_->undo();
        QCOMPARE(Now().text, before.text);
    }

    void marks_of_lists_from_right_to_left_stand_at_the_right() {
        edit_->Load(
            "{\\rtf1\\pard{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}\\fi-360\\li720 left\\par\\pard\\rtlpar"
            "{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}\\fi-360\\ri720\\qr \\u1513?\\u1500?\\u1493?\\u1501?\\par}");
        edit_->clearFocus();
        TakeShot(window_->frame, QStringLiteral("editor-rtl-list"));
        const QImage shown = edit_->viewport()->grab().toImage();
        const QColor ground = shown.pixelColor(1, 1);
        const qreal scale = shown.devicePixelRatio();
        const auto inked = [&](double left, double right, const QRectF& line) {
            for (int y = int(line.top() * scale); y < int(line.bottom() * scale); ++y) {
                for (int x = int(std::max(left, 0.0) * scale); x < int(right * scale) && x < shown.width(); ++x) {
                    if (shown.pixelColor(x, y) != ground)
                        return true;
                }
            }
            return false;
        };
        for (QTextBlock block = edit_->document()->begin(); block.isValid() && block.length() > 1;
             block = block.next()) {
            const QTextLine line = block.layout()->lineAt(0);
            const QRectF text = line.naturalTextRect().translated(BlockOrigin(*edit_, block));
            const bool mirrored = block.text().at(0).isLetter() && block.text().at(0).direction() == QChar::DirR;
            QCOMPARE(inked(0, text.left() - 2, text), !mirrored);
            QCOMPARE(inked(text.right() + 2, edit_->viewport()->width(), text), mirrored);
        }
    }

private:
    /// Shows a text and selects its first word.
    void SelectWord(const std::string& rtf) {
        edit_->Load(rtf);
        Select("word");
    }
    void Commit(const QString& text) {
        QInputMethodEvent composing(QStringLiteral("deng"), {}), event;
        QApplication::sendEvent(edit_, &composing);
        event.setCommitString(text);
        QApplication::sendEvent(edit_, &event);
    }
};

}  // namespace lore

QTEST_MAIN(lore::EditorCommandsTest)
#include "editor_commands_test.moc"
