#include <QDir>
#include <QTest>
#include <QTextTable>
#include <fstream>

#include "base/file_io.h"
#include "rtf/rtf.h"
#include "ui/editor/document_capture.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/note_formats.h"
#include "ui/theme.h"

namespace lore {

namespace {

std::string Head() {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff1{\\fonttbl{\\f0\\fnil Arial;}{\\f1\\froman Times New Roman;}{\\f7 Courier "
           "New;}}{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red0\\green0\\blue160;}";
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

/// A text that goes through the editor without a change comes out as it went in.
class EditorRoundTripTest : public QObject {
    Q_OBJECT

private slots:
    void KeepsEverything_data() {
        QTest::addColumn<QByteArray>("rtf");
        QDir data(QStringLiteral(LORE_TEST_DATA "/rtf"));
        for (const QString& name : data.entryList({"*.rtf"})) {
            std::string bytes;
            QVERIFY(ReadFile(data.filePath(name).toStdString(), bytes).Ok());
            QTest::newRow(qPrintable(name)) << QByteArray::fromStdString(bytes);
        }
        // A name in one line, a text in the next.
        std::ifstream cases(LORE_TEST_DATA "/editor/round_trips.txt");
        for (std::string name, body; std::getline(cases, name) && std::getline(cases, body);)
            QTest::newRow(name.c_str()) << QByteArray::fromStdString(Head() + body + "}");
        QVERIFY(cases.eof());
    }

    void KeepsEverything() {
        QFETCH(QByteArray, rtf);
        const Document document = ReadRtf(rtf.toStdString());
        Shown shown(document);
        const Document captured = shown.Captured();
        QCOMPARE(Difference(document, captured), QByteArray());
        QVERIFY(document == captured);
        // What is written says the same, too.
        QVERIFY(PlainText(WriteRtf(captured)) == document.text);
    }

    void APieceBringsItsWordsThatAreNotShown() {
        Shown shown(DocumentFromText("xy", "Arial", 24));
        QTextCursor cursor(&shown.text);
        cursor.setPosition(1);
        InsertNote(ReadRtf("{\\rtf1 a{\\v b}{\\header c}d{\\footnote e}}"), cursor, shown.formats);
        const Document now = shown.Captured();
        QCOMPARE(now.text, std::string("xad [e]y"));
        QVERIFY(now.kept == std::vector<KeptGroup>({{2, "{\\v b}"}}));
    }

    void ConvertsOnlyParagraphsThatChanged() {
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

    void KeepsRowsThatWereNotTouched() {
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
};

}  // namespace lore

QTEST_MAIN(lore::EditorRoundTripTest)
#include "editor_round_trip_test.moc"
