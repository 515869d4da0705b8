#include <QTextTable>
#include <functional>

#include "ui/board_fixture.h"
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
           "}\\par\\trowd\\cellx3000\\cellx9000\\cellx18000\\intbl Chapter\\cell b\\cell c\\cell\\row\\pard "
           "between\\par"
           "\\trowd\\cellx1500\\cellx3000\\intbl d\\cell e\\cell\\row\\pard after}";
}

}  // namespace

/// What a note shows follows the width of the window; what it stores doesn't.
class EditorWidthTest : public QObject {
    Q_OBJECT

private slots:
    void init() { theme_ = std::make_unique<Theme>(*qApp, Appearance::Light); }
    void cleanup() { window_.reset(); }
    void ShownWidthsFollowTheWindow() {
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
        const Document now = window_->Now();
        QCOMPARE(now.pictures[0].goal_width, 10200);
        QCOMPARE(now.pictures[0].scale_x, 80);
        QCOMPARE(now.row_formats, ReadRtf(Note()).row_formats);
        edit_->undo();
        QVERIFY(!edit_->IsModified());
        QCOMPARE(edit_->Rtf(), Note());
    }

    void TheSizeOfAPictureIsTheStoredOne() {
        Open(Note());
        window_->frame.resize(420, 640);
        QTRY_VERIFY(Differences(true).isEmpty());
        edit_->setTextCursor(Picture());
        const auto offered = [](QDialog& dialog) {
            const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
            QCOMPARE(numbers[0]->value(), 544);
            QCOMPARE(numbers[1]->value(), 349);
        };
        InSizeDialog(offered);
        // Neither does a click on the corner change it.
        const PictureFrame frame(*edit_, *theme_);
        QTest::mouseClick(edit_->viewport(), Qt::LeftButton, {}, frame.RectOf(Picture()).bottomRight().toPoint());
        QVERIFY(!edit_->IsModified() && !edit_->document()->isUndoAvailable());
        QCOMPARE(edit_->Rtf(), Note());

        edit_->setTextCursor(Picture());
        InSizeDialog([&](QDialog& dialog) {
            offered(dialog);
            dialog.findChildren<QSpinBox*>()[0]->setValue(272);
        });
        const lore::Picture changed = window_->Now().pictures[0];
        QCOMPARE(changed.goal_width, 272 * 15);
        QCOMPARE(changed.goal_height, 2616);
        QCOMPARE(changed.scale_x, 100);
        QCOMPARE(changed.bytes, ReadRtf(Note()).pictures[0].bytes);
        edit_->undo();
        QCOMPARE(edit_->Rtf(), Note());
        QVERIFY(!window_->bar->Command("pictureSize")->shortcut().isEmpty());
    }

    void TablesStayWithinTheirPlace() {
        Open({});
        edit_->InsertTableHere(2, 3);
        const auto rightEdge = [this] {
            const Document now = window_->Now();
            return now.row_formats[now.rows[0].format].cells.back().right_edge;
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

    void AnEmptiedTextLooksLikeANewOne_data() {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<int>("back");  // presses of the key; 0 for all at once
        const QByteArray word = "{\\rtf1{\\fonttbl{\\f0 Arial;}}\\f0\\fs40 word}";
        QTest::newRow("all deleted") << word << 0;
        QTest::newRow("backspaced") << word << 4;
        QTest::newRow("without a font") << QByteArray("{\\rtf1 word\\par\\b more}") << 0;
        QTest::newRow("new") << QByteArray() << -1;
        QTest::newRow("with a table") << QByteArray::fromStdString(Note()) << 0;
    }

    void AnEmptiedTextLooksLikeANewOne() {
        QFETCH(QByteArray, rtf);
        QFETCH(int, back);
        Open(rtf.toStdString(), [](RichTextEdit& edit) { edit.SetDefaultFont("Georgia", 30); });
        if (back == 0) {
            window_->Press(Qt::Key_A, Qt::ControlModifier);
            window_->Press(Qt::Key_Delete);
        }
        edit_->moveCursor(QTextCursor::End);
        for (int i = 0; i < back; ++i)
            window_->Press(Qt::Key_Backspace);
        for (int round = 0; round < 2; ++round) {
            QVERIFY(edit_->document()->isEmpty());
            window_->Press(Qt::Key_Home);
            QCOMPARE(window_->bar->findChild<QComboBox*>("fontList")->currentText(), QStringLiteral("Georgia"));
            QCOMPARE(window_->bar->findChild<QComboBox*>("sizeList")->currentText(), QStringLiteral("15"));
            window_->Type("typed");
            const std::string saved = edit_->Rtf();
            const Document now = ReadRtf(saved);
            QCOMPARE(now.text, std::string("typed"));
            QCOMPARE(now.runs.size(), size_t{1});
            QCOMPARE(int(now.runs[0].format.half_points), 30);
            QVERIFY(now.runs[0].format.font >= 0);
            QCOMPARE(now.fonts[static_cast<size_t>(now.runs[0].format.font)].name, std::string("Georgia"));
            QVERIFY(saved.find("\\fs30") != std::string::npos);
            edit_->undo();
        }
        if (back == 0)
            edit_->undo();  // one step brings all of it back
        while (back > 0 && edit_->document()->isUndoAvailable())
            edit_->undo();
        QVERIFY(!edit_->IsModified());
        QCOMPARE(edit_->Rtf(), rtf.toStdString());
        QCOMPARE(window_->Text(), ReadRtf(rtf.toStdString()).text);
    }

    void ALookThatIsChosenForAnEmptyTextStays() {
        Open({});
        edit_->Commands().Characters([](CharFormat& format) { format.half_points = 60; });
        window_->Run("center");
        window_->Run("bullets");
        window_->Type("x");
        QCOMPARE(int(window_->Now().runs[0].format.half_points), 60);
    }

private:
    void Open(const std::string& rtf, const std::function<void(RichTextEdit&)>& prepare = {}) {
        window_ = std::make_unique<EditorWindow>(*theme_, [&](RichTextEdit& edit) {
            if (prepare)
                prepare(edit);
            edit.Load(rtf);
        });
        edit_ = window_->edit;
        QVERIFY(QTest::qWaitForWindowExposed(&window_->frame));
    }

    QTextCursor Picture() const { return edit_->document()->find(QString(QChar::ObjectReplacementCharacter)); }
    QList<QTextTable*> Tables() const {
        QList<QTextTable*> tables;
        for (QTextFrame* const frame : edit_->document()->rootFrame()->childFrames())
            tables.append(qobject_cast<QTextTable*>(frame));
        return tables;
    }
    QRectF RectOf(QTextFrame* frame) const { return edit_->document()->documentLayout()->frameBoundingRect(frame); }

    /// What isn't shown as wide as the text allows; or, when not `exact`, what is wider than that.
    QString Differences(bool exact) const {
        const QTextBlock block = edit_->document()->findBlock(Picture().selectionStart());
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
                wrong.append(QStringLiteral("%1 %2 of %3 in %4")
                                 .arg(QLatin1String(each.name))
                                 .arg(each.shown)
                                 .arg(each.stored)
                                 .arg(text));
        }
        if (edit_->horizontalScrollBar()->maximum() > 0)
            wrong.append(QStringLiteral("scrolls sideways"));
        return wrong.join(QStringLiteral("; "));
    }

    void InSizeDialog(const std::function<void(QDialog&)>& steps) {
        window_->InDialog(
            "pictureDialog", [this] { window_->Run("pictureSize"); }, steps);
    }

    std::unique_ptr<Theme> theme_;
    std::unique_ptr<EditorWindow> window_;
    RichTextEdit* edit_ = nullptr;
};

}  // namespace lore

QTEST_MAIN(lore::EditorWidthTest)
#include "editor_width_test.moc"
