#include "ui/board_window.h"

namespace lore {

class BoardMouseTest : public BoardWindowTest {
    Q_OBJECT

private slots:
    void SelectsAndOpensByMouse() {
        for (int i = 0; i < 4; ++i)
            board_->AddText("Note");
        Show();
        QSignalSpy selected(view_.get(), &BoardView::SelectionChanged);
        QSignalSpy edit(view_.get(), &BoardView::EditRequested);
        QSignalSpy remove(view_.get(), &BoardView::RemoveRequested);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, Middle(2));
        QCOMPARE(view_->FocusNote(), 3);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, Middle(2));
        QCOMPARE(selected.count(), 1);
        QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, Middle(1));
        QCOMPARE(edit.count(), 1);
        QCOMPARE(edit[0][0].toInt(), 2);
        const QRect card = view_->CardRect(3);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, card.topRight() + QPoint(-18, 24));
        QCOMPARE(remove.count(), 1);
        QCOMPARE(remove[0][0].toInt(), 4);
        QSignalSpy erase(view_.get(), &BoardView::DeleteRequested);
        QTest::mouseMove(view_->viewport(), card.topRight() + QPoint(-66, 24));
        TakeShot(*view_, QStringLiteral("board-hover"));
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, card.topRight() + QPoint(-42, 24));
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, card.topRight() + QPoint(-66, 24));
        QCOMPARE(erase.count(), 1);
        QCOMPARE(erase[0][0].toInt(), 4);
        QCOMPARE(edit.count(), 2);
        QCOMPARE(edit[1][0].toInt(), 4);
    }

    void TheGroundBesideACardBelongsToNone() {
        for (int i = 0; i < 4; ++i)
            board_->AddText("Note");
        Show();
        view_->SetFocusNote(1);
        QSignalSpy selected(view_.get(), &BoardView::SelectionChanged);
        QSignalSpy edit(view_.get(), &BoardView::EditRequested);
        QSignalSpy moved(view_.get(), &BoardView::MoveRequested);
        const QRect card = view_->CardRect(2);
        for (const int x : {card.left() - 1, card.right() + 1}) {
            const QPoint beside(x, card.center().y());
            QVERIFY(view_->viewport()->rect().contains(beside));
            QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, beside);
            QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, beside);
            QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, beside);
            QCOMPARE(MenuAt(beside), QStringList());
            Drag(beside, Middle(0));
            QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, Middle(0));
            Drag(Spot(0), beside);
            QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, beside);
        }
        QCOMPARE(view_->FocusNote(), 1);
        QCOMPARE(selected.count() + edit.count() + moved.count(), 0);
        for (const int x : {card.left(), card.right()}) {
            QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, QPoint(x, card.center().y()));
            QCOMPARE(view_->FocusNote(), 3);
            view_->SetFocusNote(1);
        }
    }

    void DragsACardAndScrollsAtTheEdge() {
        for (int i = 0; i < 5; ++i)
            board_->AddText("Note");
        Show();
        QSignalSpy moved(view_.get(), &BoardView::MoveRequested);
        Drag(Spot(0), Middle(2));
        TakeShot(*view_, QStringLiteral("board-drag"));
        QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, Middle(2));
        QCOMPARE(moved.count(), 1);
        QCOMPARE(moved[0][0].toInt(), 1);
        QCOMPARE(moved[0][1].toInt(), 3);
        Drag(Spot(3), Middle(1));
        QTest::keyClick(view_.get(), Qt::Key_Escape);
        QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, Middle(1));
        QCOMPARE(moved.count(), 1);
        // At the lower edge the list scrolls along.
        for (int i = 0; i < 60; ++i)
            board_->AddText("More");
        view_->Rebuild();
        Drag(Spot(1), QPoint(Spot(1).x(), view_->viewport()->height() + 40));
        QTRY_VERIFY(view_->VisibleRows().first >= 3);
        QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, QPoint(10, 10000));
        QCOMPARE(moved.count(), 2);
        QCOMPARE(moved[1][0].toInt(), 2);
        QVERIFY(moved[1][1].toInt() > 6);
    }

    void PictureButtonsAskForTheirCommand() {
        CNote& note = board_->AddText("With a picture");
        board_->AttachPicture(note, "Tower", 400, 200);
        board_->AttachPicture(note, "Panorama", 3000, 300);
        note.attachments[0].zoom = 0.5;
        note.attachments[0].shift = -5000;
        Show(1000, 1200);
        QSignalSpy command(view_.get(), &BoardView::PictureCommandRequested);
        const QRect picture = view_->AttachmentRect(0, 0);
        QCOMPARE(picture.size(), QSize(200, 100));
        QCOMPARE(picture.left(), view_->CardRect(0).left() + 21);
        // A picture that is wider than the card is brought down to it.
        QCOMPARE(view_->AttachmentRect(0, 1).width(), view_->CardRect(0).width() - 42);
        // The buttons stand above the picture at the right.
        const int right = view_->CardRect(0).right() - 21;
        const PictureCommand expected[] = {PictureCommand::ZoomIn, PictureCommand::ZoomOut, PictureCommand::ShiftLeft,
                                           PictureCommand::ShiftRight, PictureCommand::Restore};
        for (int i = 0; i < 5; ++i) {
            const QPoint at(right - 12 - 24 * (4 - i), picture.top() - 16);
            if (i % 2 == 0)
                QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, at);
            else
                PressTwice(at);
            QVERIFY(command.count() > 0);
            const QList<QVariant> last = command.last();
            QCOMPARE(last[1].toInt(), 0);
            QCOMPARE(last[2].value<PictureCommand>(), expected[i]);
            const auto room = last[3].value<PictureRoom>();
            QCOMPARE(room.width, 400);
            QCOMPARE(room.cardWidth, view_->CardRect(0).width() - 42);
        }
    }

    void APictureOfAnyZoomCanBeDrawn() {
        CNote& note = board_->AddText("With damaged pictures");
        for (const double zoom : {9.9e9, -9.9e8}) {
            for (const QSize size : {QSize(400, 200), QSize(2, 500), QSize(1, 1)}) {
                board_->AttachPicture(note, "Scaled", size.width(), size.height());
                note.attachments.back().zoom = zoom;
            }
        }
        Show(1000, 1200);
        const int room = view_->CardRect(0).width() - 42;
        for (int i = 0; i < 6; ++i) {
            const QRect picture = view_->AttachmentRect(0, i);
            QVERIFY2(picture.width() >= 1 && picture.width() <= room, qPrintable(QString::number(picture.width())));
            QVERIFY2(picture.height() >= 1 && picture.height() <= 4096, qPrintable(QString::number(picture.height())));
        }
        QCOMPARE(view_->AttachmentRect(0, 0).width(), room);
    }

    void MenuHoldsTheEntriesOfWhatIsUnderTheMouse() {
        CNote& note = board_->AddText("With everything");
        board_->AttachPicture(note, "Tower", 400, 200);
        board_->AttachFile(note, "Letter", 3, 10);
        note.attachments.emplace_back();
        note.attachments.back().type = 12;
        note.attachments.back().sourceFile = "https://example.org";
        Show(1000, 1200);
        const auto at = [this](int attachment) { return view_->AttachmentRect(0, attachment).center(); };
        QCOMPARE(MenuAt(at(0)).value(0), QString("Zoom In"));
        QCOMPARE(MenuAt(at(1)), QStringList({"Open Attachment", "Extract Attachment"}));
        QCOMPARE(MenuAt(at(2)), QStringList({"Open Link"}));
        QCOMPARE(MenuAt(Spot(0)), QStringList({"Remove From Current List"}));
        QCOMPARE(MenuAt(QPoint(500, 1190)), QStringList());
        QSignalSpy open(view_.get(), &BoardView::OpenRequested);
        QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, at(2));
        QCOMPARE(open.count(), 1);
        QCOMPARE(open[0][1].toInt(), 2);
    }

private:
    void Drag(const QPoint& from, const QPoint& to) { DragOn(*view_->viewport(), from, to); }

    void PressTwice(const QPoint& point) {
        QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, point);
        QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, point);
    }

    QStringList MenuAt(const QPoint& point) {
        QStringList texts;
        QMenu* const menu = OpenMenuAt(*view_->viewport(), point);
        for (const QAction* action : menu ? menu->actions() : QList<QAction*>())
            if (!action->isSeparator())
                texts.append(action->text());
        if (menu)
            menu->close();
        return texts;
    }
};

}  // namespace lore

Q_DECLARE_METATYPE(lore::PictureCommand)
Q_DECLARE_METATYPE(lore::PictureRoom)

QTEST_MAIN(lore::BoardMouseTest)
#include "board_mouse_test.moc"
