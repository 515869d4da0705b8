#include <QDesktopServices>
#include <random>

#include "calendar/reminder_file.h"
#include "notes/attachment_kind.h"
#include "notes/note_finder.h"
#include "notes/note_store.h"
#include "notes/sort_compare.h"
#include "support/draft_reading.h"
#include "support/refused_threads.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/controls/run_when_free.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/main/request_hooks.h"
#include "ui/note_editor/attachment_open.h"
#include "ui/note_editor/attachment_panel.h"
#include "ui/note_editor/category_panel.h"
#include "ui/note_editor/color_panel.h"
#include "ui/note_editor/draft_writer.h"
#include "ui/note_editor/key_word_panel.h"
#include "ui/note_editor/note_actions.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/note_editor/picture_viewer.h"
#include "ui/note_editor/source_panel.h"
#include "ui/note_editor/source_row_view.h"
#include "ui/picture_bytes.h"
#include "ui/ports/qt_progress.h"
#include "ui/ports/quit_guard.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources_driver.h"
#include "ui/window_world.h"

namespace lore {

/// Takes what would be opened by other programs, so that none of them starts.
class TakenAddresses : public QObject {
    Q_OBJECT

public:
    TakenAddresses() {
        for (const char* const scheme : kSchemes)
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "Take");
    }
    ~TakenAddresses() override {
        for (const char* const scheme : kSchemes)
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }
    Q_INVOKABLE void Take(const QUrl& address) { addresses.append(address.toString()); }
    QStringList addresses;

private:
    static constexpr const char* kSchemes[] = {"file", "http", "https", "ftp", "mailto", "javascript"};
};

/// Drives the editor on the sample NoteBook, as a user does: with keys and mouse, from the board and back to it.
class NoteEditorTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    using Steps = std::function<void(NoteEditorWindow&)>;
    void AddNote(const Steps& steps) {
        InDialog<NoteEditorWindow>([this] { window_->Notes()->AddNote(); }, steps);
    }
    /// A new note that takes nothing from the last one.
    void AddEmptyNote(const Steps& steps) {
        app_->GetSettings().Set(Option::EnableNoteAutoFill, 0);
        AddNote(steps);
    }
    void EditNote(int32_t id, const Steps& steps) {
        InDialog<NoteEditorWindow>([&] { window_->Notes()->EditNote(id); }, steps);
    }
    /// Chooses a source in the list of all.
    void AddFirstSource(NoteEditorWindow& editor) {
        Next<CViewSourcesDlg>([this](CViewSourcesDlg& browser) {
            QCOMPARE(browser.windowTitle(), QStringLiteral("Select Source"));
            browser.List()->SelectRow(RowOf(browser, app_->NoteBook().sources[0].SourceID));
            QTest::keyClick(browser.List(), Qt::Key_Return);
        });
        editor.Sources()->AddSource();
        BringUp(editor);
    }
    void RetitleSource(NoteEditorWindow& editor, const QString& title) {
        Next<CEditSourceDlg>([&title](CEditSourceDlg& dialog) {
            Retype(In<QLineEdit>(dialog, "title"), title);
            In<QPushButton>(dialog, "save")->click();
        });
        editor.Sources()->EditSource();
        BringUp(editor);
    }
    const CNote& LastListed() const { return app_->List()[app_->List().Count() - 1]; }
    CNote OnDisk(int32_t id) { return FindNotes(app_->NoteBook().index, LongList{id}, app_->Context(), faults_).at(0); }

    static void Type(NoteEditorWindow& editor, const QString& text) { QTest::keyClicks(editor.Text()->Edit(), text); }
    static QString TextOf(const NoteEditorWindow& editor) { return editor.Text()->Edit()->toPlainText(); }
    static void Save(NoteEditorWindow& editor) {
        BringUp(editor);
        PressKeys(editor.Text()->Edit(), {"Ctrl+Return"});
    }
    /// Chooses a category and makes one below it.
    void AssignFogBells(CategoryPanel& categories) {
        Choose(categories.BoxAt(0), "Engineering");
        QCOMPARE(categories.BoxCount(), 2);
        prompts_.texts = {"Fog bells"};
        Choose(categories.BoxAt(1), "<---Create New Category--->");
        QCOMPARE(categories.BoxAt(0)->currentText(), QStringLiteral("L1: Engineering"));
        QCOMPARE(categories.BoxAt(1)->currentText(), QStringLiteral("L2: Fog bells"));
        QCOMPARE(categories.BoxCount(), 3);
    }
    QString File(const char* name, const QByteArray& bytes = "bytes") const {
        PutBytes(Root() / name, bytes.toStdString());
        return folder_->filePath(name);
    }

    static void TypeUntilDraft(NoteEditorWindow& editor, const QString& text) {
        QSignalSpy written(editor.Drafts(), &DraftWriter::Written);
        Type(editor, text);
        QVERIFY(written.wait(5000));
    }
    int DraftCount() const { return static_cast<int>(DraftStore(app_->NoteBook().paths).ListDrafts().size()); }
    /// A note with other words than it was saved with, as a crash leaves it.
    Draft LeaveDraft(int32_t id) {
        Draft draft;
        draft.note = OnDisk(id);
        draft.baseEdited = draft.note.dateEdited;
        draft.note.rtfText = "{\\rtf1\\ansi Unsaved words}";
        draft.note.plainText = "Unsaved words";
        [&] { QVERIFY(DraftStore(app_->NoteBook().paths).WriteDraft(draft).Ok()); }();
        return draft;
    }
    CNote FirstDraft() {
        Draft draft;
        [&] { QVERIFY(ReadsDraft(DraftStore(app_->NoteBook().paths).ListDrafts().at(0), app_->Context(), draft)); }();
        return draft.note;
    }

    std::unique_ptr<QtProgress> progressOnScreen_;

private slots:
    void init() { OpenSample(1280, 860); }
    void cleanup() {
        CloseWindow();
        shownProgress_ = nullptr;
        progressOnScreen_.reset();
    }
    void a_note_is_written_and_stands_on_the_board() {
        for (const int order : {kAddToBottom, kAddToTop}) {
            app_->SetSortOrder(order);
            const size_t before = app_->List().Count();
            InDialog<NoteEditorWindow>([this] { PressKeys(window_.get(), {"Ctrl+N"}); },
                                       [](NoteEditorWindow& editor) {
                                           QCOMPARE(editor.windowTitle(), QStringLiteral("Edit Note"));
                                           QVERIFY(editor.Text()->Edit()->hasFocus());
                                           Type(editor, "A lamp of my own");
                                           Save(editor);
                                       });
            QCOMPARE(app_->List().Count(), before + 1);
            const CNote& note = app_->List()[order == kAddToTop ? 0 : before];
            QCOMPARE(note.plainText, std::string("A lamp of my own"));
            QVERIFY(note.newlyAdded);
            QVERIFY(!note.keyWords.empty() || !note.sources.IsEmpty());  // filled from the last note of the list
            QCOMPARE(window_->Board()->FocusNote(), note.id);
            QCOMPARE(OnDisk(note.id).id, note.id);
            QVERIFY(window_->Board()->CardText(app_->List().PositionOf(note.id)).contains("A lamp of my own"));
        }
        BothLooks{theme_}.Shoot(*window_, "editor-saved");
    }

    void long_citations_and_remarks_stay_within_the_panel() {
        const QString word(300, 'w');
        AddEmptyNote([&](NoteEditorWindow& editor) {
            AddFirstSource(editor);
            RetitleSource(editor, word);
            const SourceRowView& row = *editor.Sources()->RowAt(0);
            QTest::mouseClick(row.LineButton(), Qt::LeftButton);
            QTest::keyClicks(row.Line(), "see <" + word + ">");
            QTest::keyClick(row.Line(), Qt::Key_Return);
            QVERIFY(row.LineButton()->isVisible());
            QVERIFY(row.LineButton()->toolTip().contains("&lt;" + word));
            const QWidget* const holder = row.parentWidget();
            QTRY_VERIFY(row.height() > 5 * row.fontMetrics().lineSpacing());
            QVERIFY(holder->width() <= holder->parentWidget()->width());
            QVERIFY(row.rect().contains(row.LineButton()->geometry()));
            TakeShot(editor, "editor-long-source");
        });
    }

    void everything_at_the_side_is_saved() {
        AddEmptyNote([&](NoteEditorWindow& editor) {
            Type(editor, "Text");
            AddFirstSource(editor);
            RetitleSource(editor, "A title typed just now");
            SourceRowView& row = *editor.Sources()->RowAt(0);
            QVERIFY(row.accessibleName().contains("A title typed just now"));
            QCOMPARE(row.LineButton()->accessibleName(), QStringLiteral("Click Here to Add Note Specific Info..."));
            QTest::mouseClick(row.LineButton(), Qt::LeftButton);
            QTest::keyClicks(row.Line(), " p. 12 ");

            CategoryPanel& categories = *editor.Categories();
            for (const auto& [key, page] :
                 {std::pair<const char*, QWidget*>("Alt+O", editor.Sources()), {"Alt+A", &categories}}) {
                editor.Text()->Edit()->setFocus();
                PressKeys(editor.Text()->Edit(), {key});
                QVERIFY(page->isVisible() && page->isAncestorOf(editor.focusWidget()));
            }
            QCOMPARE(categories.BoxAt(0)->currentText(), QStringLiteral("Click To Assign New Level"));
            AssignFogBells(categories);
            categories.Tabs()->setCurrentIndex(2);
            QCOMPARE(categories.BoxCount(), 1);
            categories.Tabs()->setCurrentIndex(0);
            QCOMPARE(categories.BoxCount(), 3);

            QTest::keyClicks(editor.KeyWords()->Field(), "tolling");
            QTest::keyClick(editor.KeyWords()->Field(), Qt::Key_Return);
            QVERIFY2(editor.isVisible(), "Enter in a field is no save");
            Next<SelectTagsDlg>([](SelectTagsDlg& dialog) {
                const QTreeWidget& list = *dialog.List();
                QCOMPARE(list.findItems("tolling - (1)", Qt::MatchExactly).first()->checkState(0), Qt::Checked);
                list.findItems("brandy", Qt::MatchStartsWith)
                    .value(0, list.topLevelItem(0))
                    ->setCheckState(0, Qt::Checked);
                dialog.accept();
            });
            editor.KeyWords()->SelectKeyWords();
            QVERIFY(editor.KeyWords()->Field()->text().startsWith("tolling, "));
            editor.Color()->SetColor(MakeRgb(10, 120, 200));
            QCOMPARE(editor.Color()->Button()->accessibleName(), QStringLiteral("Border color: #0a78c8, Sky"));
            Save(editor);
        });
        const CNote note = OnDisk(LastListed().id);
        QCOMPARE(note.sources.Count(), size_t{1});
        QCOMPARE(note.sourceInfo.at(0).text, std::string("p. 12"));
        QCOMPARE(note.categories[0].children.at(0).GetPathText(), std::string("L1: Engineering\nL2: Fog bells\n"));
        QVERIFY(app_->NoteBook().categories.FindByID(note.categories[0].children.at(0).id));
        QVERIFY(note.keyWords.starts_with("tolling, "));
        QCOMPARE(note.borderColor, MakeRgb(10, 120, 200));
        QVERIFY(faults_.faults.empty());
    }

    void keys_on_a_closed_category_box_assign_nothing() {
        AddEmptyNote([&](NoteEditorWindow& editor) {
            CategoryPanel& categories = *editor.Categories();
            AssignFogBells(categories);
            for (int level = 0; level < 3; ++level) {
                QComboBox* const box = categories.BoxAt(level);
                box->setFocus();
                QTest::keyClick(box, Qt::Key_Down);
                QVERIFY(box->view()->isVisible());
                QTest::keyClick(box->view(), Qt::Key_Escape);
                QTRY_VERIFY(!box->view()->isVisible());
            }
            QCOMPARE(categories.BoxCount(), 3);
            QCOMPARE(categories.BoxAt(0)->currentText(), QStringLiteral("L1: Engineering"));
            QCOMPARE(categories.BoxAt(1)->currentText(), QStringLiteral("L2: Fog bells"));
            // In the open list keys choose as ever.
            QComboBox* const box = categories.BoxAt(1);
            box->setFocus();
            QTest::keyClick(box, Qt::Key_Down);
            const int clear = box->findText("Remove From This Level On");
            QVERIFY(clear >= 0);
            for (int row = box->currentIndex(); row < clear; ++row)
                QTest::keyClick(box->view(), Qt::Key_Down);
            QTest::keyClick(box->view(), Qt::Key_Return);
            QTRY_COMPARE(categories.BoxCount(), 2);
        });
    }

    void another_set_leaves_no_box_without_focus() {
        AddEmptyNote([](NoteEditorWindow& editor) {
            CategoryPanel& categories = *editor.Categories();
            Choose(categories.BoxAt(0), "Engineering");
            BringUp(editor);
            categories.BoxAt(1)->setFocus();
            categories.Tabs()->setCurrentIndex(1);
            QCOMPARE(categories.ActiveSet(), 2);
            QCOMPARE(categories.BoxCount(), 1);
            QVERIFY(categories.BoxAt(0)->hasFocus());
        });
    }

    void the_line_of_a_source_opens_by_keys() {
        AddEmptyNote([this](NoteEditorWindow& editor) {
            AddFirstSource(editor);
            SourceRowView* const row = editor.Sources()->RowAt(0);
            QVERIFY(!row->LineButton()->accessibleDescription().isEmpty());
            QVERIFY(!row->LineButton()->accessibleDescription().contains('<'));
            row->LineButton()->setFocus();
            const QSize closed = row->sizeHint();
            // No other control has the focus on the way.
            QSignalSpy focus(qApp, &QApplication::focusChanged);
            QTest::keyClick(row->LineButton(), Qt::Key_Space);
            QVERIFY(row->Line()->hasFocus() && !row->LineButton()->isVisible());
            QCOMPARE(focus.count(), 1);
            QCOMPARE(row->sizeHint(), closed);  // else a click on a line below would miss it
        });
    }

    void a_change_stays_in_its_place() {
        const int32_t id = app_->List()[3].id;
        const CNote before = OnDisk(id);
        window_->Board()->SetFocusNote(id);
        window_->Board()->setFocus();
        InDialog<NoteEditorWindow>(
            [this] { QTest::keyClick(window_->Board(), Qt::Key_Return); },
            [&](NoteEditorWindow& editor) {
                const QString date = In<QLabel>(editor, "lastEdit")->text();
                QVERIFY(date.startsWith("Date/Time of Last Edit"));
                QVERIFY(date.contains(QString::fromStdString(before.dateEdited.Format("%m/%d/%Y  -  %I:%M:%S %p"))));
                PressKeys(editor.Text()->Edit(), {"Ctrl+Home"});
                Type(editor, "Changed: ");
                Save(editor);
            });
        QCOMPARE(app_->List()[3].id, id);
        const CNote after = OnDisk(id);
        QVERIFY(after.plainText.starts_with("Changed: "));
        QCOMPARE(after.dateEdited, clock_.now);
        QCOMPARE(after.attachments.size(), before.attachments.size());
        QCOMPARE(window_->Board()->FocusNote(), id);
    }

    void long_lines_are_kept_and_those_that_nobody_touched_keep_their_bytes() {
        const int32_t id = app_->NoteBook().sources[0].NoteIDs[0];
        CNote note = OnDisk(id);
        QVERIFY(note.sourceInfo.size() == note.sources.Count() || note.sourceInfo.empty());
        std::string words = "caf\xC3\xA9";  // as UTF-8, though it fits the code page
        while (words.size() < 40'000)
            words += ", word " + std::to_string(words.size());
        note.keyWords = words;
        note.sourceInfo.clear();
        for (const int32_t source : note.sources)
            note.sourceInfo.push_back(
                {app_->NoteBook().sources.FindSourceByID(source)->SourceGUID, std::string(40'000, 'r')});
        const ReadContext context = app_->Context();
        QVERIFY(NoteStore(app_->NoteBook(), context, faults_, nullptr).SaveNote(note));
        for (const bool touched : {false, true}) {
            EditNote(id, [&](NoteEditorWindow& editor) {
                if (touched) {
                    editor.KeyWords()->Field()->end(false);
                    QTest::keyClicks(editor.KeyWords()->Field(), ", tail");
                    SourceRowView* const row = editor.Sources()->RowAt(0);
                    QTest::mouseClick(row->LineButton(), Qt::LeftButton);
                    row->Line()->end(false);
                    QTest::keyClicks(row->Line(), "!");
                }
                Save(editor);
            });
            const CNote saved = OnDisk(id);
            QCOMPARE(saved.keyWords.size(), touched ? words.size() + 5 : words.size());
            QCOMPARE(saved.sourceInfo[0].text.size(), size_t{touched ? 40'001u : 40'000u});
            QVERIFY(touched || saved.keyWords == words);
        }
        QVERIFY(faults_.faults.empty());
    }

    void an_empty_note_is_refused_and_can_be_cancelled_without_a_question() {
        const size_t before = app_->List().Count();
        AddNote([this](NoteEditorWindow& editor) {
            Save(editor);
            QVERIFY(editor.isVisible());
            QVERIFY(!StaysOpen(editor, "Esc"));
        });
        QCOMPARE(prompts_.seen, std::vector<std::string>{"No Text In Note: Note must contain some text."});
        QCOMPARE(app_->List().Count(), before);
    }

    void cancelling_a_change_asks_and_changes_nothing() {
        const int32_t id = app_->List()[0].id;
        const CNote before = OnDisk(id);
        EditNote(id, [this](NoteEditorWindow& editor) {
            Type(editor, "lost");
            editor.Sources()->ClearSources();
            QVERIFY(StaysOpen(editor, "Esc"));
            QCOMPARE(prompts_.seen.size(), size_t{1});
            prompts_.answers = {PromptAnswer::Yes};
            QVERIFY(!StaysOpen(editor, "Esc"));
        });
        QCOMPARE(OnDisk(id).rtfText, before.rtfText);
        QVERIFY(OnDisk(id).sources == before.sources);
        QCOMPARE(DraftCount(), 0);
    }

    void a_failed_save_keeps_the_text_and_can_be_tried_again() {
        const std::filesystem::path file =
            app_->NoteBook().paths.NoteFile("DAY" + clock_.now.Format("%m%d%Y") + ".dat");
        Block(file);
        const size_t before = app_->List().Count();
        AddEmptyNote([&](NoteEditorWindow& editor) {
            Type(editor, "Kept");
            Save(editor);
            QVERIFY(editor.isVisible());
            QVERIFY(editor.Faults()->isVisible());
            QCOMPARE(TextOf(editor), QStringLiteral("Kept"));
            TakeShot(editor, "editor-fault");
            std::filesystem::remove_all(file);
            Press(*editor.Faults(), "Try again");
            QTRY_VERIFY(!editor.isVisible());
        });
        QCOMPARE(app_->List().Count(), before + 1);
        QVERIFY(faults_.faults.empty());
    }

    void dropped_files_become_attachments() {
        const QString a = File("a.txt"), b = File("b.pdf");
        AddNote([&](NoteEditorWindow& editor) {
            Type(editor, "Text");
            QMimeData dropped;
            dropped.setUrls({QUrl::fromLocalFile(a), QUrl::fromLocalFile(b), QUrl::fromLocalFile(a),
                             QUrl("https://example.org/x")});
            QTreeWidget& list = *editor.Attachments()->List();
            QVERIFY(list.findChild<QLabel*>("emptyLine")->isVisible());
            QVERIFY(DropOn(editor.Attachments(), dropped));
            QVERIFY2(prompts_.seen.empty(), "where the files come from waits for the end of the drop");
            QTRY_COMPARE(list.topLevelItemCount(), 3);
            QVERIFY(!list.findChild<QLabel*>("emptyLine")->isVisible());
            QCOMPARE(list.topLevelItem(1)->text(0), QStringLiteral("b.pdf"));
            QCOMPARE(list.topLevelItem(1)->text(1), b);
            QCOMPARE(prompts_.seen.size(), size_t{1});  // the one that stands there already
            prompts_.answers = {PromptAnswer::Yes};
            list.setCurrentItem(list.topLevelItem(2));
            // The menu of a click is that of the row under it, that of a key the one of the current row.
            const auto firstEntry = [] {
                auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
                return menu && menu->close() ? menu->actions().constFirst()->text() : QString();
            };
            const auto firstEntryAt = [&](const QPoint& at) {
                QContextMenuEvent ask(QContextMenuEvent::Mouse, at, list.viewport()->mapToGlobal(at));
                QApplication::sendEvent(list.viewport(), &ask);
                return firstEntry();
            };
            QCOMPARE(firstEntryAt(QPoint(5, list.viewport()->height() - 2)), QString());
            QCOMPARE(firstEntryAt(list.visualItemRect(list.topLevelItem(0)).center()), QString("Extract Attachment"));
            PressKeys(&list, {"Shift+F10"});
            QCOMPARE(firstEntry(), QString("Edit Link"));
            QTest::keyClick(&list, Qt::Key_Delete);
            QCOMPARE(list.topLevelItemCount(), 2);
            Save(editor);
        });
        const CNote note = OnDisk(LastListed().id);
        QCOMPARE(note.attachments.size(), size_t{2});
        QVERIFY(std::filesystem::exists(app_->NoteBook().paths.Attachments() / note.attachments[0].storedFile));
    }

    void only_what_cannot_be_a_program_opens_without_a_question() {
        struct Case {
            QString name;  ///< of the file, or an address
            bool isLink, isThere;
            PromptAnswer answer;
            QStringList told;
            bool opens;
        };
        const QString asks = "Open Attachment?";
        const Case cases[] = {{"letter.pdf", false, true, PromptAnswer::No, {}, true},
                              {"no picture.png", false, true, PromptAnswer::No, {}, true},
                              {"run.SH", false, true, PromptAnswer::Cancel, {asks}, false},
                              {"run.SH", false, true, PromptAnswer::Yes, {asks}, true},
                              {"gone.sh", false, false, PromptAnswer::Yes, {"Missing Attachment"}, false},
                              {"https://lamps.example/a?b=c", true, false, PromptAnswer::No, {}, true},
                              {"/bin/true", true, false, PromptAnswer::Yes, {"Open Link"}, false}};
        for (const Case& c : cases) {
            TakenAddresses taken;
            CAttachment attachment;
            attachment.title = "Title";
            attachment.sourceFile = c.name.toStdString();
            attachment.type = c.isLink ? int32_t{kWebLink} : AttachmentKindOf(attachment.sourceFile);
            const QString file = c.isThere ? File(qPrintable(c.name)) : folder_->filePath(c.name);
            prompts_.seen.clear();
            prompts_.answers = {c.answer};
            OpenAttachmentFile(attachment, c.isLink ? "" : file.toStdString(), prompts_, theme_, window_.get());
            const QString address = c.isLink ? c.name : QUrl::fromLocalFile(file).toString();
            QCOMPARE(taken.addresses, c.opens ? QStringList{address} : QStringList());
            QCOMPARE(Told(), c.told);
            QVERIFY(c.told != QStringList(asks) ||
                    prompts_.seen[0].find("? \"Title\" could be a program.") != std::string::npos);
        }
    }

    void links_of_a_text_are_judged() {
        TakenAddresses taken;
        AddNote([](NoteEditorWindow& editor) {
            for (const char* const address : {"https://lamps.example", "file:///bin/true"})
                emit editor.Text()->LinkOpened(address);
        });
        QVERIFY(prompts_.seen.at(0).starts_with("Open Link: \"file:///bin/true\" isn't opened"));
        QCOMPARE(taken.addresses, QStringList{"https://lamps.example"});
    }

    void a_draft_follows_the_typing_and_goes_with_the_window() {
        for (const bool hasThreads : {true, false}) {
            AddEmptyNote([&](NoteEditorWindow& editor) {
                const std::unique_ptr<RefusedThreads> refused(hasThreads ? nullptr : new RefusedThreads);
                for (const char* const words : {"First", " second"}) {
                    TypeUntilDraft(editor, words);
                    QCOMPARE(DraftCount(), 1);
                }
                QCOMPARE(FirstDraft().plainText, std::string("First second"));
                QCOMPARE(FirstDraft().id, -1);
                QVERIFY(hasThreads || RefusedThreads::refused > 0);
                Save(editor);
                QVERIFY(!editor.isVisible());
            });
            QCOMPARE(DraftCount(), 0);
            QCOMPARE(LastListed().plainText, std::string("First second"));
        }
        QVERIFY(faults_.faults.empty());
    }

    void an_order_to_quit_keeps_the_text_as_a_draft() {
        // A new text, nothing to keep, and no room for a draft.
        for (const auto& [changed, writable] : {std::pair(true, true), {false, true}, {true, false}}) {
            CloseWindow();
            OpenSample(1280, 860);
            app_->GetSettings().Set(Option::szSaveWarning, 0);
            const std::filesystem::path drafts = DraftStore::FolderOf(app_->NoteBook().paths);
            if (!writable) {
                std::filesystem::remove_all(drafts);
                PutBytes(drafts, "a file in the way");
            }
            IgnoresClose stays;
            window_->installEventFilter(&stays);
            const QuitGuard guard;
            AddNote([&, changed = changed, writable = writable](NoteEditorWindow& editor) {
                if (changed)
                    Type(editor, "Last words");
                QEvent quit(QEvent::Quit);
                QCoreApplication::sendEvent(qApp, &quit);
                QCOMPARE(editor.isVisible(), !writable);
                QCOMPARE(editor.Faults()->isVisible(), !writable);
                if (writable)
                    return;
                // The window stays, and goes on with its drafts.
                QCOMPARE(TextOf(editor), QStringLiteral("Last words"));
                std::filesystem::remove(drafts);
                QTRY_COMPARE(DraftCount(), 1);
                editor.CancelNote();
                QCOMPARE(DraftCount(), 0);
            });
            QVERIFY(prompts_.seen.empty());
            QVERIFY(window_->isVisible());
            QCOMPARE(DraftCount(), changed && writable ? 1 : 0);
            if (DraftCount() > 0)
                QCOMPARE(FirstDraft().plainText, std::string("Last words"));
            window_->removeEventFilter(&stays);
        }
    }

    void a_draft_that_takes_long_comes_to_its_end() {
        std::vector<std::function<void(Draft)>> asked;
        DraftWriter drafts(
            DraftStore(app_->NoteBook().paths),
            [&](std::function<void(Draft)> whenReady) { asked.push_back(std::move(whenReady)); }, faults_);
        drafts.findChild<QTimer*>()->setInterval(5);
        QSignalSpy written(&drafts, &DraftWriter::Written);
        drafts.Touch();
        QTRY_COMPARE(asked.size(), size_t{1});
        drafts.Touch();
        QTest::qWait(100);
        QCOMPARE(asked.size(), size_t{1});
        Draft draft;
        draft.note = app_->List()[2];
        std::exchange(asked[0], nullptr)(draft);
        QTRY_COMPARE(written.size(), 1);
        QTRY_COMPARE(asked.size(), size_t{2});
        // One that is dropped holds nothing up.
        asked[1] = nullptr;
        drafts.Touch();
        QTRY_COMPARE(asked.size(), size_t{3});
        QVERIFY(drafts.Store().RemoveDraft(draft.note.guid).Ok());
    }

    void a_draft_is_offered_after_a_crash() {
        const int32_t id = app_->List()[2].id;
        LeaveDraft(id);
        PutBytes(DraftStore::FolderOf(app_->NoteBook().paths) / "broken.draft", "LoreDraft 1\n");

        prompts_.answers = {PromptAnswer::Cancel};
        window_->Notes()->OfferUnsavedNotes();
        QCOMPARE(DraftCount(), 1);
        QCOMPARE(faults_.faults.size(), size_t{1});
        prompts_.answers = {PromptAnswer::Yes};
        InDialog<NoteEditorWindow>([this] { window_->Notes()->OfferUnsavedNotes(); },
                                   [](NoteEditorWindow& editor) {
                                       QCOMPARE(TextOf(editor), QStringLiteral("Unsaved words"));
                                       Save(editor);
                                   });
        QCOMPARE(OnDisk(id).plainText, std::string("Unsaved words"));
        QCOMPARE(DraftCount(), 0);
        const size_t asked = prompts_.seen.size();
        window_->Notes()->OfferUnsavedNotes();
        QCOMPARE(prompts_.seen.size(), asked);
    }

    void a_draft_waits_while_nothing_can_be_written() {
        window_->Notes()->OfferUnsavedNotes();
        const Draft draft = LeaveDraft(app_->List()[2].id);
        app_->CloseDeletedNoteBook();
        window_->ShowNoteBook();
        prompts_.seen.clear();
        window_->Notes()->OfferUnsavedNotes();
        QCOMPARE(Told(), QStringList("NoteBook Deleted"));
        QCOMPARE(DraftCount(), 1);
        QVERIFY(faults_.faults.empty());
        QVERIFY(DraftStore(app_->NoteBook().paths).RemoveDraft(draft.note.guid).Ok());
        window_->Notes()->OfferUnsavedNotes();
        QCOMPARE(prompts_.seen.size(), size_t{1});
    }

    void a_captured_clipboard_becomes_a_note() {
        auto* const mime = new QMimeData;
        mime->setHtml("<p>A <b>bold</b> word</p>");
        mime->setText("A bold word");
        QApplication::clipboard()->setMimeData(mime);
        InDialog<NoteEditorWindow>([this] { window_->Capture(); }, [](NoteEditorWindow& editor) { Save(editor); });
        const CNote& note = LastListed();
        QCOMPARE(note.plainText, std::string("A bold word"));
        QVERIFY(note.rtfText.find("\\b") != std::string::npos);
        // A capture goes into the note that is being written.
        prompts_.answers = {PromptAnswer::Yes};
        AddNote([this](NoteEditorWindow& editor) {
            Type(editor, "Typed. ");
            editor.setFocus();
            HooksOf(*window_, *app_, theme_).capture();
            QVERIFY(editor.Text()->Edit()->hasFocus());
            QCOMPARE(TextOf(editor), QStringLiteral("Typed. A bold word"));
            editor.CancelNote();
        });
        QApplication::clipboard()->clear();
        window_->Capture();
        QCOMPARE(prompts_.seen.back(), std::string("Nothing To Capture: The clipboard holds no text for a note."));
    }

    void a_capture_waits_for_the_question_over_the_editor() {
        QApplication::clipboard()->setText("captured");
        for (const bool isCancelled : {false, true}) {
            AddNote([&](NoteEditorWindow& editor) {
                Type(editor, "Typed, ");
                QDialog question(&editor);
                question.setModal(true);
                question.show();
                HooksOf(*window_, *app_, theme_).capture();
                QTest::qWait(300);
                QCOMPARE(TextOf(editor), QStringLiteral("Typed, "));
                if (isCancelled)
                    editor.done(QDialog::Rejected);
                question.close();
                if (!isCancelled)
                    QTRY_COMPARE(TextOf(editor), QStringLiteral("Typed, captured"));
            });
        }
        // The note that it was meant for is gone: it becomes one of its own.
        Next<NoteEditorWindow>([](NoteEditorWindow& editor) { QCOMPARE(TextOf(editor), QStringLiteral("captured")); });
        QTRY_COMPARE(opened_, 3);
    }

    void a_reminder_is_shown_over_the_note_that_is_written() {
        CTmReminder reminder = NewReminder(app_->Context());
        reminder.SendTime = clock_.now;
        QVERIFY(WriteReminders(app_->Data().Reminders(), {reminder}).Ok());
        AddNote([&](NoteEditorWindow& editor) {
            InNext<EditDayDialog>([&] { HooksOf(*window_, *app_, theme_).showReminder(reminder.ReminderId); },
                                  [&](EditDayDialog& day) { QCOMPARE(day.parentWidget(), &editor); });
        });
    }

    void place_and_split_are_kept() {
        QRect place;
        AddNote([&](NoteEditorWindow& editor) {
            editor.setGeometry(QRect(QPoint(20, 60), editor.minimumSizeHint() + QSize(20, 10)));
            QCoreApplication::processEvents();
            place = editor.geometry();
            editor.CancelNote();
        });
        AddNote([&](NoteEditorWindow& editor) { QCOMPARE(editor.geometry(), place); });
        QVERIFY(store_.Get("Windows", "EditNoteSplit"));
        app_->GetSettings().Set(Option::EditNoteRect, Rect{500, 300, 3000, 2000});  // of a larger screen
        AddNote([](NoteEditorWindow& editor) {
            QVERIFY(editor.screen()->availableGeometry().contains(editor.frameGeometry()));
        });
    }

    void stands_in_both_looks() {
        const BothLooks looks{theme_};
        const auto shoot = [&](const char* name) {
            return [&looks, name](NoteEditorWindow& editor) {
                editor.resize(1280, 860);
                looks.Shoot(editor, name);
                editor.findChild<QTabWidget*>()->setCurrentIndex(1);
                looks.Shoot(editor, name + QStringLiteral("-categories"));
            };
        };
        int32_t full = app_->List()[0].id;
        for (const ListedNote& entry : app_->List().Notes()) {
            if (entry.note->sources.Count() > 1 && !entry.note->attachments.empty())
                full = entry.Id();
        }
        EditNote(full, shoot("editor-full"));
        AddEmptyNote(shoot("editor-empty"));
    }

    void dialogs_look_good() {
        KeyWordPicker used(app_->NoteBook().keyWords, "bells", -1);
        SelectTagsDlg tags(used, theme_);
        tags.show();
        BothLooks{theme_}.Shoot(tags, "editor-key-words");
        PictureViewer viewer(File("picture.png", Encoded(Filled(640, 400))), "A picture", theme_);
        viewer.show();
        QVERIFY(viewer.IsLoaded());
        const double fitted = viewer.Zoom();
        viewer.ZoomBy(2);
        QVERIFY(viewer.Zoom() > fitted);
        TakeShot(viewer, "editor-picture");
    }

    void pictures_leave_a_text_that_is_too_large() {
        const auto noise = [](int side) {
            QImage image(side, side, QImage::Format_RGB32);
            std::mt19937 generator(7);
            for (int i = 0; i < side * side; ++i)
                image.setPixel(i % side, i / side, generator() | 0xFF000000u);
            return Encoded(image);
        };
        AddNote([&](NoteEditorWindow& editor) {
            auto* const text = qobject_cast<RichTextEdit*>(editor.Text()->Edit());
            QTest::keyClicks(text, "Lamps ");
            QVERIFY(text->InsertPictureBytes(noise(260)));
            QVERIFY(text->InsertPictureBytes(noise(180)));
            editor.SaveNote();  // the answer is No
            QVERIFY(editor.isVisible());
            QVERIFY(prompts_.seen.back().find("Note Too Large? The text of this note takes") == 0);
            const auto* const bar = editor.findChild<QLabel*>("textSize");
            const QString size = QLocale().toString(static_cast<qulonglong>(text->Rtf().size()));
            QVERIFY(bar->isVisible() && bar->text().contains(size));
            QVERIFY(prompts_.seen.back().find(size.toStdString()) != std::string::npos);
            QCOMPARE(editor.Text()->Pictures().size(), size_t{2});
            QCOMPARE(editor.Attachments()->List()->topLevelItemCount(), 0);
            // A file of the name that the picture would get.
            editor.Attachments()->AddDropped({File("Picture 1.png", "own")});
            // Measured without the pictures, with which it is saved before it is measured again.
            text->undo();
            text->undo();
            text->findChild<QTimer*>("sizeTimer")->start(0);
            QTRY_VERIFY(!text->IsSizeGuess() && text->RtfSize() < 5000);
            text->redo();
            text->redo();
            prompts_.answers = {PromptAnswer::Yes};
            editor.SaveNote();
            QVERIFY(!editor.isVisible());
        });
        const CNote& note = LastListed();
        QVERIFY(note.rtfText.size() < kLargestRtf);
        QVERIFY(note.rtfText.find("\\pict") != std::string::npos);  // the smaller one stays
        QCOMPARE(note.attachments.size(), size_t{2});
        QVERIFY(note.attachments[0].title != note.attachments[1].title);
        const std::filesystem::path file = app_->NoteBook().paths.Attachments() / note.attachments[1].storedFile;
        QCOMPARE(static_cast<qint64>(std::filesystem::file_size(file)), static_cast<qint64>(noise(260).size()));
    }

    /// What a save has read already would lack it.
    void a_drop_during_a_save_is_refused() {
        CloseWindow();
        progressOnScreen_ = std::make_unique<QtProgress>(theme_);
        shownProgress_ = progressOnScreen_.get();
        OpenSample(1280, 860);
        progressOnScreen_->SetParent(window_.get());
        QMimeData words;
        words.setText("dropped ");
        words.setUrls({QUrl::fromLocalFile(File("dropped.txt"))});
        int dropped = 0, taken = 0;
        AddNote([&](NoteEditorWindow& editor) {
            Type(editor, "Typed");
            QTimer drops;
            drops.callOnTimeout(&editor, [&] {
                if (IsIdle())
                    return;
                QWidget* const targets[] = {editor.Text()->Edit()->viewport(), editor.Attachments()};
                for (QWidget* const target : targets) {
                    ++dropped;
                    taken += DropOn(target, words);
                }
            });
            drops.start(0);
            Save(editor);
            QVERIFY(!editor.isVisible());
        });
        QVERIFY2(!QApplication::overrideCursor(), "that of the save");
        QVERIFY(dropped > 0);
        QCOMPARE(taken, 0);
        QCOMPARE(LastListed().plainText, std::string("Typed"));
        QVERIFY(LastListed().attachments.empty());
    }
};

}  // namespace lore

QTEST_MAIN(lore::NoteEditorTest)
#include "note_editor_test.moc"
