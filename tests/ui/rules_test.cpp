#include <functional>

#include "ui/command_reach.h"
#include "ui/controls.h"
#include "ui/quiet_view.h"
#include "ui/tab_walk.h"
#include "ui/text_field.h"
#include "ui/theme.h"
#include "ui/window_rules.h"

namespace lore {
namespace {

/// A control that keeps the Tab key, or one that answers the mouse alone.
class Odd : public QWidget {
public:
    Odd(const QString& name, QWidget* parent) : QWidget(parent) {
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(name);
        setMinimumHeight(20);
    }
    bool keepsTab = false;
    bool hasMenuByMouse = false;
    bool hasMenuByKey = false;

protected:
    bool focusNextPrevChild(bool next) override { return keepsTab || QWidget::focusNextPrevChild(next); }
    void contextMenuEvent(QContextMenuEvent* event) override {
        if (!(event->reason() == QContextMenuEvent::Mouse ? hasMenuByMouse : hasMenuByKey))
            return event->ignore();
        QMenu menu(this);
        menu.addAction("Turn");
        menu.exec(event->globalPos());
    }
};

struct Parts {
    QMainWindow& window;
    QLineEdit* first;
    Odd* middle;
    QPushButton* last;
};

}  // namespace

using Plant = std::function<void(const Parts&)>;

/// The rules that each window is held to find what they are for.
class RulesTest : public QObject {
    Q_OBJECT

private slots:
    void planted_faults_are_found_data() {
        QTest::addColumn<Plant>("plant");
        QTest::addColumn<QString>("found");
        const auto row = [](const char* name, const char* found, Plant plant) {
            QTest::newRow(name) << plant << QString::fromLatin1(found);
        };
        row("none", "", [](const Parts&) {});
        row("left out", "Tab passes by", [](const Parts& parts) { parts.first->setFocusPolicy(Qt::ClickFocus); });
        row("a trap", "keeps the key", [](const Parts& parts) { parts.middle->keepsTab = true; });
        row("order", "comes behind", [](const Parts& parts) { QWidget::setTabOrder(parts.last, parts.middle); });
        row("no name", "without a role or a name", [](const Parts& parts) { parts.middle->setAccessibleName({}); });
        row("menu by mouse", "\"Turn\" only in a mouse's menu",
            [](const Parts& parts) { parts.middle->hasMenuByMouse = true; });
        row("menu by both", "",
            [](const Parts& parts) { parts.middle->hasMenuByMouse = parts.middle->hasMenuByKey = true; });
        row("menu without a key", "a menu entry without a letter: More",
            [](const Parts& parts) { parts.window.menuBar()->addMenu("More")->addAction("&Stop"); });
        row("command without a key", "a command without a key: Stop",
            [](const Parts& parts) { parts.middle->addAction(new QAction("Stop", parts.middle)); });
        row("key of two", "F5 stands for", [](const Parts& parts) {
            for (QAction* const action : {parts.window.addAction("Stop"), parts.window.addAction("Go")})
                action->setShortcut(Qt::Key_F5);
        });
        row("too large", "more than the screen",
            [](const Parts& parts) { parts.middle->setMinimumHeight(parts.window.screen()->size().height()); });
        row("button out of sight", "beyond the window's edge", [](const Parts& parts) {
            auto* const button = new QPushButton("&Save", &parts.window);
            button->move(3000, 0);
        });
        row("button in a scrolled area", "", [](const Parts& parts) {
            auto* const area = new QScrollArea(parts.window.centralWidget());
            auto* const button = new QPushButton("&Save");
            auto* const page = new QWidget;
            page->setFixedSize(200, 900);
            button->setParent(page);
            button->move(20, 850);
            area->setFocusPolicy(Qt::NoFocus);
            area->setWidget(page);
            QWidget::setTabOrder(parts.last, button);
            parts.window.centralWidget()->layout()->addWidget(area);
        });
        row("command with a key", "", [](const Parts& parts) {
            auto* const stop = new QAction("Stop", parts.middle);
            stop->setShortcut(Qt::Key_F5);
            parts.middle->addAction(stop);
        });
    }

    void planted_faults_are_found() {
        QFETCH(Plant, plant);
        QFETCH(QString, found);
        const Theme theme(*qApp, Appearance::Light);
        QMainWindow window;
        auto* const page = new QWidget;
        auto* const layout = new QVBoxLayout(page);
        const Parts parts{window, NewTextField(page), new Odd("Middle", page), new QPushButton("&Last", page)};
        parts.first->setAccessibleName("First");
        for (QWidget* const part : std::initializer_list<QWidget*>{parts.first, parts.middle, parts.last})
            layout->addWidget(part);
        window.setCentralWidget(page);
        window.menuBar()->addMenu("&File")->addAction("&Open");
        plant(parts);
        window.show();
        parts.middle->setFocus();
        const QString faults = (FaultsOfWindow(window) + FaultsOfTabWalk(window) + FaultsOfCommands(window)).join('\n');
        QVERIFY2(found.isEmpty() ? faults.isEmpty() : faults.contains(found), qPrintable(faults));
        QCOMPARE(window.focusWidget(), parts.middle);
    }

    void a_list_tells_of_its_current_row_only_with_the_focus_data() {
        QTest::addColumn<QAbstractItemView*>("list");
        auto* const tree = new QuietView<QTreeView>;
        tree->setHeaderHidden(true);
        QTest::newRow("tree") << static_cast<QAbstractItemView*>(tree);
        QTest::newRow("tree with a header") << static_cast<QAbstractItemView*>(new QuietView<QTreeView>);
        QTest::newRow("list") << static_cast<QAbstractItemView*>(new QuietView<QListView>);
    }

    void a_list_tells_of_its_current_row_only_with_the_focus() {
        QFETCH(QAbstractItemView*, list);
        const Theme theme(*qApp, Appearance::Light);
        QStandardItemModel rows(0, qobject_cast<QTreeView*>(list) ? 2 : 1);
        for (const char* const name : {"Bells", "Fog", "Lamps"}) {
            auto* const row = new QStandardItem(name);
            row->setCheckable(true);
            rows.appendRow(row);
        }
        QWidget window;
        QVBoxLayout layout(&window);
        QLineEdit field;
        layout.addWidget(&field);
        layout.addWidget(list);
        list->setAccessibleName("Key words");
        list->setModel(&rows);
        window.show();
        window.activateWindow();
        QTRY_VERIFY(window.isActiveWindow());
        field.setFocus();
        QCOMPARE(ToldDuring([&] {
                     list->setCurrentIndex(rows.index(2, 0));
                     list->setCurrentIndex(rows.index(1, 0));
                     rows.item(1)->setCheckState(Qt::Checked);
                 }),
                 QStringList());
        QCOMPARE(ToldDuring([&] { list->setFocus(); }), QStringList({"focus Key words", "focus Fog"}));
        QCOMPARE(ToldDuring([&] { QTest::keyClick(list, Qt::Key_Space); }), QStringList("unticked Fog"));
        QCOMPARE(ToldDuring([&] { QTest::keyClick(list, Qt::Key_Down); }), QStringList("focus Lamps"));
        QCOMPARE(ToldDuring([&] { QTest::keyClick(list, Qt::Key_Space); }), QStringList("ticked Lamps"));
        // Another row than the current one, and another value of the current one.
        QCOMPARE(ToldDuring([&] {
                     rows.item(0)->setCheckState(Qt::Checked);
                     rows.item(2)->setText("Lamps and lenses");
                 }),
                 QStringList());
        // The focus moves on before it is told.
        QVERIFY(!ToldDuring([&] {
                     field.setFocus();
                     list->setFocus();
                     field.setFocus();
                 }).contains("focus Lamps and lenses"));
        delete list;
    }
};

}  // namespace lore

QTEST_MAIN(lore::RulesTest)
#include "rules_test.moc"
