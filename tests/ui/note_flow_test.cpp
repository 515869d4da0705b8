#include <random>

#include "exchange/export_notes.h"
#include "notes/note_finder.h"
#include "support/draft_reading.h"
#include "ui/editor/rich_text_edit.h"
#include "ui/import/import_window.h"
#include "ui/note_editor/attachment_panel.h"
#include "ui/note_editor/draft_writer.h"
#include "ui/note_editor/note_actions.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/picture_bytes.h"
#include "ui/qt_progress.h"
#include "ui/window_world.h"

namespace lore {

/// Flows over several windows: an import with an editor in it and its undo, and a text too large for a note.
class NoteFlowTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    std::optional<CNote> OnDisk(const std::string& guid) {
        for (CNote& note :
             FindNotes(app_->NoteBook().index, app_->NoteBook().index.AllIDs(), app_->Context(), faults_)) {
            if (note.guid == guid)
                return std::move(note);
        }
        return std::nullopt;
    }
    /// An archive of the first note with a file, edited later than the NoteBook's, and one new note.
    std::filesystem::path MakeArchive(CNote& known) {
        std::vector<CNote> notes =
            FindNotes(app_->NoteBook().index, app_->NoteBook().index.AllIDs(), app_->Context(), faults_);
        const auto withFile = std::find_if(notes.begin(), notes.end(), [](const CNote& note) {
            return !note.attachments.empty() && !note.attachments.front().storedFile.empty() && !note.sources.IsEmpty();
        });
        known = *withFile;
        CNote changed = known;
        changed.dateEdited = DateTime(2040, 1, 1);
        changed.keyWords = "from elsewhere";
        CNote added;
        added.id = 90000;
        added.guid = guids_.NewGuid();
        added.plainText = "A note from elsewhere";
        added.rtfText = "{\\rtf1\\ansi A note from elsewhere}";
        const std::filesystem::path archive = Root() / "notes.lbe";
        const ReadContext context = app_->Context();
        const ExportWorld world{app_->NoteBook(), app_->Data(), context, prompts_, progress_, faults_};
        ExportNotes(NotesOfList({changed, added}), archive, false, world);
        return archive;
    }

private slots:
    void init() { OpenSample(1280, 860); }
    void cleanup() { CloseWindow(); }
    void an_imported_note_is_edited_before_it_lands_and_the_import_is_undone() {
        CNote known;
        const std::filesystem::path archive = MakeArchive(known);
        const size_t before = app_->NoteBook().TotalNoteCount();
        const std::vector<int32_t> listed = app_->List().GetNoteIDs().Values();
        Next<ImportWindow>([&](ImportWindow& import) {
            auto* const list = import.findChild<QTreeWidget*>("importList");
            QCOMPARE(list->topLevelItemCount(), 2);
            Next<NoteEditorWindow>([&](NoteEditorWindow& editor) {
                QCOMPARE(editor.windowTitle(), QStringLiteral("View/Edit Import Note"));
                const QTreeWidget& files = *editor.Attachments()->List();
                QCOMPARE(files.topLevelItemCount(), static_cast<int>(known.attachments.size()));
                QVERIFY2(!files.topLevelItem(0)->text(1).startsWith("Missing"),
                         qPrintable(files.topLevelItem(0)->text(1)));
                BothLooks{*theme_}.Shoot(editor, "import_note");
                editor.Text()->Edit()->selectAll();
                QSignalSpy written(editor.Drafts(), &DraftWriter::Written);
                QTest::keyClicks(editor.Text()->Edit(), "Edited on the way");
                QTRY_COMPARE(written.size(), 1);
                editor.SaveNote();
                QVERIFY(!editor.isVisible());
            });
            list->setCurrentItem(list->topLevelItem(0));
            QTest::keyClick(list, Qt::Key_F2);
            QVERIFY(list->topLevelItem(0)->text(0).contains("newer"));
            // The draft is one of the open NoteBook, and stays until the note has landed.
            const DraftStore drafts(app_->NoteBook().paths);
            QCOMPARE(drafts.ListDrafts().size(), size_t{1});
            Draft draft;
            QVERIFY(ReadsDraft(drafts.ListDrafts()[0], app_->Context(), draft));
            QCOMPARE(draft.note.plainText, std::string("Edited on the way"));
            QVERIFY(draft.note.sources.Values() == known.sources.Values());
            import.accept();
        });
        emit window_->ImportRequested(QString::fromStdString(archive.string()));
        QCOMPARE(opened_, 2);
        QCOMPARE(prompts_.seen.back(),
                 std::string("Finished!: All  *2*  of your notes have been successfully imported!"));
        QVERIFY(DraftStore(app_->NoteBook().paths).ListDrafts().empty());
        QCOMPARE(app_->NoteBook().TotalNoteCount(), before + 1);
        const CNote edited = *OnDisk(known.guid);
        QCOMPARE(edited.plainText, std::string("Edited on the way"));
        QCOMPARE(edited.id, known.id);
        QVERIFY(edited.sources.Values() == known.sources.Values());
        QCOMPARE(edited.keyWords, std::string("from elsewhere"));
        QVERIFY(std::filesystem::exists(app_->NoteBook().paths.Attachments() / edited.attachments.front().storedFile));

        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        window_->Board()->setFocus();
        QTest::keyClick(window_->Board(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(app_->NoteBook().TotalNoteCount(), before);
        const CNote back = *OnDisk(known.guid);
        QCOMPARE(back.plainText, known.plainText);
        QCOMPARE(back.keyWords, known.keyWords);
        QVERIFY(std::filesystem::exists(app_->NoteBook().paths.Attachments() / back.attachments.front().storedFile));
        QVERIFY(app_->List().GetNoteIDs().Values() == listed);
        QVERIFY(faults_.faults.empty());
    }

    void a_drop_during_an_export_waits_until_it_is_done() {
        CNote known;
        const std::filesystem::path archive = MakeArchive(known);
        QtProgress progress(*theme_);
        progress.SetParent(window_.get());
        QSignalSpy imported(window_.get(), &MainWindow::ImportRequested);
        bool dropped = false;
        QTimer::singleShot(0, window_.get(), [&] {
            QMimeData files;
            files.setUrls({QUrl::fromLocalFile(QString::fromStdString(archive.string()))});
            QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(window_.get(), &enter);
            QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(window_.get(), &drop);
            dropped = true;
        });
        const ReadContext context = app_->Context();
        const ExportWorld world{app_->NoteBook(), app_->Data(), context, prompts_, progress, faults_};
        const int written = ExportNotes(NotesOfList(app_->List()), Root() / "all.lbe", false, world);
        QCOMPARE(written, static_cast<int>(app_->List().Count()));
        QVERIFY(dropped);
        QCOMPARE(imported.count(), 0);
        Next<ImportWindow>([](const ImportWindow&) {});
        QTRY_COMPARE(opened_, 1);
        QCOMPARE(imported.count(), 1);
        QVERIFY(faults_.faults.empty());
    }

    void pictures_leave_a_text_that_is_too_large() {
        const auto noise = [](int side) {
            QImage image(side, side, QImage::Format_RGB32);
            std::mt19937 generator(7);
            for (int y = 0; y < side; ++y) {
                for (int x = 0; x < side; ++x)
                    image.setPixel(x, y, generator() | 0xFF000000u);
            }
            return Encoded(image);
        };
        Next<NoteEditorWindow>([&](NoteEditorWindow& editor) {
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
            const std::filesystem::path own = Root() / "Picture 1.png";
            PutBytes(own, "own");
            editor.Attachments()->AddDropped({QString::fromStdString(own.string())});
            prompts_.answers = {PromptAnswer::Yes};
            editor.SaveNote();
            QVERIFY(!editor.isVisible());
        });
        window_->Notes()->AddNote();
        QCOMPARE(opened_, 1);
        const CNote& note = app_->List()[app_->List().Count() - 1];
        QVERIFY(note.rtfText.size() < kLargestRtf);
        QVERIFY(note.rtfText.find("\\pict") != std::string::npos);  // the smaller one stays
        QCOMPARE(note.attachments.size(), size_t{2});
        QVERIFY(note.attachments[0].title != note.attachments[1].title);
        const std::filesystem::path file = app_->NoteBook().paths.Attachments() / note.attachments[1].storedFile;
        QCOMPARE(static_cast<qint64>(std::filesystem::file_size(file)), static_cast<qint64>(noise(260).size()));
    }
};

}  // namespace lore

QTEST_MAIN(lore::NoteFlowTest)
#include "note_flow_test.moc"
