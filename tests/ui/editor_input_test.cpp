#include <functional>

#include "support/read_world.h"
#include "ui/board_fixture.h"
#include "ui/editor/block_place.h"
#include "ui/editor/picture_frame.h"
#include "ui/editor_window.h"
#include "ui/picture_bytes.h"

namespace lore {
namespace {

QByteArray Address(const QByteArray& bytes, const char* form) {
    return QByteArray("data:image/") + form + ";base64," + bytes.toBase64();
}

}  // namespace

/// What comes into the editor by other ways than keys: drops, pastes, dialogs and the corner of a picture.
class EditorInputTest : public QObject {
    Q_OBJECT

private slots:
    void init() {
        theme_ = std::make_unique<Theme>(*qApp, Appearance::Light);
        window_ = std::make_unique<EditorWindow>(*theme_);
        edit_ = window_->edit;
        QVERIFY(QTest::qWaitForWindowExposed(&window_->frame));
    }
    void cleanup() { window_.reset(); }
    void DropsLandWhereTheyFall() {
        QTest::keyClicks(edit_, "begin end");
        QTextCursor middle(edit_->document());
        middle.setPosition(6);
        const QPoint at = edit_->cursorRect(middle).center();
        QMimeData words;
        words.setHtml("<b>bold</b> ");
        words.setText("bold ");
        Drop(words, at);
        QVERIFY(QString::fromStdString(Now().text).startsWith("begin bold"));
        const Document dropped = Now();
        QVERIFY(
            std::any_of(dropped.runs.begin(), dropped.runs.end(), [](const TextRun& run) { return run.format.bold; }));

        QMimeData picture;
        picture.setImageData(Filled(30, 20));
        Drop(picture, at);
        QCOMPARE(Now().pictures.size(), size_t{1});

        QTemporaryDir folder;
        const QString png = folder.filePath("a.png"), text = folder.filePath("b.txt");
        PutBytes(png.toStdString(), Encoded(Filled(40, 20)).toStdString());
        PutBytes(text.toStdString(), "words");
        QSignalSpy others(edit_, &RichTextEdit::filesDropped);
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(png), QUrl::fromLocalFile(text)});
        Drop(files, at);
        QCOMPARE(Now().pictures.size(), size_t{2});
        QCOMPARE(others.size(), 1);
        QCOMPARE(others[0][0].toStringList(), QStringList{text});
        QVERIFY(QString::fromStdString(Now().text).endsWith("end"));
        while (edit_->document()->isUndoAvailable())
            edit_->undo();
        QCOMPARE(Now().text, std::string());
    }

    void PicturesOfPastedPagesComeIn() {
        const QByteArray bmp = Encoded(Filled(12, 8, Qt::red), "BMP");
        auto* const page = new QMimeData;
        page->setHtml("<p>one <img width=50 src=\"" + QString::fromLatin1(Address(Encoded(Filled(100, 40)), "png")) +
                      "\"> two <img src=\"" + QString::fromLatin1(Address(bmp, "bmp")) +
                      "\"><img alt=\"three\" src=\"data:image/png;base64,bm8gcGljdHVyZQ==\"></p>");
        Paste(page);
        const Document now = Now();
        QCOMPARE(now.text, std::string("one  two three"));
        QCOMPARE(now.pictures.size(), size_t{2});
        QCOMPARE(now.pictures[0].bytes, Encoded(Filled(100, 40)).toStdString());
        QCOMPARE(now.pictures[0].goal_width, 750);
        QCOMPARE(int(now.pictures[1].kind), int(PictureKind::kPng));
        QCOMPARE(now.pictures[1].width, 12);
        edit_->undo();
        QCOMPARE(Now().text, std::string());
        QVERIFY(Now().pictures.empty());
    }

    void ACopiedPictureComesInsteadOfItsDescription() {
        for (const QString& words : {QString(), QStringLiteral("a ")}) {
            auto* const copied = new QMimeData;
            copied->setHtml("<p>" + words + "<img src=\"https://far.example/t.png\" alt=\"tower\">");
            copied->setImageData(Filled(12, 8, Qt::red));
            Paste(copied);
            QCOMPARE(Now().text, words.isEmpty() ? std::string() : std::string("a tower"));
            QCOMPARE(Now().pictures.size(), size_t{words.isEmpty() ? 1u : 0u});
            edit_->undo();
        }
    }

    void PicturesOfPastedTextsAreHeldToTheSameSize() {
        auto* const page = new QMimeData;
        page->setHtml("<img src=\"" + QString::fromLatin1(Address(Encoded(Filled(3200, 100)), "png")) + "\">");
        Paste(page);
        auto* const text = new QMimeData;
        text->setData("text/rtf", "{\\rtf1 a{\\pict\\pngblip\\picw2400\\pich100\\picwgoal60000\\pichgoal2500 " +
                                      Encoded(Filled(2400, 100)).toHex() + "}b}");
        Paste(text);
        const Document now = Now();
        QCOMPARE(now.pictures.size(), size_t{2});
        for (const Picture& picture : now.pictures) {
            QCOMPARE(picture.width, 1600);
            QVERIFY(picture.goal_width <= edit_->TextWidth() * 15);
            QVERIFY(picture.goal_height > 0 && picture.goal_width > 10 * picture.goal_height);
        }
    }

    void ACornerDragKeepsTheShape() {
        QVERIFY(edit_->InsertPictureBytes(Encoded(Filled(200, 100))));
        window_->SelectPicture();
        const PictureFrame frame(*edit_, *theme_);
        const QPoint corner = frame.RectOf(edit_->SelectedPicture()).bottomRight().toPoint();
        const auto drag = [this, corner](const QPoint& by) {
            DragOn(*edit_->viewport(), corner, corner + by);
            TakeShot(window_->frame, QStringLiteral("editor-picture-drag"));
            QTest::mouseRelease(edit_->viewport(), Qt::LeftButton, {}, corner + by);
        };
        drag({-100, -30});
        QCOMPARE(Now().pictures[0].goal_width / 15, 140);
        QCOMPARE(Now().pictures[0].goal_height / 15, 70);
        QCOMPARE(Now().pictures[0].bytes, Encoded(Filled(200, 100)).toStdString());
        edit_->undo();
        QCOMPARE(Now().pictures[0].goal_width / 15, 200);
        window_->SelectPicture();
        drag({5000, 0});
        QVERIFY(Now().pictures[0].goal_width <= edit_->TextWidth() * 15);
    }

    void DialogsAskForLinksTablesAndSizes() {
        const auto run = [this](const char* name) { return [this, name] { window_->Run(name); }; };
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) {
            const QList<QLineEdit*> fields = dialog.findChildren<QLineEdit*>();
            QCOMPARE(fields.size(), 2);
            fields[0]->setText("a lamp");
            fields[1]->setText("lamps.example");
        });
        QCOMPARE(Now().text, std::string("a lamp"));
        QCOMPARE(Now().links.size(), size_t{1});
        QCOMPARE(Now().links[0], std::string("https://lamps.example"));
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) {
            QCOMPARE(dialog.findChildren<QLineEdit*>().size(), 1);
            dialog.reject();
        });
        QCOMPARE(Now().links.size(), size_t{1});
        window_->InDialog("linkDialog", run("link"), [](QDialog& dialog) { Press(dialog, "Remove link"); });
        QVERIFY(Now().links.empty() || Now().runs[0].format.link < 0);
        QCOMPARE(Now().text, std::string("a lamp"));

        edit_->clear();
        window_->InDialog(
            "tableDialog", [this] { emit window_->bar->findChild<QAction*>("insertTable")->triggered(); },
            [](QDialog& dialog) {
                const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
                numbers[0]->setValue(4);
                numbers[1]->setValue(2);
            });
        QCOMPARE(Now().rows.size(), size_t{2});
        const Document table = Now();
        QCOMPARE(table.row_formats[table.rows[0].format].cells.size(), size_t{4});

        edit_->clear();
        QVERIFY(edit_->InsertPictureBytes(Encoded(Filled(200, 100))));
        window_->SelectPicture();
        window_->InDialog("pictureDialog", run("pictureSize"), [](QDialog& dialog) {
            const QList<QSpinBox*> numbers = dialog.findChildren<QSpinBox*>();
            numbers[1]->setValue(30);
            QCOMPARE(numbers[0]->value(), 60);
        });
        QCOMPARE(Now().pictures[0].goal_width, 60 * 15);
        QCOMPARE(Now().pictures[0].goal_height, 30 * 15);
    }

    void EnterInARowWithoutAGridStaysInIt() {
        // A row whose cells no row format describes.
        edit_->Load("{\\rtf1 before\\par\\pard\\intbl first\\cell second\\cell\\row\\pard after\\par}");
        const Document before = Now();
        QTextCursor caret = edit_->document()->find("first");
        caret.setPosition(caret.selectionStart() + 2);
        edit_->setTextCursor(caret);
        QTest::keyClick(edit_, Qt::Key_Return);
        const Document now = Now();
        const auto ends = [](const Document& document, ParagraphEnd end) {
            return std::count_if(document.paragraphs.begin(), document.paragraphs.end(),
                                 [end](const Paragraph& paragraph) { return paragraph.ended_by == end; });
        };
        QCOMPARE(ends(now, ParagraphEnd::kCell), ends(before, ParagraphEnd::kCell));
        QCOMPARE(ends(now, ParagraphEnd::kRow), ends(before, ParagraphEnd::kRow));
        QVERIFY(now.text.find("fi\nrst") != std::string::npos);
        edit_->undo();
        QCOMPARE(Now().text, before.text);
    }

    void MarksOfListsFromRightToLeftStandAtTheRight() {
        edit_->Load(
            "{\\rtf1\\pard{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}\\fi-360\\li720 left\\par\\pard\\rtlpar"
            "{\\*\\pn\\pnlvlbody\\pndec{\\pntxta.}}\\fi-360\\ri720\\qr \\u1513?\\u1500?\\u1493?\\u1501?\\par}");
        edit_->clearFocus();
        TakeShot(window_->frame, QStringLiteral("editor-rtl-list"));
        const QImage shown = edit_->viewport()->grab().toImage();
        const QColor ground = shown.pixelColor(1, 1);
        const qreal scale = shown.devicePixelRatio();
        const auto inked = [&](double left, double right, const QRectF& line) {
            for (int y = int(line.top() * scale); y < int(line.bottom() * scale); ++y) {
                for (int x = int(std::max(left, 0.0) * scale); x < int(right * scale) && x < shown.width(); ++x) {
                    if (shown.pixelColor(x, y) != ground)
                        return true;
                }
            }
            return false;
        };
        for (QTextBlock block = edit_->document()->begin(); block.isValid() && block.length() > 1;
             block = block.next()) {
            const QTextLine line = block.layout()->lineAt(0);
            const QRectF text = line.naturalTextRect().translated(BlockOrigin(*edit_, block));
            const bool mirrored = block.text().at(0).isLetter() && block.text().at(0).direction() == QChar::DirR;
            QCOMPARE(inked(0, text.left() - 2, text), !mirrored);
            QCOMPARE(inked(text.right() + 2, edit_->viewport()->width(), text), mirrored);
        }
    }

private:
    Document Now() const { return window_->Now(); }
    void Drop(const QMimeData& mime, const QPoint& at) {
        QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit_->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDragMoveEvent move(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit_->viewport(), &move);
        QDropEvent drop(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit_->viewport(), &drop);
        QVERIFY(drop.isAccepted());
    }

    void Paste(QMimeData* mime) {
        QApplication::clipboard()->setMimeData(mime);
        edit_->paste();
    }

    std::unique_ptr<Theme> theme_;
    std::unique_ptr<EditorWindow> window_;
    RichTextEdit* edit_ = nullptr;
};

}  // namespace lore

QTEST_MAIN(lore::EditorInputTest)
#include "editor_input_test.moc"
