#include <QDir>
#include <fstream>

#include "base/file_io.h"
#include "support/read_world.h"
#include "ui/board/rich_text_pictures.h"
#include "ui/board/rich_text_view.h"
#include "ui/editor/document_capture.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/picture_frame.h"
#include "ui/editor/table_commands.h"
#include "ui/editor_window.h"
#include "ui/picture_bytes.h"

namespace lore {
namespace {

constexpr double kPicture = 544;  // pixels that the picture of the note states
constexpr double kWide = 1200;    // of its first table
constexpr double kNarrow = 200;   // of its second one

std::string Note() {
    return "{\\rtf1 before\\par{\\pict\\pngblip\\picw1000\\pich641\\picwgoal10200\\pichgoal6540\\picscalex80"
           "\\picscaley80 " +
           Encoded(Filled(100, 64)).toHex().toStdString() +
           "}\\par\\trowd\\cellx3000\\cellx9000\\cellx18000\\intbl Chapter\\cell b\\cell c\\cell\\row"
           "\\pard between\\par"
           "\\trowd\\cellx1500\\cellx3000\\intbl d\\cell e\\cell\\row\\pard after}";
}

const std::string kHead =
    "{\\rtf1\\ansi\\ansicpg1252\\deff1{\\fonttbl{\\f0\\fnil Arial;}{\\f1\\froman Times New Roman;}{\\f7 Courier New;}}"
    "{\\colortbl;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red0\\green0\\blue160;}";

/// The first part in which two documents differ.
const char* Difference(const Document& a, const Document& b) {
    const std::pair<bool, const char*> parts[] = {
        {a.text == b.text, "text"},       {a.paragraphs == b.paragraphs, "paragraphs"},
        {a.runs == b.runs, "runs"},       {a.fonts == b.fonts, "fonts"},
        {a.links == b.links, "links"},    {a.pictures == b.pictures, "pictures"},
        {a.rows == b.rows, "rows"},       {a.rowFormats == b.rowFormats, "row formats"},
        {a.kept == b.kept, "kept groups"}};
    const auto found = std::find_if(std::begin(parts), std::end(parts), [](const auto& part) { return !part.first; });
    return found == std::end(parts) ? "numbers" : found->second;
}

struct ShownNote {
    ShownNote(const Document& document, const Theme& theme) : formats(theme) {
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

    NoteFormats formats;
    QTextDocument text;
};

}  // namespace

/// What a text shows, on a card and in the editor, follows the room and the colors of the desktop; what is stored
/// doesn't. A text that goes through the editor without a change comes out as it went in.
class EditorShownTest : public QObject, protected EditorWorld {
    Q_OBJECT

private slots:
    void cleanup() { window_.reset(); }
    void shows_sizes_in_pixels_of_the_board() {
        const std::tuple<double, int, double> cases[] = {{1.0, 96, 13.5}, {1.15, 96, 15.525}, {2.0, 72, 36.0}};
        for (const auto& [zoom, dotsPerInch, points] : cases) {
            Document document = ReadRtf("{\\rtf1\\deff0{\\fonttbl{\\f0 Arial;}}\\fs27 abc\\par\\par x}");
            const auto shown = ShowRichText(document, {Qt::white, zoom, dotsPerInch, 400}, theme_);
            QCOMPARE(FormatAt(*shown, 0).fontPointSize(), points);
            QCOMPARE(FormatAt(*shown, 0).fontFamilies().toStringList().value(0), QStringLiteral("Arial"));
            QCOMPARE(shown->blockCount(), 3);
            // An empty line is as high as its font says.
            QCOMPARE(shown->findBlockByNumber(1).charFormat().fontPointSize(), points);
        }
    }

    void makes_colors_legible_on_their_ground() {
        const QColor dark(30, 30, 30);
        const auto shown = Shown("\\cf1 black\\cf0  auto {\\highlight2\\cf3 white on yellow}", dark);
        QVERIFY(ContrastOf(FormatAt(*shown, 0).foreground().color(), dark) >= 4.5);
        const QTextCharFormat marked = FormatAt(*shown, 14);
        QVERIFY(marked.background().color().isValid());
        QVERIFY(ContrastOf(marked.foreground().color(), marked.background().color()) >= 4.5);
        // On light ground black stays black.
        QCOMPARE(FormatAt(*Shown("\\cf1 black"), 0).foreground().color(), QColor(Qt::black));
    }

    void writes_the_marks_of_lists() {
        struct Item {
            ListKind kind;
            int level, start;
            const char* shown;
        };
        const Item items[] = {{ListKind::Decimal, 0, 3, "3.\ta"},     {ListKind::LowerRoman, 1, 4, "iv.\tb"},
                              {ListKind::LowerRoman, 1, 4, "v.\tc"},  {ListKind::Decimal, 0, 3, "4.\td"},
                              {ListKind::LowerRoman, 1, 4, "iv.\te"}, {ListKind::UpperLetter, 2, 27, "AA.\tf"}};
        Document document = DocumentFromText("a\nb\nc\nd\ne\nf", "Arial", 24);
        QCOMPARE(document.paragraphs.size(), std::size(items));
        for (size_t i = 0; i < std::size(items); ++i) {
            ParagraphFormat& format = document.paragraphs[i].format;
            format.list = items[i].kind;
            format.listLevel = static_cast<uint8_t>(items[i].level);
            format.listId = 7;
            format.listStart = static_cast<int16_t>(items[i].start);
        }
        const auto shown = ShowRichText(document, {Qt::white, 1.0, 96, 400}, theme_);
        for (int i = 0; i < 6; ++i)
            QCOMPARE(shown->findBlockByNumber(i).text(), QString::fromLatin1(items[i].shown));
        QCOMPARE(shown->findBlockByNumber(1).blockFormat().leftMargin(), 48.0);
        QCOMPARE(shown->findBlockByNumber(1).blockFormat().textIndent(), -24.0);
    }

    void gives_a_blank_line_behind_a_table_its_height() {
        const std::string table = "\\trowd\\cellx1000\\pard\\intbl a\\cell\\row\\pard";
        const double without = Shown(table + " x")->size().height();
        QVERIFY(Shown(table + "\\par x")->size().height() > without + 10);
        QVERIFY(Shown(table)->size().height() < without);
    }

    void puts_rows_with_different_edges_into_one_grid() {
        const auto shown = Shown(
            "before\\par\\trowd\\cellx1000\\cellx3000\\pard\\intbl a\\cell b\\cell\\row"
            "\\trowd\\cellx1000\\cellx2000\\cellx3010\\pard\\intbl c\\cell d\\cell e\\cell\\row\\pard after");
        const auto* const table = qobject_cast<QTextTable*>(shown->rootFrame()->childFrames().value(0));
        QVERIFY(table);
        QCOMPARE(table->rows(), 2);
        QCOMPARE(table->columns(), 3);
        QCOMPARE(table->cellAt(0, 1).columnSpan(), 2);
        for (const auto& [row, column, text] : {std::tuple(0, 0, "a"), {0, 1, "b"}, {1, 2, "e"}})
            QCOMPARE(table->cellAt(row, column).firstCursorPosition().block().text(), QString(text));
        QCOMPARE(shown->firstBlock().text(), QStringLiteral("before"));
        QCOMPARE(shown->lastBlock().text(), QStringLiteral("after"));
    }

    void survives_tables_that_dont_add_up() {
        const std::pair<const char*, const char*> cases[] = {
            {"no edges", "\\trowd\\pard\\intbl a\\cell b\\cell\\row\\pard x"},
            {"edges go back", "\\trowd\\cellx3000\\cellx1000\\cellx-500\\intbl a\\cell b\\cell c\\cell\\row x"},
            {"more cells than edges", "\\trowd\\cellx900\\intbl a\\cell b\\cell c\\cell\\row\\pard x"},
            {"row never ends", "\\trowd\\cellx900\\cellx1800\\intbl a\\cell b x"},
            {"merged from nowhere",
             "\\trowd\\clmrg\\clvmrg\\cellx900\\clvmrg\\cellx1800\\intbl a\\cell b\\cell\\row\\pard x"},
            {"huge edges", "\\trowd\\cellx2000000000\\cellx2147483647\\intbl a\\cell b\\cell\\row\\pard x"},
            {"table in a cell",
             "\\trowd\\cellx4000\\pard\\intbl\\itap2 in\\nestcell{\\*\\nesttableprops\\trowd\\cellx900\\nestrow}"
             "\\pard\\intbl\\itap1 a\\cell\\row\\pard x"}};
        for (const auto& [name, body] : cases) {
            const auto shown = Shown(body);
            shown->setTextWidth(400);
            QVERIFY2(shown->size().height() < 2000, name);
            QVERIFY2(shown->toPlainText().contains(u'x'), name);
        }
    }

    void finds_the_bitmap_in_a_metafile() {
        const QImage image = Filled(6, 4, Qt::red);
        const std::string dib = Encoded(image, "BMP").mid(14).toStdString();
        const auto words = [](std::initializer_list<unsigned> values) {
            std::string bytes;
            for (const unsigned value : values)
                bytes += {static_cast<char>(value & 255u), static_cast<char>(value >> 8 & 255u)};
            return bytes;
        };
        Picture picture;
        picture.kind = PictureKind::Wmf;
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

    void pictures_never_go_beyond_the_width() {
        const std::string hex = Encoded(Filled(20, 10)).toHex().toStdString();
        const auto shown = Shown("{\\pict\\pngblip\\picw20\\pich10\\picwgoal60000\\pichgoal30000 " + hex + "} x");
        QTextImageFormat format = FormatAt(*shown, 0).toImageFormat();
        QVERIFY(format.isValid());
        QCOMPARE(format.width(), 400.0);
        QCOMPARE(format.height(), 200.0);
    }

    void keeps_everything_data() {
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
            QTest::newRow(name.c_str()) << QByteArray::fromStdString(kHead + body + "}");
        QVERIFY(cases.eof());
    }

    void keeps_everything() {
        QFETCH(QByteArray, rtf);
        const Document document = ReadRtf(rtf.toStdString());
        ShownNote shown(document, theme_);
        const Document captured = shown.Captured();
        QVERIFY2(document == captured, Difference(document, captured));
        // What is written says the same, too.
        QVERIFY(PlainText(WriteRtf(captured)) == document.text);
    }

    void a_piece_brings_its_words_that_are_not_shown() {
        ShownNote shown(DocumentFromText("xy", "Arial", 24), theme_);
        QTextCursor cursor(&shown.text);
        cursor.setPosition(1);
        InsertNote(ReadRtf("{\\rtf1 a{\\v b}{\\header c}d{\\footnote e}}"), cursor, shown.formats);
        const Document now = shown.Captured();
        QCOMPARE(now.text, std::string("xad [e]y"));
        QVERIFY(now.kept == std::vector<KeptGroup>({{2, "{\\v b}"}}));
    }

    void converts_only_paragraphs_that_changed() {
        ShownNote shown(DocumentFromText("one\ntwo\nthree", "Arial", 24), theme_);
        shown.Captured();
        const auto first = CaptureBlock(shown.text.firstBlock(), shown.formats);
        const auto second = CaptureBlock(shown.text.firstBlock().next(), shown.formats);
        QTextCursor cursor(shown.text.firstBlock().next());
        cursor.insertText("+");
        QCOMPARE(QByteArray::fromStdString(shown.Captured().text), QByteArray("one\n+two\nthree"));
        QVERIFY(CaptureBlock(shown.text.firstBlock(), shown.formats) == first);
        QVERIFY(CaptureBlock(shown.text.firstBlock().next(), shown.formats) != second);
    }

    void keeps_rows_that_were_not_touched() {
        const Document before = ReadRtf(kHead +
                                        "\\trowd\\trgaph70\\clcbpat2\\cellx1000\\cellx3000\\intbl a\\cell b\\cell"
                                        "{\\*\\keep 1}\\row\\pard x}");
        ShownNote shown(before, theme_);
        QTextCursor cursor(&shown.text);
        const auto* const table = qobject_cast<QTextTable*>(shown.text.rootFrame()->childFrames().value(0));
        QVERIFY(table);
        table->cellAt(0, 1).lastCursorPosition().insertText("!");
        const Document after = shown.Captured();
        QCOMPARE(after.text, std::string("a\tb!\t\nx"));
        QVERIFY(after.rowFormats == before.rowFormats);
        QVERIFY(after.kept.size() == 1 && after.kept[0].rtf == before.kept[0].rtf);
    }

    void shown_widths_follow_the_window() {
        Open(Note());
        QSignalSpy changed(edit_, &QTextEdit::textChanged);
        for (const int width : {0, 400, 1700, 700}) {
            if (width > 0)
                window_->frame.resize(width, 640);
            QTRY_VERIFY2(Differences(true).isEmpty(), qPrintable(QString::number(width) + ": " + Differences(true)));
            TakeShot(window_->frame, QStringLiteral("editor-width-%1").arg(width));
        }
        QVERIFY(!edit_->IsModified() && !edit_->document()->isUndoAvailable());
        QVERIFY(changed.isEmpty());
        QCOMPARE(edit_->Rtf(), Note());

        // Steps of undo stay as they are, and nothing gets wider than the text.
        window_->Type("x");
        edit_->undo();
        window_->Type("y");
        const int steps = edit_->document()->availableUndoSteps();
        for (const int width : {420, 1700, 500}) {
            window_->frame.resize(width, 640);
            QTest::qWait(200);
            QVERIFY2(Differences(false).isEmpty(), qPrintable(QString::number(width) + ": " + Differences(false)));
        }
        QCOMPARE(edit_->document()->availableUndoSteps(), steps);
        const Document now = Now();
        QCOMPARE(now.pictures[0].goalWidth, 10200);
        QCOMPARE(now.pictures[0].scaleX, 80);
        QCOMPARE(now.rowFormats, ReadRtf(Note()).rowFormats);
        edit_->undo();
        QVERIFY(!edit_->IsModified());
        QCOMPARE(edit_->Rtf(), Note());
    }

    void the_size_of_a_picture_is_the_stored_one() {
        Open(Note());
        window_->frame.resize(420, 640);
        QTRY_VERIFY(Differences(true).isEmpty());
        edit_->setTextCursor(PictureCursor());
        const auto offered = [](QDialog& dialog) {
            const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
            QCOMPARE(numbers[0]->value(), 544);
            QCOMPARE(numbers[1]->value(), 349);
        };
        InSizeDialog(offered);
        // Neither does a click on the corner change it.
        const PictureFrame frame(*edit_, theme_);
        QTest::mouseClick(edit_->viewport(), Qt::LeftButton, {}, frame.RectOf(PictureCursor()).bottomRight().toPoint());
        QVERIFY(!edit_->IsModified() && !edit_->document()->isUndoAvailable());
        QCOMPARE(edit_->Rtf(), Note());

        edit_->setTextCursor(PictureCursor());
        InSizeDialog([&](QDialog& dialog) {
            offered(dialog);
            dialog.findChildren<QSpinBox*>()[0]->setValue(272);
        });
        const Picture changed = Now().pictures[0];
        QCOMPARE(changed.goalWidth, 272 * 15);
        QCOMPARE(changed.goalHeight, 2616);
        QCOMPARE(changed.scaleX, 100);
        QCOMPARE(changed.bytes, ReadRtf(Note()).pictures[0].bytes);
        edit_->undo();
        QCOMPARE(edit_->Rtf(), Note());
        QVERIFY(!window_->bar->Command("pictureSize")->shortcut().isEmpty());
    }

    void tables_stay_within_their_place() {
        Open({});
        edit_->InsertTableHere(2, 3);
        const auto rightEdge = [this] {
            const Document now = Now();
            return now.rowFormats[now.rows[0].format].cells.back().rightEdge;
        };
        const int before = rightEdge();
        QTextCursor cursor = edit_->textCursor();
        AddTablePart(cursor, TablePart::ColumnAfter, edit_->Formats());
        QVERIFY(std::abs(rightEdge() - before) < 4);
        edit_->InsertTableHere(1, 2);
        const QRectF cell = RectOf(Tables()[0]), inner = RectOf(Tables()[0]->childFrames().value(0));
        QVERIFY2(inner.width() <= cell.width() / 4 && inner.width() > cell.width() / 8,
                 qPrintable(QString::number(inner.width())));
        window_->frame.resize(500, 640);
        QTest::qWait(200);
        QVERIFY(RectOf(Tables()[0]).width() <= edit_->TextWidth() + 4);
    }

    void an_emptied_text_looks_like_a_new_one() {
        const std::string word = "{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs40 word}";
        // The text, and how often Backspace is pressed in it; where it is 0, all is deleted at once.
        const std::pair<std::string, int> cases[] = {
            {word, 0}, {word, 4}, {"{\\rtf1 word\\par\\b more}", 0}, {"", -1}, {Note(), 0}};
        for (const auto& [rtf, back] : cases) {
            Open(rtf, [](RichTextEdit& edit) { edit.SetDefaultFont("Georgia", 30); });
            if (back == 0)
                PressKeys(edit_, {"Ctrl+A", "Del"});
            edit_->moveCursor(QTextCursor::End);
            for (int i = 0; i < back; ++i)
                PressKeys(edit_, {"Backspace"});
            for (int round = 0; round < 2; ++round) {
                QVERIFY(edit_->document()->isEmpty());
                PressKeys(edit_, {"Home"});
                QCOMPARE(In<QComboBox>(*window_->bar, "fontList")->currentText(), QStringLiteral("Georgia"));
                QCOMPARE(In<QComboBox>(*window_->bar, "sizeList")->currentText(), QStringLiteral("15"));
                window_->Type("typed");
                QVERIFY(edit_->Rtf().find("\\fs30") != std::string::npos);
                const Document now = Now();
                QCOMPARE(now.text, std::string("typed"));
                QCOMPARE(now.runs.size(), size_t{1});
                QCOMPARE(int(now.runs[0].format.halfPoints), 30);
                QVERIFY(now.runs[0].format.font >= 0);
                QCOMPARE(now.fonts[static_cast<size_t>(now.runs[0].format.font)].name, std::string("Georgia"));
                edit_->undo();
            }
            if (back == 0)
                edit_->undo();  // one step brings all of it back
            if (back > 0)
                UndoAll();
            QVERIFY(!edit_->IsModified());
            QCOMPARE(edit_->Rtf(), rtf);
            QCOMPARE(window_->Text(), ReadRtf(rtf).text);
        }
    }

    void each_step_is_undone_and_done_again_in_other_colors() {
        EditNote();
        edit_->undo();
        size_t state = states_.size() - 2;
        Show(Appearance::Dark);
        QVERIFY(edit_->document()->isUndoAvailable() && edit_->document()->isRedoAvailable());
        for (const Appearance next : {Appearance::Light, Appearance::Dark, Appearance::Light}) {
            while (state > 0) {
                QVERIFY2(Illegible().isEmpty(), qPrintable(Illegible().join("|")));
                edit_->undo();
                QCOMPARE(edit_->Rtf(), states_[--state]);
            }
            QVERIFY(!edit_->IsModified());
            Show(next);
            while (edit_->document()->isRedoAvailable()) {
                edit_->redo();
                QCOMPARE(edit_->Rtf(), states_[++state]);
                QVERIFY2(Illegible().isEmpty(), qPrintable(Illegible().join("|")));
            }
            QCOMPARE(state, states_.size() - 1);
        }
    }

    void typing_goes_on_in_the_new_colors() {
        EditNote();
        edit_->undo();
        edit_->undo();
        edit_->moveCursor(QTextCursor::End);
        Show(Appearance::Dark);
        edit_->moveCursor(QTextCursor::Left);
        window_->Type("typed ");
        PressKeys(edit_, {"Return"});
        QCOMPARE(Illegible(), QStringList());
        TakeShot(window_->frame, "editor-after-dark");
        Show(Appearance::Light);
        QCOMPARE(Illegible(), QStringList());
        // The text as it is shown from the start.
        edit_->Load(edit_->Rtf());
        for (QTextBlock block = edit_->document()->begin(); block.isValid(); block = block.next())
            QVERIFY(block.layout()->formats().isEmpty());
    }

    void a_look_that_is_chosen_for_an_empty_text_stays() {
        Open({});
        edit_->Commands().Characters([](CharFormat& format) { format.halfPoints = 60; });
        window_->Run("center");
        window_->Run("bullets");
        window_->Type("x");
        QCOMPARE(int(Now().runs[0].format.halfPoints), 60);
    }

private:
    void Open(const std::string& rtf, const std::function<void(RichTextEdit&)>& prepare = {}) {
        OpenEditor([&](RichTextEdit& edit) {
            if (prepare)
                prepare(edit);
            edit.Load(rtf);
        });
    }

    std::unique_ptr<QTextDocument> Shown(const std::string& body, const QColor& ground = Qt::white) {
        document_ = ReadRtf(
            "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}}{\\colortbl;\\red0\\green0\\blue0;"
            "\\red255\\green255\\blue0;\\red255\\green255\\blue255;}\\deff0\\fs27 " +
            body + "}");
        return ShowRichText(document_, {ground, 1.0, 96, 400}, theme_);
    }
    static QTextCharFormat FormatAt(const QTextDocument& shown, int position) {
        QTextCursor cursor(const_cast<QTextDocument*>(&shown));
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }

    QTextCursor PictureCursor() const { return edit_->document()->find(QString(QChar::ObjectReplacementCharacter)); }
    QRectF RectOf(QTextFrame* frame) const { return edit_->document()->documentLayout()->frameBoundingRect(frame); }

    /// What isn't shown as wide as the text allows; or, when not `exact`, what is wider than that.
    QString Differences(bool exact) const {
        const QTextBlock block = edit_->document()->findBlock(PictureCursor().selectionStart());
        const double text = edit_->TextWidth();
        const struct {
            const char* name;
            double shown, stored;
        } widths[] = {{"picture", block.layout()->lineAt(0).naturalTextWidth(), kPicture},
                      {"wide table", RectOf(Tables()[0]).width(), kWide},
                      {"narrow table", RectOf(Tables()[1]).width(), kNarrow}};
        QStringList wrong;
        for (const auto& each : widths) {
            const double due = std::min(text, each.stored);
            if (each.shown > (exact ? due : text) + 4 || (exact && each.shown < due - 4))
                wrong.append(QLatin1String(each.name));
        }
        if (edit_->horizontalScrollBar()->maximum() > 0)
            wrong.append(QStringLiteral("scrolls sideways"));
        return wrong.join(QStringLiteral("; "));
    }

    void InSizeDialog(const std::function<void(QDialog&)>& steps) {
        window_->InDialog(
            "pictureDialog", [this] { window_->Run("pictureSize"); }, steps);
    }

    /// How a stretch of text is painted: its format, and what lies over it.
    static QTextCharFormat Painted(const QTextBlock& block, const QTextFragment& fragment) {
        QTextCharFormat look = fragment.charFormat();
        for (const QTextLayout::FormatRange& range : block.layout()->formats())
            if (range.start <= fragment.position() - block.position() &&
                range.start + range.length >= fragment.position() + fragment.length() - block.position())
                look.merge(range.format);
        return look;
    }

    static QColor GroundOf(const QTextBlock& block, const QTextCharFormat& look, const QTextEdit& edit) {
        if (look.background().style() != Qt::NoBrush)
            return look.background().color();
        const QTextCursor cursor(block);
        const QTextTable* const table = cursor.currentTable();
        const QBrush cell = table ? table->cellAt(cursor).format().background() : QBrush();
        return cell.style() != Qt::NoBrush ? cell.color() : edit.palette().color(QPalette::Base);
    }

    /// The words that can't be read where they stand.
    QStringList Illegible() const {
        QStringList words;
        for (QTextBlock block = edit_->document()->begin(); block.isValid(); block = block.next())
            for (auto it = block.begin(); !it.atEnd(); ++it) {
                const QTextCharFormat look = Painted(block, it.fragment());
                const QColor text = look.hasProperty(QTextFormat::ForegroundBrush)
                                        ? look.foreground().color()
                                        : edit_->palette().color(QPalette::Text);
                if (look.objectType() == QTextFormat::NoObject && ContrastOf(text, GroundOf(block, look, *edit_)) < 4.5)
                    words.append(it.fragment().text());
            }
        return words;
    }

    void Show(Appearance appearance) {
        theme_.SetAppearance(appearance);
        QCoreApplication::processEvents();  // windows get their palette
    }

    void Change(const std::function<void()>& change) {
        change();
        states_.push_back(edit_->Rtf());
    }

    /// A text that is changed in four steps, of which one takes coloured words away.
    void EditNote() {
        Open(BytesOf(LORE_TEST_DATA "/editor/looks.rtf"));
        states_ = {edit_->Rtf()};
        edit_->moveCursor(QTextCursor::End);
        Change([this] { window_->Type("late"); });
        Change([this] {
            edit_->moveCursor(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
            edit_->Commands().Characters([](CharFormat& format) {
                format.color = TextColor{0, 0, 110};
                format.background = TextColor{255, 255, 120};
            });
        });
        Change([this] { edit_->textCursor().removeSelectedText(); });
        Change([this] {
            edit_->selectAll();
            PressKeys(edit_, {"Del"});
        });
    }

    std::vector<std::string> states_;  // the text before and after each step
    Document document_;                // of a card
};

}  // namespace lore

QTEST_MAIN(lore::EditorShownTest)
#include "editor_shown_test.moc"
