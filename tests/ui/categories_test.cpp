#include <functional>

#include "ui/categories/edit_categories_ctrl.h"
#include "ui/categories/edit_categories_dlg.h"
#include "ui/control_bar.h"
#include "ui/panel_page.h"
#include "ui/window_world.h"

namespace lore {

/// The category trees and the commands of the filter panels as a user drives them on the sample NoteBook.
class CategoriesTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    using Steps = std::function<void(CEditCategoriesDlg&)>;
    void InTrees(const Steps& steps) {
        InDialog<CEditCategoriesDlg>(
            [this] { QTest::keyClick(window_.get(), Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier); }, steps);
    }
    CProCategoryList& Forest() { return app_->NoteBook().categories; }
    int32_t IDOf(const std::string& name) const { return Find(app_->NoteBook().categories, name); }
    static int32_t Find(const CProCategoryList& forest, const std::string& name) {
        const std::function<int32_t(const CProCategoryTree&)> seek = [&](const CProCategoryTree& node) -> int32_t {
            if (node.name == name)
                return node.id;
            for (const CProCategoryTree& child : node.children)
                if (const int32_t id = seek(child); id > 0)
                    return id;
            return -1;
        };
        for (const CProCategoryTree& root : forest.Roots())
            if (const int32_t id = seek(root); id > 0)
                return id;
        return -1;
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

    static QStringList Texts(const QMenu& menu) {
        QStringList texts;
        for (const QAction* const action : menu.actions())
            texts.append(action->text());
        return texts;
    }

    static QAction* Entry(const QMenu& menu, const QString& text) {
        for (QAction* const action : menu.actions())
            if (action->text() == text)
                return action;
        return nullptr;
    }

    static void DropOn(CEditCategoriesCtrl& tree, int32_t id, const QPoint& place) {
        // What a drag with the mouse delivers; the drag itself needs a desktop.
        const QTreeWidgetItem* const target = tree.itemAt(place);
        emit tree.NodeDropped(id, target ? target->data(0, Qt::UserRole).toInt() : -1);
    }

private slots:
    void init() { OpenSample(); }
    void cleanup() { CloseWindow(); }
    void keys_alone_change_the_trees() {
        const int32_t engineering = IDOf("Engineering");
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
            QTest::keyClick(dialog.Tree(), Qt::Key_Delete);
            QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(!dialog.isVisible());
        });
        QCOMPARE(Forest().FindByID(engineering)->name, std::string("Works"));
        QVERIFY(IDOf("Towers of old") > 0 && IDOf("Lamps") < 0);
        // The list and the panel show it.
        QCOMPARE(app_->List().Find(notes[0])->categories[0].name, std::string("Works"));
        const QAbstractItemModel* const panel = window_->Panels()->PageAt(PanelKind::Categories)->Tree()->model();
        QTRY_VERIFY(!panel->match(panel->index(0, 0), Qt::DisplayRole, "Works", 1, Qt::MatchExactly).isEmpty());
        QVERIFY(faults_.faults.empty());
    }

    void a_drag_moves_and_asks_to_merge() {
        const int32_t engineering = IDOf("Engineering"), lenses = IDOf("Lenses");
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            tree.collapseAll();
            const QPoint empty(20, tree.viewport()->height() - 4);
            QVERIFY(!tree.itemAt(empty));
            DropOn(tree, lenses, empty);
            QVERIFY(!tree.ItemOf(lenses)->parent());
            QCOMPARE(tree.Current(), lenses);
            prompts_.texts = {"lenses"};
            tree.GoTo(engineering);
            QTest::keyClick(&tree, Qt::Key_Insert);
            const int32_t made = tree.Current();
            prompts_.answers = {PromptAnswer::Yes};
            tree.scrollToItem(tree.ItemOf(engineering));
            DropOn(tree, lenses, tree.visualItemRect(tree.ItemOf(engineering)).center());
            QVERIFY(prompts_.seen.back().starts_with("Merge Level 2 Categories With Same Name?"));
            QVERIFY(!tree.ItemOf(lenses));
            QCOMPARE(tree.Current(), made);
            // While it is dragged, the node under the mouse is told apart.
            QMimeData data;
            QDragMoveEvent over(tree.visualItemRect(tree.ItemOf(engineering)).center(), Qt::MoveAction, &data,
                                Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(tree.viewport(), &over);
            QVERIFY(!over.isAccepted());  // it comes from elsewhere
        });
        QCOMPARE(IDOf("Lenses"), lenses);
    }

    void cut_nodes_are_pasted_and_steps_go_back() {
        const int32_t engineering = IDOf("Engineering"), lenses = IDOf("Lenses"), places = IDOf("Places");
        QVERIFY(places > 0);
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            tree.GoTo(lenses);
            QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
            QVERIFY(tree.currentItem()->font(0).italic());
            tree.GoTo(places);
            QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);
            QCOMPARE(tree.ItemOf(lenses)->parent(), tree.ItemOf(places));
            QVERIFY(!tree.ItemOf(lenses)->font(0).italic());
            QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier);  // nothing waits
            QCOMPARE(tree.ItemOf(lenses)->parent(), tree.ItemOf(places));
            QTest::keyClick(&tree, Qt::Key_Z, Qt::ControlModifier);
            QVERIFY(tree.ItemOf(lenses)->parent() != tree.ItemOf(places));
            QTest::keyClick(&tree, Qt::Key_Y, Qt::ControlModifier);
            QCOMPARE(tree.ItemOf(lenses)->parent(), tree.ItemOf(places));
            tree.GoTo(lenses);
            QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
            QTest::keyClick(&tree, Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
            QVERIFY(!tree.ItemOf(lenses)->parent());
            QTest::mouseClick(dialog.findChild<QPushButton*>("save"), Qt::LeftButton);
        });
        QCOMPARE(Forest().FindByID(lenses)->parentID, -1);
        QVERIFY(Forest().FindByID(engineering));
    }

    void the_set_in_view_decides_counts_and_drops() {
        const int32_t places = IDOf("Places");
        const size_t unassigned = Forest().FindByID(kUnassignedID)->GetNotes(3).Count();
        QVERIFY(unassigned > 0);
        InTrees([&](CEditCategoriesDlg& dialog) {
            auto* const set = dialog.findChild<QComboBox*>("set");
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
        const int32_t engineering = IDOf("Engineering");
        InTrees([&](CEditCategoriesDlg& dialog) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible() && prompts_.seen.empty());
        });
        InTrees([&](CEditCategoriesDlg& dialog) {
            prompts_.texts = {"Another"};
            dialog.Tree()->GoTo(IDOf("Engineering"));
            QTest::keyClick(dialog.Tree(), Qt::Key_F2);
            prompts_.answers = {PromptAnswer::No, PromptAnswer::Yes};
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(dialog.isVisible());
            QTest::keyClick(&dialog, Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
        });
        QCOMPARE(IDOf("Engineering"), engineering);
    }

    void a_failed_write_keeps_the_dialog_open() {
        const std::filesystem::path file = app_->NoteBook().paths.Categories();
        InTrees([&](CEditCategoriesDlg& dialog) {
            std::filesystem::rename(file, file.string() + ".kept");
            std::filesystem::create_directories(file / "in the way");
            prompts_.texts = {"Another"};
            dialog.Tree()->GoTo(IDOf("Engineering"));
            QTest::keyClick(dialog.Tree(), Qt::Key_F2);
            QTest::keyClick(&dialog, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(dialog.isVisible());
            QVERIFY(dialog.findChild<FaultBar*>()->isVisible());
            TakeShot(dialog, "categories-fault-light");
            std::filesystem::remove_all(file);
            std::filesystem::rename(file.string() + ".kept", file);
            emit dialog.findChild<FaultBar*>()->TryAgainRequested();
            QTRY_VERIFY(!dialog.isVisible());
        });
        QVERIFY(IDOf("Another") > 0);
    }

    void menus_of_the_panels_hold_the_family() {
        QMenu* menu = nullptr;
        for (const int32_t focus : {-1, app_->List()[0].id}) {
            window_->Board()->SetFocusNote(focus);
            menu = OpenMenu(PanelKind::Categories, "Engineering");
            QVERIFY(menu);
            QCOMPARE(Entry(*menu, "Add Note To Level")->isEnabled(), focus > 0);
            QCOMPARE(Texts(*menu).first(), QStringLiteral("Get Notes With This Category"));
            QCOMPARE(Texts(*menu).last(), QStringLiteral("Clear Current Tree"));
            QVERIFY(!Entry(*menu, "Copy All Notes With This Category To NoteBook"));  // there is no other NoteBook
            menu->close();
        }
        menu = OpenMenu(PanelKind::Categories, {});
        QCOMPARE(Texts(*menu), (QStringList{"Select All", "Clear All"}));
        menu->close();
        app_->ClearList();
        emit window_->Panels()->CommandRequested({.action = PanelAction::TakeOut});
        QTRY_VERIFY((menu = OpenMenu(PanelKind::Colors, "#")) != nullptr);
        QVERIFY(!Entry(*menu, "Set All Notes In List To This Color")->isEnabled());
        QVERIFY(Entry(*menu, "Get All Notes With This Color")->isEnabled());
        menu->close();
    }

    void a_menu_command_runs_and_counts_follow() {
        const CKeyWord* const keyWord = app_->NoteBook().keyWords.FindKeyWord(0);
        const QString name = QString::fromStdString(keyWord->name);
        const size_t total = app_->List().Count();
        QVERIFY(keyWord->notes.Count() < total);
        QMenu* const menu = OpenMenu(PanelKind::KeyWords, name);
        QVERIFY(menu);
        Entry(*menu, "Attach All Notes In List To This Key Word")->trigger();
        menu->close();
        const QTreeView* const tree = window_->Panels()->PageAt(PanelKind::KeyWords)->Tree();
        QTRY_COMPARE(tree->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
                     QStringLiteral("%1 (%2/%2)").arg(name).arg(total));
        prompts_.answers = {PromptAnswer::Yes, PromptAnswer::Yes};
        QMenu* const again = OpenMenu(PanelKind::KeyWords, name);
        Entry(*again, "Delete Notes With This Key Word")->trigger();
        again->close();
        QVERIFY(app_->List().IsEmpty());
        QVERIFY(faults_.faults.empty());
    }

    void the_menu_key_opens_at_the_entry() {
        QMenu* const menu = OpenMenu(PanelKind::Categories, "Engineering", true);
        QVERIFY(menu);
        QCOMPARE(Texts(*menu).first(), QStringLiteral("Get Notes With This Category"));
        QCOMPARE(Texts(*menu).last(), QStringLiteral("Clear All"));
        QTest::keyClick(menu, Qt::Key_Escape);
    }

    void looks_good() {
        const BothLooks looks{*theme_};
        QMenu* const menu = OpenMenu(PanelKind::Categories, "Engineering");
        QVERIFY(menu);
        looks.Shoot(*menu, "panel-menu");
        menu->close();
        InTrees([&](CEditCategoriesDlg& dialog) {
            CEditCategoriesCtrl& tree = *dialog.Tree();
            prompts_.texts = {
                "\xE7\x81\xAF\xE5\x8F\xB0 \xD7\x9E\xD7\x92\xD7\x93\xD7\x9C\xD7\x95\xD7\xA8",
                "A category whose name goes on and on until it is wider than any window has room for, and on"};
            tree.GoTo(IDOf("Engineering"));
            QTest::keyClick(&tree, Qt::Key_Insert);
            QTest::keyClick(&tree, Qt::Key_Insert);
            tree.GoTo(IDOf("Lenses"));
            QTest::keyClick(&tree, Qt::Key_X, Qt::ControlModifier);
            tree.GoTo(IDOf("Engineering"));
            looks.Shoot(dialog, "categories");
        });
    }
};

}  // namespace lore

QTEST_MAIN(lore::CategoriesTest)
#include "categories_test.moc"
