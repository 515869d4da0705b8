#include "ui/theme.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

namespace lore {

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void TextIsLegibleOnEveryGroundOfBothPalettes_data();
    void TextIsLegibleOnEveryGroundOfBothPalettes();
    void ChosenColorsStayLegible();
    void AppearanceOverridesTheDesktop();
    void IconsAreSharpAndTakeTheirColor();
};

void ThemeTest::TextIsLegibleOnEveryGroundOfBothPalettes_data() {
    using enum ColorRole;
    QTest::addColumn<bool>("dark");
    QTest::addColumn<int>("front");
    QTest::addColumn<int>("ground");
    QTest::addColumn<double>("least");
    const std::initializer_list<ColorRole> grounds = {Window, Field, Board, Card, Raised, Hover};
    struct Pair {
        ColorRole front;
        std::initializer_list<ColorRole> grounds;
        double least;
    };
    const Pair pairs[] = {{Text, grounds, 4.5},
                          {DimText, grounds, 4.5},
                          {Link, {Window, Field, Card, Raised}, 4.5},
                          {AccentText, {Accent}, 4.5},
                          {SelectionText, {Selection}, 4.5},
                          {WarningText, {Warning}, 4.5},
                          {Edge, {Window, Field, Board, Card, Raised}, 3.0},
                          {Accent, {Window, Field, Board, Card}, 3.0}};
    for (const bool dark : {false, true})
        for (const Pair& pair : pairs)
            for (const ColorRole ground : pair.grounds)
                QTest::addRow("%s %d on %d", dark ? "dark" : "light", int(pair.front), int(ground))
                    << dark << int(pair.front) << int(ground) << pair.least;
}

void ThemeTest::TextIsLegibleOnEveryGroundOfBothPalettes() {
    QFETCH(bool, dark);
    QFETCH(int, front);
    QFETCH(int, ground);
    QFETCH(double, least);
    const ThemeColors& colors = dark ? DarkColors() : LightColors();
    const double contrast = ContrastOf(colors[size_t(front)], colors[size_t(ground)]);
    QVERIFY2(contrast >= least, qPrintable(QString::number(contrast)));
}

void ThemeTest::ChosenColorsStayLegible() {
    Theme theme(*qApp, Appearance::Dark);
    const QColor grounds[] = {QColor(251, 251, 142), Qt::white, Qt::black, QColor(255, 142, 40), QColor(128, 128, 128)};
    const QColor texts[] = {Qt::black, Qt::white, Qt::red, Qt::blue, QColor(128, 128, 128)};
    for (const QColor& ground : grounds)
        for (const QColor& text : texts) {
            const QColor shown = theme.Ground(ground);
            QVERIFY(ContrastOf(Legible(text, shown), shown) >= 4.4);
            QVERIFY(ContrastOf(Legible(text, ground), ground) >= 4.4);
        }
    QCOMPARE(Legible(Qt::black, Qt::white), QColor(Qt::black));
}

void ThemeTest::AppearanceOverridesTheDesktop() {
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

void ThemeTest::IconsAreSharpAndTakeTheirColor() {
    Theme theme(*qApp, Appearance::Light);
    const QImage icon = theme.IconPixmap(QStringLiteral("plus"), ColorRole::Accent, 16, 2.0).toImage();
    QCOMPARE(icon.size(), QSize(32, 32));
    QCOMPARE(icon.pixelColor(16, 16).rgb(), theme.Color(ColorRole::Accent).rgb());
    QCOMPARE(icon.pixelColor(1, 1).alpha(), 0);
    QVERIFY(!theme.Icon(QStringLiteral("search")).pixmap(QSize(24, 24)).isNull());
}

}  // namespace lore

QTEST_MAIN(lore::ThemeTest)
#include "theme_test.moc"
