#include <functional>

#include "ui/command_reach.h"
#include "ui/controls.h"
#include "ui/controls/quiet_view.h"
#include "ui/controls/text_field.h"
#include "ui/look/theme.h"
#include "ui/tab_walk.h"
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

/// The rules that each window is held to find what they are for, and the theme of all windows keeps to those of colors.
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
        row("order", "comes after", [](const Parts& parts) { QWidget::setTabOrder(parts.last, parts.middle); });
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
        row("a choice that is cut", "cut: ", [](const Parts& parts) {
            auto* const box = new QComboBox(parts.middle);
            box->addItems({"a", "a choice"});
            box->setAccessibleDescription("Box");
            box->setFixedWidth(box->sizeHint().width() - box->fontMetrics().horizontalAdvance("ce"));
        });
        row("a choice of nothing", "only its choice for a name", [](const Parts& parts) {
            auto* const box = new QComboBox(parts.middle);
            box->setAccessibleName("Box");
            box->addItem("a");
        });
        row("a button inside", "a button inside without a name",
            [](const Parts& parts) { parts.first->setClearButtonEnabled(true); });
        row("a button inside with a name", "", [](const Parts& parts) { OfferClearing(*parts.first); });
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

    void a_list_tells_of_its_current_row_only_with_the_focus() {
        const Theme theme(*qApp, Appearance::Light);
        auto* const bare = new QuietView<QTreeView>;
        bare->setHeaderHidden(true);
        for (QAbstractItemView* const list :
             std::initializer_list<QAbstractItemView*>{bare, new QuietView<QTreeView>, new QuietView<QListView>}) {
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
            BringUp(window);
            field.setFocus();
            const auto told = [list](Qt::Key key) { return ToldDuring([=] { QTest::keyClick(list, key); }); };
            QCOMPARE(ToldDuring([&] {
                         list->setCurrentIndex(rows.index(2, 0));
                         list->setCurrentIndex(rows.index(1, 0));
                         rows.item(1)->setCheckState(Qt::Checked);
                     }),
                     QStringList());
            QCOMPARE(ToldDuring([&] { list->setFocus(); }), QStringList({"focus Key words", "focus Fog"}));
            QCOMPARE(told(Qt::Key_Space), QStringList("unticked Fog"));
            QCOMPARE(told(Qt::Key_Down), QStringList("focus Lamps"));
            QCOMPARE(told(Qt::Key_Space), QStringList("ticked Lamps"));
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
    }

    void text_is_legible_on_every_ground_of_both_palettes() {
        using enum ColorRole;
        const std::initializer_list<ColorRole> grounds = {Window, Field, Board, Card, Raised, Hover};
        const std::tuple<ColorRole, std::initializer_list<ColorRole>, double> pairs[] = {
            {Text, grounds, 4.5},
            {DimText, grounds, 4.5},
            {Link, {Window, Field, Card, Raised}, 4.5},
            {AccentText, {Accent}, 4.5},
            {SelectionText, {Selection}, 4.5},
            {WarningText, {Warning}, 4.5},
            {Edge, {Window, Field, Board, Card, Raised}, 3.0},
            {Accent, {Window, Field, Board, Card}, 3.0}};
        for (const ThemeColors* const colors : {&DarkColors(), &LightColors()})
            for (const auto& [front, behind, least] : pairs)
                for (const ColorRole ground : behind) {
                    const double contrast = ContrastOf((*colors)[size_t(front)], (*colors)[size_t(ground)]);
                    QVERIFY2(contrast >= least,
                             qPrintable(QStringLiteral("%1 on %2: %3").arg(int(front)).arg(int(ground)).arg(contrast)));
                }
    }

    void chosen_colors_stay_legible() {
        // Highlights and marked hits, pills and the frames of cards, in any colour that somebody may choose.
        QList<QColor> all;
        for (int i = 0; i < 6 * 6 * 6; ++i)
            all.append(QColor(i % 6 * 51, i / 6 % 6 * 51, i / 36 * 51));
        for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
            const Theme theme(*qApp, appearance);
            for (const QColor& chosen : all) {
                const QColor grounds[] = {theme.Ground(chosen), theme.Mark(chosen)};
                for (const QColor& ground : grounds) {
                    QVERIFY(ContrastOf(Legible(theme.Color(ColorRole::Text), ground), ground) >= 4.5);
                    QVERIFY(ContrastOf(Legible(theme.Color(ColorRole::Link), ground), ground) >= 4.5);
                }
                for (const QColor& text : {QColor(Qt::red), QColor(Qt::blue), QColor(128, 128, 128)})
                    QVERIFY(ContrastOf(Legible(text, grounds[0]), grounds[0]) >= 4.5);
                for (const ColorRole role : {ColorRole::Card, ColorRole::Board, ColorRole::Window}) {
                    const QColor ground = theme.Color(role);
                    QVERIFY(ContrastOf(Legible(chosen, ground), ground) >= 4.5);
                    QVERIFY(ContrastOf(Legible(chosen, ground, 3.0), ground) >= 3.0);
                }
            }
        }
        QCOMPARE(Legible(Qt::black, Qt::white), QColor(Qt::black));
    }

    void spin_boxes_look_like_other_fields() {
        for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
            const Theme theme(*qApp, appearance);
            const QColor field = theme.Color(ColorRole::Field), window = theme.Color(ColorRole::Window);
            QWidget form;
            auto* const rows = new QVBoxLayout(&form);
            for (QWidget* const control :
                 {static_cast<QWidget*>(new QLineEdit), static_cast<QWidget*>(new QSpinBox),
                  static_cast<QWidget*>(new QDoubleSpinBox), static_cast<QWidget*>(new QTimeEdit)})
                rows->addWidget(control);
            form.adjustSize();
            QImage picture(form.size(), QImage::Format_RGB32);
            form.render(&picture);
            for (const QWidget* const control : form.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                const QRect rect = control->geometry();
                for (const QPoint& edge :
                     {QPoint(rect.left(), rect.center().y()), QPoint(rect.right(), rect.center().y()),
                      QPoint(rect.center().x(), rect.top()), QPoint(rect.center().x(), rect.bottom())})
                    QVERIFY2(ContrastOf(picture.pixelColor(edge), window) >= 3.0, control->metaObject()->className());
                QCOMPARE(picture.pixelColor(rect.topLeft()), window);  // a round corner
                // The ground of the arrows is that of the text, and the arrows stand out from it.
                const int right = rect.right() - kSpace;
                QCOMPARE(picture.pixelColor(right, rect.top() + kSpace), field);
                QCOMPARE(picture.pixelColor(right, rect.bottom() - kSpace), field);
                double strongest = 1;
                for (int x = rect.right() - 5 * kSpace; x < right; ++x)
                    for (int y = rect.top() + kSpace; y < rect.center().y(); ++y)
                        strongest = std::max(strongest, ContrastOf(picture.pixelColor(x, y), field));
                QCOMPARE(strongest >= 3.0, qobject_cast<const QAbstractSpinBox*>(control) != nullptr);
            }
        }
    }

    void appearance_overrides_the_desktop() {
        Theme theme(*qApp);
        int changes = 0;
        connect(&theme, &Theme::Changed, this, [&changes] { ++changes; });
        theme.SetAppearance(Appearance::Dark);
        QVERIFY(theme.IsDark());
        QCOMPARE(QApplication::palette().color(QPalette::Window), DarkColors()[size_t(ColorRole::Window)]);
        theme.SetAppearance(Appearance::Light);
        QVERIFY(!theme.IsDark());
        QCOMPARE(QApplication::palette().color(QPalette::Base), LightColors()[size_t(ColorRole::Field)]);
        QCOMPARE(changes, 2);
    }

    void icons_are_sharp_and_take_their_color() {
        Theme theme(*qApp, Appearance::Light);
        const QImage icon = theme.IconPixmap(QStringLiteral("plus"), ColorRole::Accent, 16, 2.0).toImage();
        QCOMPARE(icon.size(), QSize(32, 32));
        QCOMPARE(icon.pixelColor(16, 16).rgb(), theme.Color(ColorRole::Accent).rgb());
        QCOMPARE(icon.pixelColor(1, 1).alpha(), 0);
        QVERIFY(!theme.Icon(QStringLiteral("search")).pixmap(QSize(24, 24)).isNull());
    }
};

}  // namespace lore

QTEST_MAIN(lore::RulesTest)
#include "rules_test.moc"
