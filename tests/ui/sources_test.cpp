#include <set>

#include "bibliography/bibliography_file.h"
#include "ui/bibliography/select_sources_dlg.h"
#include "ui/note_editor/note_actions.h"
#include "ui/sources/citation_layout.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources/edit_source_types_dlg.h"
#include "ui/sources/source_preview_wnd.h"
#include "ui/sources_driver.h"
#include "ui/window_world.h"

namespace lore {

/// The browser, the editor and the types of sources, and the bibliography, as a user drives them on the sample
/// NoteBook.
class SourcesTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void InBrowser(const std::function<void(CViewSourcesDlg&)>& steps) {
        InDialog<CViewSourcesDlg>([this] { PressKeys(window_.get(), {"Ctrl+Shift+S"}); }, steps);
    }
    /// The editor on a new source, from the browser.
    void InNewSource(const std::function<void(CEditSourceDlg&)>& steps) {
        InBrowser([&](CViewSourcesDlg& browser) {
            Next<CEditSourceDlg>(steps);
            browser.NewSource();
        });
    }
    const SourceList& Sources() const { return app_->NoteBook().sources; }
    /// A source that no note is tied to.
    int32_t AddSource(const QString& title, int32_t type = 1) {
        SourceEditor editor = SourceEditor::ForNew(window_->Notes()->Commands().Sources());
        editor.SetField(0, title.toStdString());
        editor.SetField(1, "A press of its own");
        for (size_t i = 0; type != 1 && i < editor.Types().size(); ++i)
            if (editor.Types()[i].number == type)
                editor.ChangeType(i);
        return editor.Save() ? editor.Working().SourceID : -1;
    }

    int32_t SourceWithNotes() const {
        const auto found = std::find_if(Sources().begin(), Sources().end(), [this](const CSource& source) {
            return !source.NoteIDs.IsEmpty() && app_->List().Contains(source.NoteIDs[0]);
        });
        return found == Sources().end() ? -1 : found->SourceID;
    }

    static void RetypeIn(const QWidget& dialog, const char* field, const QString& text) {
        auto* const edit = In<QLineEdit>(dialog, field);
        QVERIFY2(edit && edit->isVisible(), field);
        Retype(edit, text);
    }

    void InSelection(const std::function<void(CSelectSourcesDlg&)>& steps) {
        InDialog<CSelectSourcesDlg>([this] { PressKeys(window_.get(), {"Ctrl+Shift+B"}); }, steps);
    }
    static const CSource& At(CSourcesListWnd* list, int row) {
        return static_cast<const SourceListModel*>(list->model())->At(row);
    }
    static int Count(CSelectSourcesDlg& dialog, const char* name) {
        return In<CSourcesListWnd>(dialog, name)->model()->rowCount();
    }
    std::filesystem::path Bib() const { return DataPaths{Root()}.Bibliography(); }
    int SourceCount() const { return static_cast<int>(Sources().Count()); }

    static void Click(const QWidget& dialog, const char* button) { In<QAbstractButton>(dialog, button)->click(); }
    /// What a drag with the mouse delivers; the drag itself needs a desktop.
    static void DropRow(QListWidget& list, int from, int above) {
        QVERIFY(list.dragDropMode() == QAbstractItemView::InternalMove && list.defaultDropAction() == Qt::MoveAction);
        QVERIFY(list.item(from)->flags().testFlag(Qt::ItemIsDragEnabled));
        QVERIFY(list.model()->moveRow({}, from, {}, above));
    }

private slots:
    void init() { OpenSample(); }
    void cleanup() { CloseWindow(); }
    void filters_narrow_the_list_and_a_change_reaches_the_board() {
        const int32_t id = SourceWithNotes();
        const int32_t note = Sources().FindSourceByID(id)->NoteIDs[0];
        const QString title = QString::fromStdString(Sources().FindSourceByID(id)->FieldTexts[0]);
        InBrowser([&](CViewSourcesDlg& browser) {
            const auto* const rows = browser.List()->model();
            QCOMPARE(rows->rowCount(), static_cast<int>(Sources().Count()));
            Choose(browser.FilterBox(SourceFilter::Title), title);
            QCOMPARE(rows->rowCount(), 1);
            QVERIFY(In<QLabel>(browser, "count")->text().startsWith("1 of "));
            browser.List()->SelectRow(0);
            Next<CEditSourceDlg>([](CEditSourceDlg& dialog) {
                RetypeIn(dialog, "title", "Another title");
                QVERIFY(dialog.Preview()->Text().contains("Another title"));
                QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            });
            DoubleClick(browser.List(), rows->index(0, 0));
            QVERIFY(rows->rowCount() > 1);  // the title that narrowed the list down has gone
            QCOMPARE(browser.List()->SelectedRow(), RowOf(browser, id));
            Choose(browser.FilterBox(SourceFilter::Title), "Another title");
            QCOMPARE(rows->rowCount(), 1);
            Click(browser, "showFilters");
            QCOMPARE(In<QAbstractButton>(browser, "showFilters")->text().remove('&'), QStringLiteral("Show Filters"));
            QVERIFY(!browser.FilterBox(SourceFilter::Title)->isVisible());
        });
        QVERIFY(faults_.faults.empty());
        const int position = app_->List().PositionOf(note);
        const Citations& texts = *app_->List().Notes()[static_cast<size_t>(position)].citations;
        QVERIFY(std::any_of(texts.begin(), texts.end(),
                            [](std::string_view text) { return text.find("Another title") != std::string::npos; }));
        QVERIFY(window_->Board()->CardText(position).contains("Another title"));
    }

    void a_source_with_notes_stays_and_one_without_goes() {
        const int32_t tied = SourceWithNotes(), free = AddSource("Nobody's source");
        InBrowser([&](CViewSourcesDlg& browser) {
            browser.List()->SelectRow(RowOf(browser, tied));
            QTest::keyClick(browser.List(), Qt::Key_Delete);
            browser.List()->SelectRow(RowOf(browser, free));
            prompts_.answers = {PromptAnswer::Yes};
            QTest::keyClick(browser.List(), Qt::Key_Delete);
            QCOMPARE(RowOf(browser, free), -1);
            QVERIFY(browser.List()->SelectedRow() >= 0);
        });
        QCOMPARE(prompts_.seen.size(), size_t{2});
        QVERIFY(Sources().FindSourceByID(tied) && !Sources().FindSourceByID(free));
    }

    void a_click_beside_the_boxes_selects_nothing() {
        AddSource("Alone");
        InBrowser([&](CViewSourcesDlg& browser) {
            Choose(browser.FilterBox(SourceFilter::Title), "Alone");
            QTest::mouseClick(browser.List()->viewport(), Qt::LeftButton, {}, QPoint(200, 20));
            QCOMPARE(browser.List()->SelectedRow(), 0);
            QTest::mouseClick(browser.List()->viewport(), Qt::LeftButton, {},
                              QPoint(200, browser.List()->viewport()->height() - 5));
            QCOMPARE(browser.List()->SelectedRow(), -1);
            Click(browser, "editSource");
        });
        QCOMPARE(prompts_.seen.back(), std::string("Source not selected: You must select a source to edit."));
    }

    void a_new_source_is_typed_with_keys() {
        const int32_t id = Sources().NewSourceID();
        InNewSource([&](CEditSourceDlg& dialog) {
            QTRY_VERIFY(In<QLineEdit>(dialog, "title")->hasFocus());
            QTest::keyClicks(In<QLineEdit>(dialog, "title"), "  The Eddystone Light ");
            auto* const publication = In<QComboBox>(dialog, "publication");
            publication->addItem("harbor press");
            publication->setFocus();
            QTest::keyClicks(publication->lineEdit(), "Harbor Press");
            QTest::keyClick(publication->lineEdit(), Qt::Key_Tab);
            for (const char* const last : {"Smeaton", "Winstanley"}) {
                In<QListWidget>(dialog, "availableAuthors")->clearSelection();
                RetypeIn(dialog, "last", last);
                QTest::keyClick(In<QLineEdit>(dialog, "last"), Qt::Key_Return);
                QTest::keyClick(In<QListWidget>(dialog, "availableAuthors"), Qt::Key_Return);
            }
            auto* const taken = In<QListWidget>(dialog, "sourceAuthors");
            QCOMPARE(Lines(taken), (QStringList{"Smeaton,", "Winstanley,"}));
            taken->setFocus();
            taken->setCurrentRow(1);
            PressKeys(taken, {"Alt+Up"});
            QTRY_VERIFY(dialog.Preview()->Text().indexOf("Winstanley") < dialog.Preview()->Text().indexOf("Smeaton"));
            QCOMPARE(Lines(taken), (QStringList{"Winstanley,", "Smeaton,"}));
            auto* const indent = In<QSpinBox>(dialog, "indent");
            Retype(indent, "99");
            QCOMPARE(indent->value(), 10);
            QCOMPARE(indent->text(), QStringLiteral("10"));
            Retype(In<QSpinBox>(dialog, "etAl"), "0");
            QCOMPARE(In<QSpinBox>(dialog, "etAl")->value(), 1);
            In<QCheckBox>(dialog, "manualDate")->click();
            QVERIFY(!In<QDateEdit>(dialog, "date")->isVisible());
            RetypeIn(dialog, "dateText", "Spring 1759");
            QVERIFY(dialog.Preview()->Text().contains("Spring 1759"));
            QVERIFY2(dialog.isVisible(), "Enter in a field of a name is no save");
            PressKeys(&dialog, {"Ctrl+Return"});
        });
        const CSource* const source = Sources().FindSourceByID(id);
        QVERIFY(source);
        QCOMPARE(source->FieldTexts[0], std::string("The Eddystone Light"));
        QCOMPARE(source->FieldTexts[1], std::string("Harbor Press"));
        QCOMPARE(source->AuthorIDs.Count(), size_t{2});
        QCOMPARE(source->IndentSpaces, 10);
        QCOMPARE(source->DateText, std::string("Spring 1759"));
    }

    void the_date_of_a_source_is_typed() {
        const int32_t id = Sources().NewSourceID();
        InNewSource([](CEditSourceDlg& dialog) {
            Choose(In<QComboBox>(dialog, "type"), "Journal Article");
            RetypeIn(dialog, "title", "A Declaration");
            auto* const has = In<QCheckBox>(dialog, "hasDate");
            auto* const date = In<QDateEdit>(dialog, "date");
            has->setFocus();
            PressKeys(has, {"Space", "Tab"});
            QVERIFY(date->hasFocus());
            QTest::keyClicks(date, "7/4/17");
            PressKeys(date, {"Ctrl+Return"});
            QVERIFY2(dialog.isVisible(), "what is no date yet is mended, not saved as another");
            QTest::keyClicks(date, "76");
            In<QCheckBox>(dialog, "yearOnly")->setFocus();
            QVERIFY2(dialog.Preview()->Text().contains("1776"), qPrintable(dialog.Preview()->Text()));
            QCOMPARE(date->text(), QString(" 7/04/1776"));
            In<QCheckBox>(dialog, "yearOnly")->click();
            date->setFocus(Qt::MouseFocusReason);
            PressKeys(date, {"Home", "1", "7", "7", "5", "Ctrl+Return"});
        });
        const CSource* const source = Sources().FindSourceByID(id);
        QVERIFY(source && source->HasDate && source->YearOnly == 1);
        QVERIFY(source->SourceDate == DateTime(1775, 7, 4));
    }

    void fields_follow_the_type() {
        InNewSource([&](CEditSourceDlg& dialog) {
            auto* const type = In<QComboBox>(dialog, "type");
            const auto shown = [&] {
                std::set<QString> names;
                for (const QLineEdit* const field : dialog.findChildren<QLineEdit*>(QRegularExpression("^slot")))
                    if (field->isVisible())
                        names.insert(field->accessibleName());
                return names;
            };
            for (const char* const key : {"Down", "O"}) {
                PressKeys(type, {key});
                QVERIFY(type->view()->isVisible());
                type->hidePopup();
            }
            QCOMPARE(type->currentText(), QStringLiteral("Book"));
            QCOMPARE(shown(), (std::set<QString>{"Chapter", "Editors", "City Published", "Vol./No.", "Edition/Series",
                                                 "Page #s"}));
            RetypeIn(dialog, "slot4", "12-14");
            Choose(type, "Online");
            QCOMPARE(shown(), (std::set<QString>{"Vol./No.", "URL", "Date Accessed"}));
            QCOMPARE(In<QLineEdit>(dialog, "slot4")->text(), QStringLiteral("12-14"));
            Choose(type, "Lecture/Speech");
            QCOMPARE(In<QComboBox>(dialog, "publication")->accessibleName(), QStringLiteral("Organization"));
            auto* const year = In<QCheckBox>(dialog, "yearOnly");
            QVERIFY(!year->isEnabled());
            for (const bool isOn : {true, false}) {
                In<QCheckBox>(dialog, "hasDate")->click();
                QCOMPARE(year->isEnabled(), isOn);
                year->click();
                QCOMPARE(In<QDateEdit>(dialog, "date")->displayFormat(), QStringLiteral("  yyyy"));
            }
            Click(dialog, "save");
            prompts_.answers = {PromptAnswer::Yes};
        });
        QCOMPARE(prompts_.seen.front(), std::string("No Title: Source must have a title."));
    }

    void a_failed_write_keeps_what_was_typed() {
        const std::filesystem::path file = app_->NoteBook().paths.Sources();
        Block(file);
        const size_t count = Sources().Count();
        InNewSource([&](CEditSourceDlg& dialog) {
            RetypeIn(dialog, "title", "A text that stays");
            Click(dialog, "save");
            QVERIFY(dialog.isVisible() && dialog.Faults()->isVisible());
            QCOMPARE(Sources().Count(), count);
            std::filesystem::remove_all(file);
            Click(dialog, "save");
            QVERIFY(!dialog.isVisible());
        });
        QCOMPARE(Sources().Count(), count + 1);
    }

    void cancel_keeps_new_authors_and_asks_before_it_drops_a_text() {
        const size_t authors = app_->NoteBook().authors.Count(), sources = Sources().Count();
        InNewSource([&](CEditSourceDlg& dialog) {
            RetypeIn(dialog, "last", "Smeaton");
            Click(dialog, "addAuthor");
            RetypeIn(dialog, "title", "Half a title");
            QVERIFY(StaysOpen(dialog, "Esc"));
            prompts_.answers = {PromptAnswer::Yes};
            QVERIFY(!StaysOpen(dialog, "Esc"));
        });
        QCOMPARE(app_->NoteBook().authors.Count(), authors + 1);
        QCOMPARE(Sources().Count(), sources);
    }

    void types_are_made_and_used() {
        const int32_t id = Sources().NewSourceID();
        InNewSource([&](CEditSourceDlg& dialog) {
            Next<CEditSourceTypesDlg>([](CEditSourceTypesDlg& types) {
                Click(types, "newType");
                RetypeIn(types, "typeName", "Log Book");
                auto* const fields = In<QListWidget>(types, "fields");
                fields->setFocus();
                fields->setCurrentRow(3);
                RetypeIn(types, "fieldName", "Ship");
                Choose(In<QComboBox>(types, "endWith"), "Colon");
                fields->setFocus();
                QTest::keyClick(fields, Qt::Key_Up, Qt::AltModifier);
                QTRY_COMPARE(Lines(fields), (QStringList{"[AUTHORS Placeholder]", "[DATE Placeholder]", "Ship",
                                                         "[TITLE Placeholder]"}));
                fields->setCurrentRow(0);
                QVERIFY(!In<QLineEdit>(types, "fieldName")->isEnabled());
                Click(types, "addField");
                Click(types, "save");
            });
            Click(dialog, "editTypes");
            Choose(In<QComboBox>(dialog, "type"), "CST: Log Book");
            auto* const grid = In<QTableWidget>(dialog, "grid");
            QVERIFY(grid->isVisible() && !In<QComboBox>(dialog, "publication")->isVisible());
            QCOMPARE(grid->rowCount(), 2);
            QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("Ship"));
            RetypeIn(dialog, "title", "A log");
            RetypeIn(dialog, "row0", "HMS Argyll");
            QCOMPARE(dialog.Preview()->Text(), QStringLiteral("HMS Argyll: A log."));
            Click(dialog, "save");
        });
        QCOMPARE(Sources().FindSourceByID(id)->CustomTypeCopy.name, std::string("Log Book"));
        QCOMPARE(Sources().FindSourceByID(id)->CustomTypeCopy.fields[2].value, std::string("HMS Argyll"));
    }

    void names_are_dragged_into_another_order() {
        InNewSource([&](CEditSourceDlg& dialog) {
            auto* const available = In<QListWidget>(dialog, "availableAuthors");
            auto* const taken = In<QListWidget>(dialog, "sourceAuthors");
            for (int i = 0; i < 3; ++i)
                emit available->itemActivated((available->setCurrentRow(0), available->item(0)));
            RetypeIn(dialog, "title", "Three keepers");
            const QStringList names = Lines(taken);
            QCOMPARE(names.size(), 3);
            const QString before = dialog.Preview()->Text();
            DropRow(*taken, 0, 3);
            QCOMPARE(Lines(taken), (QStringList{names[1], names[2], names[0]}));
            QVERIFY(dialog.Preview()->Text() != before);
            DropRow(*taken, 2, 1);
            QCOMPARE(Lines(taken), (QStringList{names[1], names[0], names[2]}));
            DropRow(*taken, 1, 0);
            QCOMPARE(Lines(taken), names);
            QCOMPARE(dialog.Preview()->Text(), before);
            Next<CEditSourceTypesDlg>([](CEditSourceTypesDlg& types) {
                Click(types, "newType");
                auto* const fields = In<QListWidget>(types, "fields");
                const QStringList lines = Lines(fields);
                DropRow(*fields, fields->count() - 1, 0);
                QCOMPARE(Lines(fields), (QStringList{lines.last()} + lines.mid(0, lines.size() - 1)));
            });
            prompts_.answers = {PromptAnswer::Yes};
            Click(dialog, "editTypes");
            prompts_.answers = {PromptAnswer::Yes};
        });
    }

    void lines_of_a_citation_stand_on_an_even_grid() {
        const double cell = QFontMetricsF(SourceListFont(kSourcesListBoxes.characterHeight)).horizontalAdvance('H');
        // Where the letters of the last line end, right of what another font draws.
        const auto baseline = [&](const char* text) {
            CSource source;
            source.FormattedText = text;
            source.IndentSpaces = 0;
            const CitationLayout citation(source, kSourcesListBoxes, 5);
            QImage picture(QSize(200, citation.Height()), QImage::Format_RGB32);
            picture.fill(Qt::white);
            QPainter painter(&picture);
            citation.Paint(painter, picture.rect());
            painter.end();
            int bottom = -1;
            for (int y = 0; y < picture.height(); ++y)
                for (int x = static_cast<int>(cell * 2.5); x < picture.width(); ++x)
                    bottom = qGray(picture.pixel(x, y)) < 128 ? y : bottom;
            return bottom;
        };
        const int plain = baseline("HHHHH HHHHH HHHHH");
        QVERIFY(plain > 2 * kSourcesListBoxes.characterHeight);
        for (const char* const text : {"\u706fHHHH HHHHH HHHHH", "HHHHH \u706f\u53f0HHH HHHHH",
                                       "HHHHH HHHHH \u706fHHHH", "HHHHH HHHHH \U0001F600HHHH"})
            QVERIFY2(baseline(text) == plain, text);
    }

    void thousands_of_sources_scroll() {
        SourceList& sources = app_->NoteBook().sources;
        const CSource first = sources[0];
        for (int32_t i = 0; i < 10000; ++i) {
            CSource source = first;
            source.SourceID = sources.NewSourceID();
            source.SourceGUID = "{S" + std::to_string(i) + "}";
            source.FieldTexts[0] = "A title of the number " + std::to_string(i * 7919 % 10007);
            source.FieldTexts[1] = "Press " + std::to_string(i % 500);
            source.NoteIDs.RemoveAll();
            sources.AddTail(source);
        }
        InBrowser([&](CViewSourcesDlg& browser) {
            QScrollBar* const bar = browser.List()->verticalScrollBar();
            browser.resize(780, browser.height());
            QTRY_VERIFY(bar->maximum() > 10000 * 70);  // every box counts before it has been seen
            const int last = browser.List()->model()->rowCount() - 1;
            browser.List()->SelectRow(0);
            QTest::keyClick(browser.List(), Qt::Key_End);
            QCOMPARE(browser.List()->SelectedRow(), last);
            QCOMPARE(bar->value(), bar->maximum());
            Choose(browser.FilterBox(SourceFilter::Publication), "Press 77");
            QCOMPARE(browser.List()->model()->rowCount(), 20);
            Choose(browser.FilterBox(SourceFilter::Publication), "<-ALL PUBLICATIONS->");
            QCOMPARE(browser.List()->model()->rowCount(), last + 1);
            const int wide = bar->maximum(), before = browser.width();
            browser.resize(1, browser.height());
            QVERIFY(browser.width() < before);
            QTRY_VERIFY(bar->maximum() > wide);
        });
    }

    void a_double_click_moves_a_source_over_and_back() {
        InSelection([this](CSelectSourcesDlg& dialog) {
            CSourcesListWnd* const available = In<CSourcesListWnd>(dialog, "available");
            CSourcesListWnd* const selected = In<CSourcesListWnd>(dialog, "selected");
            QCOMPARE(Count(dialog, "available"), SourceCount());
            const int32_t id = At(available, 2).SourceID;
            DoubleClick(available, available->model()->index(2, 0));
            QCOMPARE(Count(dialog, "available"), SourceCount() - 1);
            QCOMPARE(At(selected, 0).SourceID, id);
            DoubleClick(selected, selected->model()->index(0, 0));
            QCOMPARE(Count(dialog, "selected"), 0);
            QTest::keyClick(selected, Qt::Key_C, Qt::ControlModifier);  // there is nothing to copy
            QCOMPARE(At(available, 2).SourceID, id);
        });
    }

    void keys_move_several_sources_over() {
        InSelection([this](CSelectSourcesDlg& dialog) {
            CSourcesListWnd* const available = In<CSourcesListWnd>(dialog, "available");
            QTRY_VERIFY(available->hasFocus());
            QTest::keyClick(available, Qt::Key_Down);
            for (int i = 0; i < 3; ++i)
                QTest::keyClick(available, Qt::Key_Return);
            QVERIFY(dialog.isVisible());
            QCOMPARE(Count(dialog, "selected"), 3);
            CSourcesListWnd* const selected = In<CSourcesListWnd>(dialog, "selected");
            selected->setFocus();
            selected->SelectRow(0);
            QTest::keyClick(selected, Qt::Key_Delete);
            QCOMPARE(Count(dialog, "selected"), 2);
            Click(dialog, "all");
            QCOMPARE(Count(dialog, "available"), 0);
            QVERIFY(!In<QPushButton>(dialog, "all")->isEnabled());
            Click(dialog, "none");
            QCOMPARE(Count(dialog, "available"), SourceCount());
        });
    }

    void formatting_of_all_sources_of_a_bibliography_reaches_the_file_and_nothing_else() {
        const std::string before = BytesOf(app_->NoteBook().paths.Sources());
        InSelection([](CSelectSourcesDlg& dialog) {
            auto* const style = In<QComboBox>(dialog, "style");
            QVERIFY(!style->isEnabled());
            Click(dialog, "all");
            Click(dialog, "common");
            QVERIFY(style->isEnabled());
            style->setCurrentText("APA Style");
            In<QSpinBox>(dialog, "indent")->setValue(5);
            QCOMPARE(At(In<CSourcesListWnd>(dialog, "selected"), 0).FormatStyle, 9);
            QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            QCOMPARE(dialog.result(), 2112);
        });
        const Loaded<SourceList> written = LoadBibliography(Bib(), MakeReadContext(clock_, guids_));
        QVERIFY(written.ReadWhole());
        QCOMPARE(static_cast<int>(written.value.Count()), SourceCount());
        for (const CSource& source : written.value) {
            QCOMPARE(source.FormatStyle, 9);
            QCOMPARE(source.IndentSpaces, 5);
        }
        QVERIFY(BytesOf(app_->NoteBook().paths.Sources()) == before);
    }

    void cancel_and_an_empty_choice_write_no_bibliography() {
        InSelection([](CSelectSourcesDlg& dialog) {
            Click(dialog, "all");
            QVERIFY(!StaysOpen(dialog, "Esc"));
        });
        QVERIFY(!std::filesystem::exists(Bib()));
        InSelection([](CSelectSourcesDlg& dialog) { Click(dialog, "save"); });
        QVERIFY(!std::filesystem::exists(Bib()));
    }

    void stands_in_both_looks() {
        const BothLooks looks{theme_};
        for (int32_t type = 1; type <= 7; ++type)
            AddSource(QStringLiteral("A source of type %1").arg(type), type);
        AddSource(
            "A title that goes on and on, over the end of the line and of the next one, as titles of reports of "
            "royal commissions upon the condition and management of lights, buoys and beacons do");
        AddSource(
            QString::fromUtf8("\xE7\x81\xAF\xE5\xA1\x94\xE3\x81\xAE\xE6\xAD\xB4\xE5\x8F\xB2\xE3\x81\xA8\xE7\x81\xAF"
                              "\xE5\x8F\xB0\xE5\xAE\x88\xE3\x81\xAE\xE7\x94\x9F\xE6\xB4\xBB"));
        AddSource(QString::fromUtf8("\xD7\x9E\xD7\x92\xD7\x93\xD7\x9C\xD7\x95\xD7\xA8\xD7\x99\xD7\x9D"));
        InBrowser([&](CViewSourcesDlg& browser) {
            browser.List()->SelectRow(2);
            looks.Shoot(browser, "sources-browser");
            browser.List()->scrollToBottom();
            looks.Shoot(browser, "sources-browser-end");
            Next<CEditSourceDlg>([&](CEditSourceDlg& dialog) {
                looks.Shoot(dialog, "sources-editor");
                Choose(In<QComboBox>(dialog, "type"), "Book");
                looks.Shoot(dialog, "sources-editor-book");
                Next<CEditSourceTypesDlg>([&](CEditSourceTypesDlg& types) {
                    looks.Shoot(types, "sources-types-empty");
                    Click(types, "newType");
                    looks.Shoot(types, "sources-types");
                    Click(types, "addField");
                    Click(types, "save");
                });
                Click(dialog, "editTypes");
                Choose(In<QComboBox>(dialog, "type"), "CST: Untitled");
                In<QCheckBox>(dialog, "manualDate")->click();
                looks.Shoot(dialog, "sources-editor-custom");
                prompts_.answers = {PromptAnswer::Yes};
            });
            browser.EditSource();
            Choose(browser.FilterBox(SourceFilter::Title), "A source of type 1");
            Choose(browser.FilterBox(SourceFilter::Author), browser.FilterBox(SourceFilter::Author)->itemText(1));
            looks.Shoot(browser, "sources-browser-none");
        });
    }

    void a_bibliography_stands_in_both_looks() {
        const BothLooks looks{theme_};
        InSelection([&](CSelectSourcesDlg& dialog) {
            looks.Shoot(dialog, "bibliography-begin");
            CSourcesListWnd* const available = In<CSourcesListWnd>(dialog, "available");
            available->SelectRow(1);
            for (int i = 0; i < 6; ++i)
                Click(dialog, "add");
            Click(dialog, "common");
            In<CSourcesListWnd>(dialog, "selected")->SelectRow(2);
            In<CSourcesListWnd>(dialog, "selected")->setFocus();
            looks.Shoot(dialog, "bibliography");
        });
    }
};

}  // namespace lore

QTEST_MAIN(lore::SourcesTest)
#include "sources_test.moc"
