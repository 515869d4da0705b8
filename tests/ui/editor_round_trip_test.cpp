#include <QDir>
#include <QTest>
#include <QTextTable>

#include "base/file_io.h"
#include "rtf/rtf.h"
#include "ui/editor/document_capture.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/note_formats.h"
#include "ui/theme.h"

namespace lore {

/// A text that goes through the editor without a change comes out as it went in.
class EditorRoundTripTest : public QObject {
    Q_OBJECT

private slots:
    void KeepsEverything_data();
    void KeepsEverything();
    void ConvertsOnlyParagraphsThatChanged();
    void KeepsRowsThatWereNotTouched();
};

namespace {

std::string Head() {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff1{\\fonttbl{\\f0\\fnil Arial;}{\\f1\\froman Times New Roman;}{\\f7 Courier "
           "New;}}{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red0\\green0\\blue160;}";
}

void AddCase(const char* name, const std::string& body) {
    QTest::newRow(name) << QByteArray::fromStdString(Head() + body + "}");
}

// The first place where two documents part, in words.
QByteArray Difference(const Document& a, const Document& b) {
    if (a.text != b.text)
        return "text: " + QByteArray::fromStdString(a.text.substr(0, 300)) + "\n--- " +
               QByteArray::fromStdString(b.text.substr(0, 300));
    for (size_t i = 0; i < std::min(a.paragraphs.size(), b.paragraphs.size()); ++i)
        if (!(a.paragraphs[i] == b.paragraphs[i]))
            return "paragraph " + QByteArray::number(int(i)) + " row " + QByteArray::number(a.paragraphs[i].row) + "/" +
                   QByteArray::number(b.paragraphs[i].row) + " cell " + QByteArray::number(a.paragraphs[i].cell) + "/" +
                   QByteArray::number(b.paragraphs[i].cell) + " list id " +
                   QByteArray::number(a.paragraphs[i].format.list_id);
    for (size_t i = 0; i < std::min(a.runs.size(), b.runs.size()); ++i)
        if (!(a.runs[i] == b.runs[i]))
            return "run " + QByteArray::number(int(i));
    const std::pair<bool, const char*> parts[] = {{a.paragraphs == b.paragraphs, "number of paragraphs"},
                                                  {a.runs == b.runs, "number of runs"},
                                                  {a.fonts == b.fonts, "fonts"},
                                                  {a.links == b.links, "links"},
                                                  {a.pictures == b.pictures, "pictures"},
                                                  {a.rows == b.rows, "rows"},
                                                  {a.row_formats == b.row_formats, "row formats"},
                                                  {a.kept == b.kept, "kept groups"}};
    for (const auto& [same, part] : parts)
        if (!same)
            return part;
    return a == b ? QByteArray() : QByteArray("numbers");
}

struct Shown {
    explicit Shown(const Document& document) : theme(*qApp, Appearance::Light), formats(theme) {
        formats.SetDefault("Times New Roman", 27);
        formats.SetLook({Qt::white, 1.0, 96, 500});
        formats.Reset(document);
        text.documentLayout();  // without one no change is told of
        FillNote(document, text, formats);
        QObject::connect(&text, &QTextDocument::contentsChange, &text, [this](int at, int, int added) {
            for (QTextBlock block = text.findBlock(at); block.isValid() && block.position() <= at + added;
                 block = block.next())
                block.setUserData(nullptr);
        });
    }
    Document Captured() { return Assemble(CaptureNote(text, formats)); }

    Theme theme;
    NoteFormats formats;
    QTextDocument text;
};

}  // namespace

void EditorRoundTripTest::KeepsEverything_data() {
    QTest::addColumn<QByteArray>("rtf");
    QDir data(QStringLiteral(LORE_TEST_DATA "/rtf"));
    for (const QString& name : data.entryList({"*.rtf"})) {
        std::string bytes;
        QVERIFY(ReadFile(data.filePath(name).toStdString(), bytes).Ok());
        QTest::newRow(qPrintable(name)) << QByteArray::fromStdString(bytes);
    }
    AddCase("nothing", "");
    AddCase("last paragraph empty", "a\\par\\par ");
    AddCase(
        "all looks of characters",
        "\\b b\\i bi\\ul biu\\strike s\\plain\\scaps sc\\scaps0\\caps c\\plain\\super up\\sub low\\nosupersub\\cf1 red"
        "\\cf0\\highlight2 mark\\highlight0\\f7\\fs17 small\\fs300 big");
    AddCase("looks of paragraphs",
            "\\pard\\qc\\li720\\fi-360\\ri200\\sb120\\sa60\\sl360\\slmult1 a\\par\\pard\\qr\\fi500\\sl-300 b\\par"
            "\\pard\\rtlpar\\ql c\\par\\pard\\rtlpar\\qr d\\par\\pard\\qj\\li-200\\sb-5 e");
    AddCase("lists",
            "{\\*\\listtable{\\list\\listtemplateid1{\\listlevel\\levelnfc0\\levelstartat3{\\leveltext\\'02\\"
            "'00.;}{\\levelnumbers\\'01;}}{\\listlevel\\levelnfc2\\levelstartat1}\\listid9}}{\\*\\"
            "listoverridetable{\\listoverride\\listid9\\listoverridecount0\\ls4}}"
            "\\pard\\ls4\\ilvl0\\li720\\fi-360 a\\par\\ls4\\ilvl1\\li1440 b\\par\\ilvl0 c\\par\\pard d\\par"
            "{\\pntext x\\tab}{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}e\\par f\\par\\pard g");
    AddCase("links",
            "x{\\field{\\*\\fldinst{HYPERLINK \"https://a.example/\"}}{\\fldrslt{\\ul one {\\b two}}}}y"
            "{\\field{\\*\\fldinst{HYPERLINK \"https://b.example/\"}}{\\fldrslt three}}");
    AddCase("breaks", "a\\line b\\line\\page\\page c\\column\\sect d\\line");
    AddCase("six scripts",
            "Lighthouse \\u915?\\u961?\\u940? \\u1052?\\u1072?\\u1103? {\\rtlch \\u1513?\\u1500?} "
            "\\u1587?\\u1604? \\u28783?\\u22612? \\u-10180?\\u-8704? e\\u769?");
    AddCase("kept groups",
            "a{\\*\\bkmkstart x}b{\\*\\bkmkend x}{\\footnote note}c{\\v hidden}\\par{\\header h}"
            "\\par\\b d{\\*\\unknown 5}\\b0{\\*\\more}");
    AddCase("picture",
            "a{\\pict\\pngblip\\picw2\\pich1\\picwgoal30\\pichgoal15\\picscalex50 89504e47}b"
            "{\\pict\\wmetafile8\\picw100\\pich100 0102}{\\*\\kept z}{\\pict\\jpegblip ffd8}");
    AddCase("object", "a{\\object\\objemb{\\*\\objdata 01}{\\result{\\pict\\wmetafile8\\picw9\\pich9 00}}}b");
    AddCase("table first and last",
            "\\trowd\\cellx2000\\cellx4000\\intbl a\\cell\\b b\\cell\\row"
            "\\trowd\\cellx2000\\cellx4000\\intbl\\qc c\\par c2\\cell\\cell\\row\\pard");
    AddCase("two tables and a line",
            "\\trowd\\cellx2000\\intbl a\\cell\\row\\pard\\par\\trowd\\cellx999\\intbl b"
            "\\cell\\row\\pard x");
    AddCase("merged cells",
            "\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\clvmgf\\clbrdrt\\brdrs\\clcbpat2\\cellx3000\\"
            "intbl a\\cell\\cell tall\\cell\\row\\trowd\\cellx1000\\cellx2000\\clvmrg\\cellx3000\\intbl "
            "b\\cell c\\cell\\cell\\row\\pard end");
    AddCase("edges of their own",
            "x\\par\\trowd\\trleft-108\\trgaph70\\cellx1000\\cellx3000\\intbl a\\cell b\\cell\\row"
            "\\trowd\\cellx1000\\cellx2000\\cellx3010\\intbl c\\cell d\\cell e\\cell\\row\\pard y");
    AddCase("list and picture in a cell",
            "\\trowd\\cellx5000\\intbl{\\*\\pn\\pnlvlblt}i\\par j\\par\\pard\\intbl{\\pict"
            "\\pngblip 89}{\\*\\k 1}\\cell{\\*\\k 2}\\row\\pard z");
    AddCase("table in a cell",
            "\\trowd\\cellx6000\\pard\\intbl before\\par\\itap2 in\\nestcell two\\nestcell{\\*\\nesttableprops\\trowd"
            "\\cellx900\\cellx1800\\nestrow}\\pard\\intbl\\itap2 r2\\nestcell\\nestcell{\\*\\nesttableprops\\trowd"
            "\\cellx900\\cellx1800\\nestrow}\\pard\\intbl\\itap1 after\\cell\\row\\pard x");
    AddCase("rows that don't add up",
            "\\trowd\\cellx900\\intbl a\\cell b\\cell c\\cell\\row\\pard x\\par"
            "\\trowd\\intbl q\\cell\\row\\pard y\\par\\trowd\\cellx900\\cellx1800\\intbl a"
            "\\cell b x\\row\\pard z");
    AddCase("row never ends", "\\trowd\\cellx900\\cellx1800\\intbl a\\cell b x");
    AddCase("merged from nowhere", "\\trowd\\clmrg\\clvmrg\\cellx900\\clvmrg\\cellx1800\\intbl a\\cell b\\cell\\row x");
    AddCase("words in a covered cell",
            "\\trowd\\clmgf\\cellx900\\clmrg\\cellx1800\\intbl a\\cell lost?\\cell\\row\\pard");
}

void EditorRoundTripTest::KeepsEverything() {
    QFETCH(QByteArray, rtf);
    const Document document = ReadRtf(rtf.toStdString());
    Shown shown(document);
    const Document captured = shown.Captured();
    QCOMPARE(Difference(document, captured), QByteArray());
    QVERIFY(document == captured);
    // What is written says the same, too.
    QVERIFY(PlainText(WriteRtf(captured)) == document.text);
}

void EditorRoundTripTest::ConvertsOnlyParagraphsThatChanged() {
    Shown shown(DocumentFromText("one\ntwo\nthree", "Arial", 24));
    shown.Captured();
    const auto first = CaptureBlock(shown.text.firstBlock(), shown.formats);
    const auto second = CaptureBlock(shown.text.firstBlock().next(), shown.formats);
    QTextCursor cursor(shown.text.firstBlock().next());
    cursor.insertText("+");
    QCOMPARE(QByteArray::fromStdString(shown.Captured().text), QByteArray("one\n+two\nthree"));
    QVERIFY(CaptureBlock(shown.text.firstBlock(), shown.formats) == first);
    QVERIFY(CaptureBlock(shown.text.firstBlock().next(), shown.formats) != second);
}

void EditorRoundTripTest::KeepsRowsThatWereNotTouched() {
    const Document before = ReadRtf(Head() +
                                    "\\trowd\\trgaph70\\clcbpat2\\cellx1000\\cellx3000\\intbl a\\cell b\\cell"
                                    "{\\*\\keep 1}\\row\\pard x}");
    Shown shown(before);
    QTextCursor cursor(&shown.text);
    QTextTable* table = nullptr;
    for (QTextFrame* frame : shown.text.rootFrame()->childFrames())
        table = qobject_cast<QTextTable*>(frame);
    QVERIFY(table);
    table->cellAt(0, 1).lastCursorPosition().insertText("!");
    const Document after = shown.Captured();
    QCOMPARE(after.text, std::string("a\tb!\t\nx"));
    QVERIFY(after.row_formats == before.row_formats);
    QVERIFY(after.kept.size() == 1 && after.kept[0].rtf == before.kept[0].rtf);
}

}  // namespace lore

QTEST_MAIN(lore::EditorRoundTripTest)
#include "editor_round_trip_test.moc"
