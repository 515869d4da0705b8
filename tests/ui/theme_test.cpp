#include "ui/theme.h"

#include "ui/controls.h"

namespace lore {

class ThemeTest : public QObject {
    Q_OBJECT

private slots:
    void TextIsLegibleOnEveryGroundOfBothPalettes() {
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

    void ChosenColorsStayLegible() {
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

    void SpinBoxesLookLikeOtherFields() {
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

    void AppearanceOverridesTheDesktop() {
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

    void IconsAreSharpAndTakeTheirColor() {
        Theme theme(*qApp, Appearance::Light);
        const QImage icon = theme.IconPixmap(QStringLiteral("plus"), ColorRole::Accent, 16, 2.0).toImage();
        QCOMPARE(icon.size(), QSize(32, 32));
        QCOMPARE(icon.pixelColor(16, 16).rgb(), theme.Color(ColorRole::Accent).rgb());
        QCOMPARE(icon.pixelColor(1, 1).alpha(), 0);
        QVERIFY(!theme.Icon(QStringLiteral("search")).pixmap(QSize(24, 24)).isNull());
    }
};

}  // namespace lore

QTEST_MAIN(lore::ThemeTest)
#include "theme_test.moc"
