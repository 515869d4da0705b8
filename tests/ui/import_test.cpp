#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"
#include "ui/archive_entry.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/import/differences_window.h"
#include "ui/import/import_categories_dialog.h"
#include "ui/import/import_window.h"
#include "ui/note_editor/category_panel.h"
#include "ui/tab_walk.h"
#include "ui/theme.h"

namespace lore {
namespace {

const DateTime kOld(2026, 1, 2, 3, 4, 5), kMiddle(2026, 2, 2, 3, 4, 5), kLate(2026, 3, 2, 3, 4, 5);

/// Four notes, one of each status.
ImportComparison MakeComparison(GuidSource& guids) {
    NoteHeads existing;
    for (const char* guid : {"{OLDER}", "{NEWER}", "{SAME}"}) {
        CNote head = MakeEntry(guid, "As it was here", kMiddle).note;
        head.id = 7;
        existing.emplace(guid, head);
    }
    return ImportComparison({MakeEntry("{NEW}", "A new text", kMiddle), MakeEntry("{OLDER}", "An older text", kOld),
                             MakeEntry("{NEWER}", "As it is there", kLate), MakeEntry("{SAME}", "The same", kMiddle)},
                            existing, guids,
                            [](int32_t) { return std::optional(MakeEntry("{NEWER}", "As it was here", kMiddle)); });
}

}  // namespace

class ImportTest : public QObject {
    Q_OBJECT

private slots:
    void ShowsEachNoteWithItsStatusAndHidesTheSame() {
        ImportComparison comparison = MakeComparison(guids_);
        ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
        auto* const list = window.findChild<QTreeWidget*>("importList");
        QCOMPARE(list->topLevelItemCount(), 3);
        QCOMPARE(list->topLevelItem(0)->text(0), QString("1. - <NEW NOTE>"));
        QCOMPARE(list->topLevelItem(1)->text(0), QString("2. - EXISTS (older)"));
        QCOMPARE(list->topLevelItem(2)->text(0), QString("3. - EXISTS (newer)"));
        QCOMPARE(list->topLevelItem(1)->text(3), QString("Coast"));
        QVERIFY(list->topLevelItem(1)->foreground(0) != list->topLevelItem(2)->foreground(0));
        window.findChild<QCheckBox*>("showSame")->click();
        QCOMPARE(list->topLevelItemCount(), 4);
        window.resize(1000, 420);
        looks_.Shoot(window, "import_list");
    }

    void SaysWhyTheListIsEmpty() {
        for (const int notes : {0, 1, 3}) {
            NoteHeads existing;
            std::vector<ArchiveNote> entries;
            for (int i = 0; i < notes; ++i) {
                entries.push_back(MakeEntry("{" + std::to_string(i) + "}", "The same", kMiddle));
                existing.emplace(entries.back().note.guid, entries.back().note);
            }
            ImportComparison comparison(entries, existing, guids_,
                                        [](int32_t) { return std::optional<ArchiveNote>(); });
            ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
            auto* const list = window.findChild<QTreeWidget*>("importList");
            auto* const line = list->findChild<QLabel*>("emptyLine");
            QVERIFY(line->isVisibleTo(&window));
            QCOMPARE(list->accessibleDescription(), line->text());
            QCOMPARE(line->text().contains("Show existing"), notes > 0);
            QCOMPARE(line->text().contains("All 3 notes"), notes == 3);
            if (notes == 3)
                looks_.Shoot(window, "import_nothing_new");
            window.findChild<QCheckBox*>("showSame")->click();
            QCOMPARE(line->isVisibleTo(&window), notes == 0);
            QCOMPARE(list->accessibleDescription().isEmpty(), notes > 0);
        }
    }

    void TakesWhatIsTickedAndRefusesNothing() {
        ImportComparison comparison = MakeComparison(guids_);
        ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
        auto* const list = window.findChild<QTreeWidget*>("importList");
        Press(window, "Clear All");
        window.accept();
        QCOMPARE(window.result(), 0);
        QCOMPARE(prompts_.seen.back(), std::string("Invalid Notes: There are no notes selected to import."));
        list->setCurrentItem(list->topLevelItem(2));
        QTest::keyClick(list, Qt::Key_Space);
        window.findChild<QCheckBox*>("displayAfter")->click();
        window.accept();
        QCOMPARE(window.result(), static_cast<int>(QDialog::Accepted));
        QVERIFY(comparison.Chosen() == std::vector<size_t>{2});
        QVERIFY(comparison.displayAfter);
    }

    void TellsScreenReadersOfATick() {
        ImportComparison comparison = MakeComparison(guids_);
        ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
        window.show();
        window.activateWindow();
        QTRY_VERIFY(window.isActiveWindow());
        auto* const list = window.findChild<QTreeWidget*>("importList");
        list->setFocus();
        const QTreeWidgetItem& row = *list->currentItem();
        const bool wasTicked = row.checkState(0) == Qt::Checked;
        QCOMPARE(ToldDuring([list] { QTest::keyClick(list, Qt::Key_Space); }),
                 QStringList((wasTicked ? "unticked " : "ticked ") + row.text(0)));
        // All at once isn't told row by row.
        QVERIFY(ToldDuring([&window] {
                    Press(window, "Clear All");
                    Press(window, "Select All");
                }).size() <= 2);
    }

    void ShowsTheDifferencesOfBothTexts() {
        DifferencesWindow window(CompareForImport(MakeEntry("{NEWER}", "As it is there", kLate),
                                                  MakeEntry("{NEWER}", "As it was here", kMiddle)),
                                 theme_, store_, nullptr);
        const auto* const rows = window.findChild<QTreeWidget*>("differences");
        QVERIFY(rows->topLevelItemCount() >= 1);
        QCOMPARE(rows->topLevelItem(0)->text(0), QString("Date Last Modified:"));
        const auto* const there = window.findChild<QTextEdit*>("Import Note's Text:");
        const auto* const here = window.findChild<QTextEdit*>("Database Note's Text:");
        QCOMPARE(there->toPlainText(), QString("As it is there"));
        QCOMPARE(here->toPlainText(), QString("As it was here"));
        QCOMPARE(there->extraSelections().size(), 2);
        QCOMPARE(here->extraSelections().size(), 2);
        window.resize(900, 520);
        looks_.Shoot(window, "import_differences");
    }

    void EditsTheNoteUnderADoubleClick() {
        ImportComparison comparison = MakeComparison(guids_);
        std::vector<size_t> edited;
        bool saves = false;
        commands_.edit = [&](size_t position, QWidget*) {
            edited.push_back(position);
            if (saves)
                comparison.ReplaceNote(position, MakeEntry("", "Edited", kLate));
            return saves;
        };
        ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto* const list = window.findChild<QTreeWidget*>("importList");
        QTreeWidgetItem* const older = list->topLevelItem(1);
        const QPoint place = list->visualItemRect(older).center();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
        QVERIFY(edited == std::vector<size_t>{1});
        QCOMPARE(older->text(0), QString("2. - EXISTS (older)"));
        saves = true;
        const QBrush before = older->foreground(0);
        QTest::keyClick(list, Qt::Key_F2);
        QVERIFY(edited == (std::vector<size_t>{1, 1}));
        QCOMPARE(older->text(0), QString("2. - EXISTS (newer)"));
        QVERIFY(older->foreground(0) != before);
    }

    void AsksBeforeChangesToNotesAreGivenUp() {
        ImportComparison comparison = MakeComparison(guids_);
        int dropped = 0;
        bool changes = false;
        commands_.edit = [&](size_t, QWidget*) { return changes; };
        commands_.changeCategories = [&](QWidget*) { return changes; };
        commands_.dropChanges = [&] { ++dropped; };
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_unknown}) {
            ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
            auto* const list = window.findChild<QTreeWidget*>("importList");
            const auto show = [&] {
                window.show();
                window.activateWindow();
                list->setCurrentItem(list->topLevelItem(0));
                return QTest::qWaitForWindowActive(&window);
            };
            QVERIFY(show());
            const auto change = [&] {
                if (key == Qt::Key_F2)
                    QTest::keyClick(list, key);
                else
                    Press(window, "Change Categories of Selected Notes");
            };
            prompts_.seen.clear();
            dropped = 0;
            changes = false;
            change();
            Press(window, "Cancel");
            QVERIFY2(!window.isVisible() && prompts_.seen.empty(), "nothing was changed");
            QVERIFY(show());
            changes = true;
            change();
            prompts_.answers = {PromptAnswer::No, PromptAnswer::No, PromptAnswer::Yes};
            Press(window, "Cancel");
            QTest::keyClick(&window, Qt::Key_Escape);
            QVERIFY(window.isVisible());
            QCOMPARE(dropped, 0);
            window.close();
            QVERIFY(!window.isVisible());
            QCOMPARE(dropped, 1);
            QCOMPARE(prompts_.seen.size(), size_t{3});
        }
    }

    void GivesTickedNotesNewCategories() {
        ImportComparison comparison = MakeComparison(guids_);
        CProCategoryList forest;
        forest.AddRoot(CProCategoryTree(3, "Lights"));
        forest.AddRoot(CProCategoryTree(4, "Harbours"));
        CategoryAssignment paths(forest, 10, prompts_);
        ImportCategoriesDialog dialog(paths, theme_, store_, nullptr);
        const int bar = dialog.Panel()->Tabs()->count();
        QCOMPARE(bar, 3);
        QComboBox* const box = dialog.Panel()->BoxAt(0);
        box->setCurrentIndex(box->findText("Harbours"));
        emit box->activated(box->currentIndex());
        QTRY_COMPARE(paths.ChosenID(1, 0), 4);
        QTest::keyClick(dialog.Panel()->Tabs(), Qt::Key_Right);
        QCOMPARE(dialog.Panel()->ActiveSet(), 2);
        looks_.Shoot(dialog, "import_categories");
        int asked = 0;
        commands_.changeCategories = [&](QWidget*) {
            ++asked;
            CNote note;
            paths.WriteBack(note);
            comparison.AssignCategories(note.categories);
            return true;
        };
        ImportWindow window(comparison, commands_, theme_, prompts_, store_, nullptr);
        Press(window, "Change Categories of Selected Notes");
        QCOMPARE(asked, 1);
        QCOMPARE(window.findChild<QTreeWidget*>("importList")->topLevelItem(0)->text(2), QString("Harbours"));
        Press(window, "Clear All");
        Press(window, "Change Categories of Selected Notes");
        QCOMPARE(asked, 1);
        QCOMPARE(prompts_.seen.back(), std::string("Invalid Notes: There are no notes selected to import."));
    }

private:
    ImportNoteCommands commands_{[](size_t, QWidget*) { return false; }, [](QWidget*) { return false; }};
    NumberedGuids guids_;
    ScriptedPrompts prompts_;
    MemoryStore store_;
    Theme theme_{*qApp, Appearance::Light};
    BothLooks looks_{theme_};
};

}  // namespace lore

QTEST_MAIN(lore::ImportTest)
#include "import_test.moc"
