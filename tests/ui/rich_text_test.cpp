#include "rtf/rtf.h"
#include "rtf/table_grid.h"
#include "ui/controls.h"
#include "ui/picture_bytes.h"
#include "ui/rich_text_pictures.h"
#include "ui/rich_text_view.h"
#include "ui/theme.h"

namespace lore {

class RichTextTest : public QObject {
    Q_OBJECT

private slots:
    void init() { theme_ = std::make_unique<Theme>(*qApp, Appearance::Light); }
    void ShowsSizesInPixelsOfTheBoard_data() {
        QTest::addColumn<double>("zoom");
        QTest::addColumn<int>("dotsPerInch");
        QTest::addColumn<double>("points");
        QTest::newRow("as written") << 1.0 << 96 << 13.5;
        QTest::newRow("zoomed") << 1.15 << 96 << 15.525;
        QTest::newRow("another device") << 2.0 << 72 << 36.0;
    }

    void ShowsSizesInPixelsOfTheBoard() {
        QFETCH(double, zoom);
        QFETCH(int, dotsPerInch);
        QFETCH(double, points);
        Document document = ReadRtf("{\\rtf1\\deff0{\\fonttbl{\\f0 Arial;}}\\fs27 abc\\par\\par x}");
        const auto shown = ShowRichText(document, {Qt::white, zoom, dotsPerInch, 400}, *theme_);
        QCOMPARE(FormatAt(*shown, 0).fontPointSize(), points);
        QCOMPARE(FormatAt(*shown, 0).fontFamilies().toStringList().value(0), QStringLiteral("Arial"));
        QCOMPARE(shown->blockCount(), 3);
        // An empty line is as high as its font says.
        QCOMPARE(shown->findBlockByNumber(1).charFormat().fontPointSize(), points);
    }

    void MakesColorsLegibleOnTheirGround() {
        const QColor dark(30, 30, 30);
        const auto shown = Shown("\\cf1 black\\cf0  auto {\\highlight2\\cf3 white on yellow}", dark);
        QVERIFY(ContrastOf(FormatAt(*shown, 0).foreground().color(), dark) >= 4.5);
        const QTextCharFormat marked = FormatAt(*shown, 14);
        QVERIFY(marked.background().color().isValid());
        QVERIFY(ContrastOf(marked.foreground().color(), marked.background().color()) >= 4.5);
        // On light ground black stays black.
        QCOMPARE(FormatAt(*Shown("\\cf1 black"), 0).foreground().color(), QColor(Qt::black));
    }

    void WritesTheMarksOfLists() {
        Document document = DocumentFromText("a\nb\nc\nd\ne\nf", "Arial", 24);
        QCOMPARE(document.paragraphs.size(), size_t(6));
        const auto item = [&document](size_t paragraph, ListKind kind, int level, int start) {
            ParagraphFormat& format = document.paragraphs[paragraph].format;
            format.list = kind;
            format.list_level = static_cast<uint8_t>(level);
            format.list_id = 7;
            format.list_start = static_cast<int16_t>(start);
        };
        item(0, ListKind::kDecimal, 0, 3);
        item(1, ListKind::kLowerRoman, 1, 4);
        item(2, ListKind::kLowerRoman, 1, 4);
        item(3, ListKind::kDecimal, 0, 3);
        item(4, ListKind::kLowerRoman, 1, 4);
        item(5, ListKind::kUpperLetter, 2, 27);
        const auto shown = ShowRichText(document, {Qt::white, 1.0, 96, 400}, *theme_);
        const char* expected[] = {"3.\ta", "iv.\tb", "v.\tc", "4.\td", "iv.\te", "AA.\tf"};
        for (int i = 0; i < 6; ++i)
            QCOMPARE(shown->findBlockByNumber(i).text(), QString::fromLatin1(expected[i]));
        QCOMPARE(shown->findBlockByNumber(1).blockFormat().leftMargin(), 48.0);
        QCOMPARE(shown->findBlockByNumber(1).blockFormat().textIndent(), -24.0);
    }

    void PutsRowsWithDifferentEdgesIntoOneGrid() {
        const auto shown = Shown(
            "before\\par\\trowd\\cellx1000\\cellx3000\\pard\\intbl a\\cell b\\cell\\row"
            "\\trowd\\cellx1000\\cellx2000\\cellx3010\\pard\\intbl c\\cell d\\cell e\\cell\\row\\pard after");
        QTextTable* table = nullptr;
        for (QTextFrame* frame : shown->rootFrame()->childFrames())
            table = qobject_cast<QTextTable*>(frame);
        QVERIFY(table);
        QCOMPARE(table->rows(), 2);
        QCOMPARE(table->columns(), 3);
        QCOMPARE(table->cellAt(0, 1).columnSpan(), 2);
        const auto text = [table](int row, int column) {
            return table->cellAt(row, column).firstCursorPosition().block().text();
        };
        QCOMPARE(text(0, 0), QStringLiteral("a"));
        QCOMPARE(text(0, 1), QStringLiteral("b"));
        QCOMPARE(text(1, 2), QStringLiteral("e"));
        QCOMPARE(shown->firstBlock().text(), QStringLiteral("before"));
        QCOMPARE(shown->lastBlock().text(), QStringLiteral("after"));
    }

    void MergesCellsAcrossAndDown() {
        const auto shown = Shown(
            "\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\clvmgf\\cellx3000\\pard\\intbl a\\cell\\cell tall\\cell\\row"
            "\\trowd\\cellx1000\\cellx2000\\clvmrg\\cellx3000\\pard\\intbl b\\cell c\\cell\\cell\\row\\pard end");
        const TableGrid grid = MakeTableGrid(document_, std::vector<int32_t>{0, 1});
        QCOMPARE(grid.Columns(), 3);
        QCOMPARE(grid.rows[0][0].columnSpan, 2);
        QVERIFY(grid.rows[0][1].covered);
        QCOMPARE(grid.rows[0][2].rowSpan, 2);
        QVERIFY(grid.rows[1][2].covered);
        QVERIFY(shown->toPlainText().contains(QStringLiteral("tall")));
    }

    void SurvivesTablesThatDontAddUp_data() {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("no edges") << QByteArray("\\trowd\\pard\\intbl a\\cell b\\cell\\row\\pard x");
        QTest::newRow("edges go back") << QByteArray(
            "\\trowd\\cellx3000\\cellx1000\\cellx-500\\intbl a\\cell b\\cell c\\cell\\row x");
        QTest::newRow("more cells than edges")
            << QByteArray("\\trowd\\cellx900\\intbl a\\cell b\\cell c\\cell\\row\\pard x");
        QTest::newRow("row never ends") << QByteArray("\\trowd\\cellx900\\cellx1800\\intbl a\\cell b x");
        QTest::newRow("merged from nowhere")
            << QByteArray("\\trowd\\clmrg\\clvmrg\\cellx900\\clvmrg\\cellx1800\\intbl a\\cell b\\cell\\row\\pard x");
        QTest::newRow("huge edges") << QByteArray(
            "\\trowd\\cellx2000000000\\cellx2147483647\\intbl a\\cell b\\cell\\row\\pard x");
        QTest::newRow("table in a cell") << QByteArray(
            "\\trowd\\cellx4000\\pard\\intbl\\itap2 in\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\nestrow}"
            "\\pard\\intbl\\itap1 a\\cell\\row\\pard x");
    }

    void SurvivesTablesThatDontAddUp() {
        QFETCH(QByteArray, body);
        const auto shown = Shown(body.toStdString());
        shown->setTextWidth(400);
        QVERIFY(shown->size().height() < 2000);
        QVERIFY(shown->toPlainText().contains(u'x'));
    }

    void FindsTheBitmapInAMetafile() {
        const QImage image = Filled(6, 4, Qt::red);
        const std::string dib = Encoded(image, "BMP").mid(14).toStdString();
        const auto words = [](std::initializer_list<unsigned> values) {
            std::string bytes;
            for (const unsigned value : values)
                bytes += {static_cast<char>(value & 255u), static_cast<char>(value >> 8 & 255u)};
            return bytes;
        };
        Picture picture;
        picture.kind = PictureKind::kWmf;
        const unsigned size = static_cast<unsigned>(6 + 22 + dib.size()) / 2;
        const std::string header = words({1, 9, 0x300, 0, 0, 0, size, 0, 0});
        picture.bytes = header + words({size, 0, 0x0f43, 0x20, 0xcc, 0, 4, 6, 0, 0, 4, 6, 0, 0}) + dib;
        const QImage found = DecodePicture(picture);
        QCOMPARE(found.size(), image.size());
        QCOMPARE(found.pixelColor(2, 2), QColor(Qt::red));
        // Damage gives no picture, wherever it hits.
        for (size_t cut = 0; cut < picture.bytes.size(); cut += 3) {
            Picture damaged = picture;
            damaged.bytes.resize(cut);
            QVERIFY(DecodePicture(damaged).width() <= 6);
            damaged = picture;
            damaged.bytes[cut] = '\xff';
            DecodePicture(damaged);
        }
    }

    void PicturesNeverGoBeyondTheWidth() {
        const std::string hex = Encoded(Filled(20, 10)).toHex().toStdString();
        const auto shown = Shown("{\\pict\\pngblip\\picw20\\pich10\\picwgoal60000\\pichgoal30000 " + hex + "} x");
        QTextImageFormat format = FormatAt(*shown, 0).toImageFormat();
        QVERIFY(format.isValid());
        QCOMPARE(format.width(), 400.0);
        QCOMPARE(format.height(), 200.0);
    }

private:
    std::unique_ptr<QTextDocument> Shown(const std::string& body, const QColor& ground = Qt::white, double zoom = 1.0) {
        look_ = {ground, zoom, 96, 400};
        document_ = ReadRtf(
            "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}{\\colortbl;\\red0\\green0\\blue0;"
            "\\red255\\green255\\blue0;\\red255\\green255\\blue255;}\\deff0\\fs27 " +
            body + "}");
        return ShowRichText(document_, look_, *theme_);
    }
    static QTextCharFormat FormatAt(const QTextDocument& shown, int position) {
        QTextCursor cursor(const_cast<QTextDocument*>(&shown));
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

    std::unique_ptr<Theme> theme_;
    RichTextLook look_;
    Document document_;
};

}  // namespace lore

QTEST_MAIN(lore::RichTextTest)
#include "rich_text_test.moc"
