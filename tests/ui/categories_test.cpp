#include "ui/categories/edit_categories_ctrl.h"
#include "ui/categories/edit_categories_dlg.h"
#include "ui/main/control_bar.h"
#include "ui/main/panel_page.h"
#include "ui/ports/quit_guard.h"
#include "ui/window_world.h"

namespace lore {

/// The category trees and the commands of the filter panels as a user drives them on the sample NoteBook.
class CategoriesTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void InTrees(const std::function<void(CEditCategoriesDlg&)>& steps) {
        InDialog<CEditCategoriesDlg>([this] { PressKeys(window_.get(), {"Ctrl+Shift+T"}); }, steps);
    }
    CProCategoryList& Forest() { return app_->NoteBook().categories; }
    /// The id of the category of this name; -1 if there is none.
    int32_t IdOf(const std::string& name) const {
        std::function<int32_t(const std::vector<CProCategoryTree>&)> find = [&](const auto& nodes) {
            int32_t id = -1;
            for (size_t i = 0; id < 0 && i < nodes.size(); ++i)
                id = nodes[i].name == name ? nodes[i].id : find(nodes[i].children);
            return id;
        };
        return find(app_->NoteBook().categories.Roots());
    }

    QMenu* OpenMenu(PanelKind kind, const QString& entry, bool byKeyboard = false) {
        window_->Panels()->SetPage(static_cast<int>(kind));
        QTreeView* const tree = window_->Panels()->PageAt(kind)->Tree();
        QTest::qWait(1);  // the panels follow a change
        tree->collapseAll();
        const QAbstractItemModel* const model = tree->model();
        QPoint place(10, tree->viewport()->height() - 3);
        if (!entry.isEmpty()) {
            const QModelIndexList found = model->match(model->index(0, 0), Qt::AccessibleTextRole, entry, 1,
                                                       Qt::MatchStartsWith | Qt::MatchRecursive);
            if (found.isEmpty())
                return nullptr;
            tree->setCurrentIndex(found.first());
            tree->scrollTo(found.first());
            place = tree->visualRect(found.first()).center();
        }
        return byKeyboard ? OpenMenuAt(*tree, QPoint(1, 1), QContextMenuEvent::Keyboard)
                          : OpenMenuAt(*tree->viewport(), place);
    }

private slots:
    void init() { OpenSample(); }
    void cleanup() { CloseWindow(); }
    void keys_alone_change_the_trees() {
        const int32_t engineering = IdOf("Engineering");
        const LongList notes = Forest().FindByID(engineering)->notes[0];
        QVERIFY(!notes.IsEmpty());
        InTrees([&](CEditCategoriesDlg& dialog) {
            QVERIFY(dialog.Tree()->hasFocus());
            dialog.Tree()->GoTo(engineering);
            prompts_.texts = {"Works", "Towers of old", "Lamps"};
            QTest::keyClick(dialog.Tree(), Qt::Key_F2);
            QVERIFY(dialog.Tree()->currentItem()->text(0).startsWith("Works  ("));
            QTest::keyClick(dialog.Tree(), Qt::Key_Insert);
            QCOMPARE(dialog.Tree()->currentItem()->text(0), QStringLiteral("Towers of old  (0)"));
            QCOMPARE(dialog.Tree()->currentItem()->parent(), dialog.Tree()->ItemOf(engineering));
            QTest::keyClick(dialog.Tree(), Qt::Key_N, Qt::ControlModifier);
            QVERIFY(!dialog.Tree()->currentItem()->parent());
            prompts_.answers = {PromptAnswer::Yes};
            prompts_.whileShown = [&] { PressKeys(dialog.Tree(), {"Delete", "Ctrl+Return", "Esc"}); };
            QTest::keyClick(dialog.Tree(), Qt::Key_Delete);
            prompts_.whileShown = nullptr;
            QVERIFY(dialog.isVisible() && prompts_.seen.size() == 4);  // one question at a time
            QVERIFY(!StaysOpen(dialog, "Ctrl+Return"));
        });
        QCOMPARE(Forest().FindByID(engineering)->name, std::string("Works"));
        QVERIFY(IdOf("Towers of old") > 0 && IdOf("Lamps") < 0);
        // The list and the panel show it.
        QCOMPARE(app_->List().Find(notes[0])->categories[0].name, std::string("Works"));
        const QAbstractItemModel* const panel = window_->Panels()->PageAt(PanelKind::Categories)->Tree()->model();
        QTRY_VERIFY(!panel->match(panel->index(0, 0), Qt::DisplayRole, "Works", 1, Qt::MatchExactly).isEmpty());
        QVERIFY(faults_.faults.empty());
    }

    void an_order_to_quit_goes_on_after_a_question_and_saves() {
        const int32_t engineering = IdOf("Engineering");
        IgnoresClose stays;
        window_->installEventFilter(&stays);
        const QuitGuard guard;
        InTrees([&](CEditCategoriesDlg& dialog) {
            dialog.Tree()->GoTo(engineering);
            prompts_.texts = {"Works"};
            PressKeys(dialog.Tree(), {"F2"});
            prompts_.whileShown = [] {
                QEvent quit(QEvent::Quit);
                QCoreApplication::sendEvent(qApp, &quit);
            };
            PressKeys(dialog.Tree(), {"F2"});
            prompts_.whileShown = nullptr;
            QTRY_VERIFY(!dialog.isVisible());
        });
        QCOMPARE(Forest().FindByID(engineering)->name, std::string("Works"));
        QCOMPARE(Told(), QStringList({"Rename Category", "Rename Category"}));
    }

    void a_drag_moves_and_asks_to_merge() {
        const int32_t engineering = IdOf("Engineering"), lenses = IdOf("Lenses");
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            tree.collapseAll();
            // What a drag with the mouse delivers; the drag itself needs a desktop.
            emit tree.NodeDropped(lenses, -1);
            QVERIFY(!tree.ItemOf(lenses)->parent());
            QCOMPARE(tree.Current(), lenses);
            prompts_.texts = {"lenses"};
            tree.GoTo(engineering);
            QTest::keyClick(&tree, Qt::Key_Insert);
            const int32_t made = tree.Current();
            prompts_.answers = {PromptAnswer::Yes};
            emit tree.NodeDropped(lenses, engineering);
            QCOMPARE(Told().last(), QString("Merge Level 2 Categories With Same Name?"));
            QVERIFY(!tree.ItemOf(lenses));
            QCOMPARE(tree.Current(), made);
            // While it is dragged, the node under the mouse is told apart.
            QMimeData data;
            QDragMoveEvent over(tree.visualItemRect(tree.ItemOf(engineering)).center(), Qt::MoveAction, &data,
                                Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tree.viewport(), &over);
            QVERIFY(!over.isAccepted());  // it comes from elsewhere
        });
        QCOMPARE(IdOf("Lenses"), lenses);
    }

    void cut_nodes_are_pasted_and_steps_go_back() {
        const int32_t engineering = IdOf("Engineering"), lenses = IdOf("Lenses"), places = IdOf("Places");
        QVERIFY(places > 0);
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            tree.GoTo(lenses);
            PressKeys(&tree, {"Ctrl+X"});
            QVERIFY(tree.currentItem()->font(0).italic());
            tree.GoTo(places);
            // The second paste finds nothing that waits.
            for (const auto& [key, isInPlaces] :
                 {std::pair("Ctrl+V", true), {"Ctrl+V", true}, {"Ctrl+Z", false}, {"Ctrl+Y", true}}) {
                PressKeys(&tree, {key});
                QCOMPARE(tree.ItemOf(lenses)->parent() == tree.ItemOf(places), isInPlaces);
                QVERIFY(!tree.ItemOf(lenses)->font(0).italic());
            }
            tree.GoTo(lenses);
            PressKeys(&tree, {"Ctrl+X", "Ctrl+Shift+V"});
            QVERIFY(!tree.ItemOf(lenses)->parent());
            QTest::mouseClick(In<QPushButton>(dialog, "save"), Qt::LeftButton);
        });
        QCOMPARE(Forest().FindByID(lenses)->parentID, -1);
        QVERIFY(Forest().FindByID(engineering));
    }

    void the_set_in_view_decides_counts_and_drops() {
        const int32_t places = IdOf("Places");
        const size_t unassigned = Forest().FindByID(kUnassignedID)->GetNotes(3).Count();
        QVERIFY(unassigned > 0);
        InTrees([&](CEditCategoriesDlg& dialog) {
            auto* const set = In<QComboBox>(dialog, "set");
            QTest::keyClick(&dialog, Qt::Key_C, Qt::AltModifier);
            QVERIFY(set->hasFocus());
            set->setCurrentIndex(3);
            emit set->activated(3);
            CEditCategoriesCtrl& tree = *dialog.Tree();
            QCOMPARE(tree.ItemOf(kUnassignedID)->text(0), QStringLiteral("<UNASSIGNED>  (%1)").arg(unassigned));
            prompts_.answers = {PromptAnswer::Yes};
            tree.GoTo(kUnassignedID);
            tree.setFocus();
            QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
            tree.GoTo(places);
            QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);
            QVERIFY(prompts_.seen.back().starts_with("Moving All Unassigned Category Set 3 Categories?"));
            QCOMPARE(tree.ItemOf(kUnassignedID)->text(0), QStringLiteral("<UNASSIGNED>  (0)"));
        });
    }

    void cancel_asks_and_drops() {
        const int32_t engineering = IdOf("Engineering");
        InTrees([&](CEditCategoriesDlg& dialog) { QVERIFY(!StaysOpen(dialog, "Esc") && prompts_.seen.empty()); });
        InTrees([&](CEditCategoriesDlg& dialog) {
            prompts_.texts = {"Another"};
            dialog.Tree()->GoTo(IdOf("Engineering"));
            QTest::keyClick(dialog.Tree(), Qt::Key_F2);
            prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
            QVERIFY(StaysOpen(dialog, "Esc"));
            QVERIFY(!StaysOpen(dialog, "Esc"));
        });
        QCOMPARE(IdOf("Engineering"), engineering);
    }

    void a_failed_write_keeps_the_dialog_open() {
        const std::filesystem::path file = app_->NoteBook().paths.Categories();
        InTrees([&](CEditCategoriesDlg& dialog) {
            Block(file);
            prompts_.texts = {"Another"};
            dialog.Tree()->GoTo(IdOf("Engineering"));
            QTest::keyClick(dialog.Tree(), Qt::Key_F2);
            QVERIFY(StaysOpen(dialog, "Ctrl+Return"));
            QVERIFY(dialog.findChild<FaultBar*>()->isVisible());
            TakeShot(dialog, "categories-fault-light");
            std::filesystem::remove_all(file);
            emit dialog.findChild<FaultBar*>()->TryAgainRequested();
            QTRY_VERIFY(!dialog.isVisible());
        });
        QVERIFY(IdOf("Another") > 0);
    }

    void menus_of_the_panels_hold_the_family() {
        QMenu* menu = nullptr;
        for (const int32_t focus : {-1, app_->List()[0].id}) {
            window_->Board()->SetFocusNote(focus);
            menu = OpenMenu(PanelKind::Categories, "Engineering");
            QVERIFY(menu);
            QCOMPARE(EntryOf(*menu, "Add Note To Level")->isEnabled(), focus > 0);
            QCOMPARE(TextsOf(menu).first(), QStringLiteral("Get Notes With This Category"));
            QCOMPARE(TextsOf(menu).last(), QStringLiteral("Clear Current Tree"));
            QVERIFY(!EntryOf(*menu, "Copy All Notes With This Category To NoteBook"));  // there is no other NoteBook
            menu->close();
        }
        menu = OpenMenu(PanelKind::Categories, "Engineering", true);
        QCOMPARE(TextsOf(menu).value(0), QStringLiteral("Get Notes With This Category"));
        QCOMPARE(TextsOf(menu).last(), QStringLiteral("Clear All"));
        menu->close();
        menu = OpenMenu(PanelKind::Categories, {});
        QCOMPARE(TextsOf(menu), (QStringList{"Select All", "Clear All"}));
        menu->close();
        app_->ClearList();
        emit window_->Panels()->CommandRequested({.action = PanelAction::TakeOut});
        QTRY_VERIFY((menu = OpenMenu(PanelKind::Colors, "#")) != nullptr);
        QVERIFY(!EntryOf(*menu, "Set All Notes In List To This Color")->isEnabled());
        QVERIFY(EntryOf(*menu, "Get All Notes With This Color")->isEnabled());
        menu->close();
    }

    void a_menu_command_runs_and_counts_follow() {
        const CKeyWord* const keyWord = app_->NoteBook().keyWords.FindKeyWord(0);
        const QString name = QString::fromStdString(keyWord->name);
        const size_t total = app_->List().Count();
        QVERIFY(keyWord->notes.Count() < total);
        const auto run = [&](const char* entry) {
            QMenu* const menu = OpenMenu(PanelKind::KeyWords, name);
            EntryOf(*menu, entry)->trigger();
            menu->close();
        };
        run("Attach All Notes In List To This Key Word");
        const QTreeView* const tree = window_->Panels()->PageAt(PanelKind::KeyWords)->Tree();
        QTRY_COMPARE(tree->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
                     QStringLiteral("%1 (%2/%2)").arg(name).arg(total));
        prompts_.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        run("Delete Notes With This Key Word");
        QVERIFY(app_->List().IsEmpty());
        QVERIFY(faults_.faults.empty());
    }

    void stands_in_both_looks() {
        const BothLooks looks{theme_};
        QMenu* const menu = OpenMenu(PanelKind::Categories, "Engineering");
        QVERIFY(menu);
        looks.Shoot(*menu, "panel-menu");
        menu->close();
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            prompts_.texts = {
                "\xE7\x81\xAF\xE5\x8F\xB0 \xD7\x9E\xD7\x92\xD7\x93\xD7\x9C\xD7\x95\xD7\xA8",
                "A category whose name goes on and on until it is wider than any window has room for, and on, "
                "past the edge and over all that lies behind it, to the end of the line"};
            tree.GoTo(IdOf("Engineering"));
            QTest::keyClick(&tree, Qt::Key_Insert);
            QTest::keyClick(&tree, Qt::Key_Insert);
            QVERIFY(tree.horizontalScrollBar()->maximum() > 0);
            tree.GoTo(IdOf("Lenses"));
            QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
            tree.GoTo(IdOf("Engineering"));
            looks.Shoot(dialog, "categories");
        });
    }
};

}  // namespace lore

QTEST_MAIN(lore::CategoriesTest)
#include "categories_test.moc"
