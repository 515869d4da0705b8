#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "bibliography/citation_spans.h"
#include "ui/board_window.h"
#include "ui/card_emphasis.h"

namespace lore {

/// A list whose estimated heights are more than an int can hold. Cards that are laid out turn out to be small.
class TallBoard : public MemoryBoard {
public:
    static constexpr int kRows = 5000;

    TallBoard() {
        notes.resize(2);
        notes[0].plainText.assign(size_t{4} << 20, 'x');
        notes[1].plainText = "Note";
    }
    int Count() const override { return kRows; }
    int32_t IDAt(int row) const override { return row + 1; }
    int RowOf(int32_t noteId) const override { return noteId > 0 && noteId <= kRows ? noteId - 1 : -1; }
    const CNote& NoteAt(int) const override { return notes[0]; }
    const CNote& ShownNoteAt(int) const override { return notes[1]; }
};

void AddTexts(const QMenu& menu, QStringList& texts) {
    for (const QAction* const action : menu.actions()) {
        texts.append(action->text());
        if (action->menu())
            AddTexts(*action->menu(), texts);
    }
}

class BoardTest : public BoardWindowTest {
    Q_OBJECT

private slots:
    void ShowsCardsOfAllKinds_data() {
        QTest::addColumn<double>("zoom");
        QTest::addColumn<int>("width");
        QTest::addColumn<double>("textSize");
        QTest::newRow("board") << 1.0 << 1100 << 1.0;
        QTest::newRow("board-zoomed") << 2.0 << 1100 << 1.0;
        QTest::newRow("board-narrow") << 1.0 << 420 << 1.0;
        QTest::newRow("board-large-text") << 1.0 << 1100 << 2.0;
        QTest::newRow("board-top") << 1.25 << 900 << 1.0;
    }

    void ShowsCardsOfAllKinds() {
        QFETCH(double, zoom);
        QFETCH(int, width);
        QFETCH(double, textSize);
        const QFont before = QApplication::font();
        QFont font = before;
        font.setPointSizeF(font.pointSizeF() * textSize);
        QApplication::setFont(font);
        FillSampleBoard(*board_);
        BoardOptions options;
        options.zoom = zoom;
        options.keyWordsOnTop = options.sourcesOnTop = width == 900;
        view_->SetOptions(options);
        Show(width, 2400);
        view_->SetFocusNote(3);
        QTest::mouseMove(view_->viewport(), Middle(1));
        view_->FinishPictures();
        const auto [first, end] = view_->VisibleRows();
        QCOMPARE(first, 0);
        QVERIFY(end >= 4 || zoom > 1.0 || width < 500);
        BothLooks{*theme_}.Shoot(*view_, QString::fromLatin1(QTest::currentDataTag()));
        QApplication::setFont(before);
        // Cards stand in the middle, one directly below the other, and are never wider than is readable.
        for (int row = 0; row + 1 < end; ++row)
            QCOMPARE(view_->CardRect(row).bottom() + 1, view_->CardRect(row + 1).top());
        const QRect card = view_->CardRect(0);
        QVERIFY(card.width() <= 900);
        QVERIFY(std::abs(card.left() - (view_->viewport()->width() - 1 - card.right())) <= 1);
    }

    void ShowsTheFirstStepWhenTheListIsEmpty() {
        view_->SetEmptyState(
            {tr("No notes in the list"),
             tr("Search the NoteBook, or choose a category, a source, a key word or a color at the left."),
             tr("Show all notes"),
             {}});
        Show();
        QSignalSpy step(view_.get(), &BoardView::FirstStepRequested);
        BothLooks{*theme_}.Shoot(*view_, "board-empty");
        auto* button = view_->findChild<QPushButton*>();
        QVERIFY(button && button->isVisible());
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(step.count(), 1);
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(view_->FocusNote(), -1);
        board_->AddText("The first note");
        view_->Rebuild();
        QVERIFY(!button->isVisible());
    }

    void StacksTheBlocksOfACardInTheChosenOrder() {
        board_->AddText("");  // 17 pixels for a note that has nothing
        CNote& words = board_->AddText("");
        words.keyWords = ", ,reef,,";
        board_->AddText("").keyWords = "   ";  // no key word at all
        Show();
        const int nothing = view_->CardRect(0).height();
        QCOMPARE(nothing, 17);
        QCOMPARE(view_->CardRect(1).height(), 17 + 32 + 8);
        QCOMPARE(view_->CardRect(2).height(), 17);
        BoardOptions options;
        options.keyWordsOnTop = true;
        options.zoom = 1.15;
        view_->SetOptions(options);
        QCOMPARE(view_->CardRect(1).height(), 17 + 36 + 8 + 17);
        options.showKeyWords = false;
        view_->SetOptions(options);
        QCOMPARE(view_->CardRect(1).height(), 17);
    }

    void TitlesInItalicsAreNotBold() {
        CSource source;
        source.FormattedText = "A title";
        source.SpanStarts = {0};
        source.SpanEnds = {6};
        constexpr std::array kBold = {false, false, true, false, true, true, false, true};
        for (int32_t kind = kItalic; kind <= kBoldItalicUnderline; ++kind) {
            source.SpanKinds = {kind};
            const QTextCharFormat format = CitationEmphasis(source).first().format;
            QFont font("Arial");
            font.setWeight(QFont::Weight(format.fontWeight()));
            QFont bold = font;
            bold.setWeight(QFont::Bold);
            const bool isBold =
                QFontMetricsF(font).horizontalAdvance("A title") == QFontMetricsF(bold).horizontalAdvance("A title");
            QCOMPARE(isBold, kBold[size_t(kind)]);
        }
    }

    void AListThatGrewShorterUnseenIsShownAnew() {
        const auto shorten = [this](const std::function<void()>& next) {
            while (board_->Count() < 60)
                board_->AddText("Text");
            view_->Rebuild();
            view_->SetFocusNote(50);
            board_->notes.resize(2);
            next();
            QCOMPARE(view_->VisibleRows(), (std::pair{0, 2}));
            QCOMPARE(view_->FocusNote(), -1);
        };
        Show();
        shorten([this] { view_->viewport()->repaint(); });
        shorten([this] { view_->resize(900, 640); });
        shorten([this] { QTest::mouseMove(view_->viewport(), QPoint(300, 300)); });
        shorten([this] { Wheel(-120); });
        shorten([] { QTest::qWait(20); });
        shorten([this] { view_->verticalScrollBar()->setValue(0); });
    }

    void ASavedNoteComesIntoSightWithoutALongTurn() {
        for (int i = 0; i < 400; ++i)
            board_->AddText("Text");
        Show();
        QSignalSpy shown(view_.get(), &BoardView::SavedShown);
        for (const int32_t id : {300, 120, 400, 399, 1}) {
            board_->notes[size_t(id) - 1].plainText = "Changed " + std::string(size_t(id) * 2, 'x');
            view_->RebuildAtSavedSoon(id);
            int most = 0;
            for (shown.clear(); shown.isEmpty();) {
                const int before = board_->laidOut;
                QCoreApplication::processEvents();
                most = std::max(most, board_->laidOut - before);
            }
            QVERIFY2(most <= 4, qPrintable(QString::number(most)));  // of fourteen in sight; it may be two turns
            QCOMPARE(view_->FocusNote(), id);
            const QRect card = view_->CardRect(id - 1), seen = view_->viewport()->rect();
            QVERIFY2(seen.top() <= card.top() && card.bottom() <= seen.bottom(),
                     qPrintable(QStringLiteral("%1: %2 to %3").arg(id).arg(card.top()).arg(card.bottom())));
        }
        // One that is saved before the last one has come into sight takes its place.
        view_->RebuildAtSavedSoon(200);
        QCoreApplication::processEvents();
        view_->RebuildAtSavedSoon(250);
        shown.clear();
        QVERIFY(shown.wait());
        QCOMPARE(view_->FocusNote(), 250);
        QVERIFY(view_->viewport()->rect().contains(view_->CardRect(249)));
    }

    void ScrollingMovesCardsByTheStepWhateverTheirHeights() {
        QRandomGenerator random(3);
        for (int i = 0; i < 300; ++i)
            board_->AddText(std::string(size_t(random.bounded(3000)), 'x') +
                            std::string(size_t(random.bounded(30)), '\n'));
        Show();
        for (int step = 0; step < 120; ++step) {
            const int delta = step < 60 || step % 3 == 0 ? -120 : 120;
            const auto [first, end] = view_->VisibleRows();
            const int before = view_->CardRect(end - 1).top();
            Wheel(delta);
            QCOMPARE(view_->CardRect(end - 1).top(), before + delta);
            QVERIFY(view_->CardRect(view_->VisibleRows().first).top() <= 0);
            Q_UNUSED(first);
        }
        // From a place that was never measured, upwards.
        view_->SetFocusNote(250);
        for (int step = 0; step < 60; ++step) {
            const int row = view_->VisibleRows().first;
            const int before = view_->CardRect(row).top();
            Wheel(120);
            QCOMPARE(view_->CardRect(row).top(), before + 120);
        }
    }

    void GoesOnBeyondWhatTheScrollBarCanCount() {
        view_.reset();
        board_ = std::make_unique<TallBoard>();
        view_ = std::make_unique<BoardView>(*board_, *theme_);
        Show();
        constexpr int kLast = TallBoard::kRows;
        view_->SetFocusNote(kLast - 60);
        QCOMPARE(view_->verticalScrollBar()->value(), std::numeric_limits<int>::max());
        const int row = view_->VisibleRows().first + 1;
        const int top = view_->CardRect(row).top();
        // Two steps down and back.
        for (const auto& [delta, moved] : {std::pair(-120, -120), {-120, -240}, {120, -120}, {120, 0}}) {
            Wheel(delta);
            QCOMPARE(view_->CardRect(row).top(), top + moved);
        }
        const int before = view_->VisibleRows().first;
        Wheel(-30 * 120);
        QVERIFY(view_->VisibleRows().first >= before);
        view_->SetFocusNote(kLast - 60);
        for (int i = 0, seen = view_->VisibleRows().first; i < 60; ++i) {
            QTest::keyClick(view_.get(), Qt::Key_PageDown);
            QVERIFY(view_->VisibleRows().first >= seen);
            seen = view_->VisibleRows().first;
        }
        QCOMPARE(view_->FocusNote(), kLast);
        QCOMPARE(view_->CardRect(kLast - 1).bottom() + 1, view_->viewport()->height());
        const int end = view_->VisibleRows().first;
        QTest::keyClick(view_.get(), Qt::Key_PageUp);
        QVERIFY(view_->VisibleRows().first < end && view_->VisibleRows().first > kLast - 60);
        QVERIFY(view_->FocusNote() < kLast);
    }

    void LaysOutCardsAheadWhileNothingHappens() {
        for (int i = 0; i < 200; ++i)
            board_->AddText("One\n\n\n\n\nsix lines, which no count of letters tells");
        Show();
        const auto isMeasured = [this](int row) {
            return view_->CardRect(row).height() == view_->CardRect(0).height();
        };
        for (const int focus : {1, 100}) {
            view_->SetFocusNote(focus);
            const auto [first, end] = view_->VisibleRows();
            QTRY_VERIFY(isMeasured(end) && isMeasured(end + 2));
            QTRY_VERIFY(first == 0 || (isMeasured(first - 1) && isMeasured(first - 2)));
            QVERIFY(!isMeasured(199));
            QCOMPARE(view_->VisibleRows(), std::make_pair(first, end));
        }
        // Taking a note out right behind what is in sight leaves no row beyond the end.
        board_->notes.resize(size_t(view_->VisibleRows().second));
        view_->Rebuild();
        QTest::qWait(20);
        QVERIFY(view_->VisibleRows().second <= board_->Count());
    }

    void ReachesTheLastCardFromAnywhere() {
        for (int i = 0; i < 500; ++i)
            board_->AddText(std::string(size_t(i) * 7 % 1800, 'y'));
        Show();
        view_->verticalScrollBar()->setValue(view_->verticalScrollBar()->maximum());
        QCOMPARE(view_->VisibleRows().second, 500);
        QCOMPARE(view_->CardRect(499).bottom() + 1, view_->viewport()->height());
        QCOMPARE(view_->verticalScrollBar()->value(), view_->verticalScrollBar()->maximum());
        view_->verticalScrollBar()->setValue(0);
        QCOMPARE(view_->CardRect(0).top(), 0);
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(view_->FocusNote(), 500);
        QCOMPARE(view_->CardRect(499).bottom() + 1, view_->viewport()->height());
    }

    void KeysMoveTheFocusThroughTheList() {
        for (int i = 0; i < 50; ++i)
            board_->AddText(i == 2 ? std::string(20000, 'z') : "Short");
        Show();
        const auto press = [this](Qt::Key key) {
            QTest::keyClick(view_.get(), key);
            return view_->FocusNote();
        };
        QCOMPARE(press(Qt::Key_Down), 1);
        QCOMPARE(press(Qt::Key_Down), 2);
        QCOMPARE(press(Qt::Key_Down), 3);
        // The third card is higher than the board: the key scrolls through it before it goes on.
        const int top = view_->CardRect(2).top();
        QCOMPARE(press(Qt::Key_Down), 3);
        QVERIFY(view_->CardRect(2).top() < top);
        for (int i = 0; i < 100 && view_->FocusNote() == 3; ++i)
            press(Qt::Key_Down);
        QCOMPARE(view_->FocusNote(), 4);
        QCOMPARE(press(Qt::Key_Home), 1);
        QCOMPARE(press(Qt::Key_Up), 1);
        for (int i = 0; i < 60; ++i)
            press(Qt::Key_PageDown);
        QCOMPARE(view_->FocusNote(), 50);
        for (int i = 0; i < 60; ++i)
            press(Qt::Key_PageUp);
        QCOMPARE(view_->FocusNote(), 1);
    }

    void KeepsTheFocusNoteInPlaceWhenTheListChanges() {
        for (int i = 0; i < 100; ++i)
            board_->AddText(std::string(size_t(i % 7) * 400, 'w') + " note");
        Show();
        view_->SetFocusNote(60);
        const int top = view_->CardRect(59).top();
        std::reverse(board_->notes.begin(), board_->notes.end());
        view_->Rebuild();
        QCOMPARE(view_->FocusNote(), 60);
        QCOMPARE(view_->CardRect(board_->RowOf(60)).top(), top);
        QSignalSpy selected(view_.get(), &BoardView::SelectionChanged);
        board_->notes.erase(board_->notes.begin() + board_->RowOf(60));
        view_->Rebuild();
        QCOMPARE(view_->FocusNote(), -1);
        QCOMPARE(selected.count(), 1);
    }

    void TellsScreenReadersOfItsCards() {
        FillSampleBoard(*board_);
        Show();
        view_->SetFocusNote(2);
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(view_.get());
        QVERIFY(list);
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Note board"));
        QCOMPARE(list->childCount(), board_->Count());
        QAccessibleInterface* card = list->child(1);
        QCOMPARE(card->role(), QAccessible::ListItem);
        QVERIFY(card->text(QAccessible::Name).startsWith(QStringLiteral("A picture, files")));
        QVERIFY(card->text(QAccessible::Name).contains(QStringLiteral("Attachment: Waves.mp3")));
        QVERIFY(card->state().selected);
        QVERIFY(!list->child(0)->state().selected);
        QVERIFY(list->child(0)->text(QAccessible::Name).contains(QStringLiteral("Category: Lighthouses, England")));
        QCOMPARE(list->indexOfChild(card), 1);
        QCOMPARE(list->focusChild(), card);
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(list->indexOfChild(list->focusChild()), board_->Count() - 1);
    }

    void TellsScreenReadersWhatStandsOnAnEmptyBoard() {
        view_->SetEmptyState({"Nothing here", "Search the NoteBook.", "Show all notes", {}});
        Show();
        QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(view_.get());
        QCOMPARE(list->text(QAccessible::Description), QStringLiteral("Nothing here\nSearch the NoteBook."));
        QCOMPARE(list->childCount(), 1);
        QAccessibleInterface* const pane = list->child(0);
        QVERIFY(pane && !list->child(1) && !list->focusChild());
        QCOMPARE(list->indexOfChild(pane), 0);
        QCOMPARE(pane->parent(), list);
        QStringList texts;
        for (int i = 0; i < pane->childCount(); ++i)
            texts.append(pane->child(i)->text(QAccessible::Name));
        for (const char* const text : {"Nothing here", "Search the NoteBook.", "Show all notes"})
            QVERIFY2(texts.contains(text), text);
        view_->SetEmptyState({"No hits", {}, {}, {}});
        QCOMPARE(list->text(QAccessible::Description), QStringLiteral("No hits"));
        QCOMPARE(pane->text(QAccessible::Name), QStringLiteral("No hits"));
        board_->AddText("The first note");
        view_->Rebuild();
        QCOMPARE(list->childCount(), 1);
        QCOMPARE(list->child(0)->role(), QAccessible::ListItem);
        QCOMPARE(list->indexOfChild(pane), -1);
        QVERIFY(list->text(QAccessible::Description).isEmpty());
    }

    void OffersEveryCommandToTheKeyboard() {
        FillSampleBoard(*board_);
        Show();
        QList<BoardCommand> commands;
        for (const BoardCommand command : NoteCommands(true))
            commands.append(command);
        view_->SetNoteCommands(commands);
        view_->SetOtherNoteBooks({"Thesis & more"});
        QStringList offered;
        for (int row = 0; row < board_->Count(); ++row) {
            view_->SetFocusNote(board_->IDAt(row));
            QMenu* const menu = OpenMenuAt(*view_->viewport(), QPoint(5, 5), QContextMenuEvent::Keyboard);
            QVERIFY(menu);
            AddTexts(*menu, offered);
            menu->close();
        }
        for (int i = 0; i <= int(BoardCommand::DeleteNote); ++i) {
            const std::string_view text = BoardCommandText(BoardCommand(i));
            QVERIFY2(offered.contains(QString::fromLatin1(text.data(), qsizetype(text.size()))), text.data());
        }
        QVERIFY(offered.contains("Thesis && more"));
    }

    void ScrollingTwentyThousandNotesLaysOutThoseInSightAlone() {
        for (int i = 0; i < 20000; ++i)
            board_->AddText(std::string(size_t(i) * 7 % 5000, 'y'));
        Show(1200, 900);
        QScrollBar& bar = *view_->verticalScrollBar();
        for (int frame = 0; frame < 200; ++frame) {
            const int before = board_->laidOut;
            if (frame % 20 == 19)
                bar.setValue(bar.maximum() / 200 * frame);
            else
                Wheel(-120);
            view_->viewport()->repaint();
            const auto [first, end] = view_->VisibleRows();
            const int made = board_->laidOut - before;
            QVERIFY2(made <= end - first + 5, qPrintable(QString::number(made)));
        }
    }
};

}  // namespace lore

QTEST_MAIN(lore::BoardTest)
#include "board_test.moc"
