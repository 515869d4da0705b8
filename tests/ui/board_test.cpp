#include <QFontMetricsF>
#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

#include "bibliography/citation_spans.h"
#include "ui/board/board_accessible.h"
#include "ui/board/board_view.h"
#include "ui/board/card_emphasis.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/look/theme.h"

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

/// A board of its own for each test, empty and in the light palette, as keys, mouse and screen readers meet it.
class BoardTest : public QObject {
    Q_OBJECT

private:
    void MakeView() { view_ = std::make_unique<BoardView>(*board_, theme_); }
    void Show(int width = 1000, int height = 700) {
        view_->resize(width, height);
        view_->Rebuild();
        view_->show();
        QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
    }
    /// Adds notes whose texts follow from their rows, and shows them.
    void ShowNotes(int count, const std::function<std::string(int)>& text) {
        for (int row = 0; row < count; ++row)
            board_->AddText(text(row));
        Show();
    }
    /// Adds notes of one text, and shows them.
    void ShowNotes(int count, const std::string& text) {
        ShowNotes(count, [&](int) { return text; });
    }
    /// The middle of what is seen of a card.
    QPoint Middle(int row) const { return view_->CardRect(row).intersected(view_->viewport()->rect()).center(); }
    /// A plain spot of a card, below its actions and left of its text.
    QPoint Spot(int row) const { return view_->CardRect(row).topLeft() + QPoint(8, 14); }
    void Wheel(int delta) { TurnWheel(view_->viewport(), delta); }
    void Click(const QPoint& at) { QTest::mouseClick(view_->viewport(), Qt::LeftButton, {}, at); }
    void Release(const QPoint& at) { QTest::mouseRelease(view_->viewport(), Qt::LeftButton, {}, at); }
    /// The notes that signals name first.
    static QList<int> NotesOf(const QSignalSpy& spy) {
        QList<int> notes;
        for (const QList<QVariant>& signal : spy)
            notes.append(signal[0].toInt());
        return notes;
    }
    void Drag(const QPoint& from, const QPoint& to) { DragOn(*view_->viewport(), from, to); }
    void DoubleClick(const QPoint& at) {
        QTest::mouseDClick(view_->windowHandle(), Qt::LeftButton, {}, view_->viewport()->mapTo(view_.get(), at));
    }

    QStringList MenuAt(const QPoint& point) {
        QMenu* const menu = OpenMenuAt(*view_->viewport(), point);
        QStringList texts = TextsOf(menu);
        texts.removeAll("-");
        if (menu)
            menu->close();
        return texts;
    }

    Theme theme_{*qApp, Appearance::Light};
    std::unique_ptr<MemoryBoard> board_;
    std::unique_ptr<BoardView> view_;

private slots:
    void initTestCase() { InstallBoardAccessibility(); }
    void init() {
        board_ = std::make_unique<MemoryBoard>();
        MakeView();
    }
    void cleanup() {
        view_.reset();
        board_.reset();
    }
    void shows_cards_of_all_kinds_data() {
        QTest::addColumn<double>("zoom");
        QTest::addColumn<int>("width");
        QTest::addColumn<double>("textSize");
        QTest::newRow("board") << 1.0 << 1100 << 1.0;
        QTest::newRow("board-zoomed") << 2.0 << 1100 << 1.0;
        QTest::newRow("board-narrow") << 1.0 << 420 << 1.0;
        QTest::newRow("board-large-text") << 1.0 << 1100 << 2.0;
        QTest::newRow("board-top") << 1.25 << 900 << 1.0;
    }

    void shows_cards_of_all_kinds() {
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
        BothLooks{theme_}.Shoot(*view_, QString::fromLatin1(QTest::currentDataTag()));
        QApplication::setFont(before);
        // Cards stand in the middle, one directly below the other, and are never wider than is readable.
        for (int row = 0; row + 1 < end; ++row)
            QCOMPARE(view_->CardRect(row).bottom() + 1, view_->CardRect(row + 1).top());
        const QRect card = view_->CardRect(0);
        QVERIFY(card.width() <= 900);
        QVERIFY(std::abs(card.left() - (view_->viewport()->width() - 1 - card.right())) <= 1);
    }

    void cards_are_laid_out_one_a_turn_and_painted_together() {
        ShowNotes(60, "A note");
        QTest::qWait(50);
        for (const int row : {-1, 55}) {
            board_->laidOut = 0;
            row < 0 ? view_->Rebuild() : view_->RebuildAt(board_->IDAt(row));
            view_->grab();
            QVERIFY2(board_->laidOut <= 1, "painting waits for no card");
            int most = 0;
            for (int turn = 0; turn < 100; ++turn) {
                const int before = board_->laidOut;
                QCoreApplication::processEvents();
                most = std::max(most, board_->laidOut - before);
            }
            QVERIFY2(most <= 2 && board_->laidOut > 8, qPrintable(QString::number(most)));
            const int laidOut = board_->laidOut;
            const auto [first, end] = view_->VisibleRows();
            QVERIFY(row < 0 ? first == 0 : first <= row && row < end);
            QCOMPARE(board_->laidOut, laidOut);
        }
    }

    void what_comes_amid_the_layout_finds_it_done() {
        ShowNotes(400, "A note");
        view_->SetFocusNote(board_->IDAt(35));
        view_->Rebuild();
        view_->verticalScrollBar()->setValue(view_->verticalScrollBar()->maximum());
        QCOMPARE(view_->VisibleRows().second, 400);
        view_->Rebuild();
        board_->notes.resize(3);  // by a command whose message takes the focus
        QFocusEvent focus(QEvent::FocusOut);
        QApplication::sendEvent(view_.get(), &focus);
        QCOMPARE(view_->VisibleRows(), std::pair(0, 3));
        QCOMPARE(view_->CardRect(0).top(), 0);
    }

    void stacks_the_blocks_of_a_card_in_the_chosen_order() {
        board_->AddText("");  // 17 pixels for a note that has nothing
        board_->AddText("").keyWords = ", ,reef,,";
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

    void titles_in_italics_are_not_bold() {
        CSource source;
        source.FormattedText = "A title";
        source.SpanStarts = {0};
        source.SpanEnds = {6};
        constexpr std::array kBold = {false, false, true, false, true, true, false, true};
        for (int32_t kind = kItalic; kind <= kBoldItalicUnderline; ++kind) {
            source.SpanKinds = {kind};
            const auto widthOf = [](int weight) {
                QFont font("Arial");
                font.setWeight(QFont::Weight(weight));
                return QFontMetricsF(font).horizontalAdvance("A title");
            };
            const int weight = CitationEmphasis(source).first().format.fontWeight();
            QCOMPARE(widthOf(weight) == widthOf(QFont::Bold), kBold[size_t(kind)]);
        }
    }

    void a_list_that_grew_shorter_unseen_is_shown_anew() {
        Show();
        const std::function<void()> looks[] = {[this] { view_->viewport()->repaint(); },
                                               [this] { view_->resize(900, 640); },
                                               [this] { QTest::mouseMove(view_->viewport(), QPoint(300, 300)); },
                                               [this] { Wheel(-120); },
                                               [] { QTest::qWait(20); },
                                               [this] { view_->verticalScrollBar()->setValue(0); }};
        for (const std::function<void()>& look : looks) {
            while (board_->Count() < 60)
                board_->AddText("Text");
            view_->Rebuild();
            view_->SetFocusNote(50);
            board_->notes.resize(2);
            look();
            QCOMPARE(view_->VisibleRows(), (std::pair{0, 2}));
            QCOMPARE(view_->FocusNote(), -1);
        }
    }

    void a_saved_note_comes_into_sight_without_a_long_turn() {
        ShowNotes(400, "Text");
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
            QVERIFY2(seen.top() <= card.top() && card.bottom() <= seen.bottom(), qPrintable(QString::number(id)));
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

    void scrolling_moves_cards_by_the_step_whatever_their_heights() {
        QRandomGenerator random(3);
        ShowNotes(300, [&](int) {
            return std::string(size_t(random.bounded(3000)), 'x') + std::string(size_t(random.bounded(30)), '\n');
        });
        for (int step = 0; step < 120; ++step) {
            const int delta = step < 60 || step % 3 == 0 ? -120 : 120;
            const int row = view_->VisibleRows().second - 1;
            const int before = view_->CardRect(row).top();
            Wheel(delta);
            QCOMPARE(view_->CardRect(row).top(), before + delta);
            QVERIFY(view_->CardRect(view_->VisibleRows().first).top() <= 0);
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

    void goes_on_beyond_what_the_scroll_bar_can_count() {
        view_.reset();
        board_ = std::make_unique<TallBoard>();
        MakeView();
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

    void lays_out_cards_ahead_while_nothing_happens() {
        ShowNotes(200, "One\n\n\n\n\nsix lines, which no count of letters tells");
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

    void reaches_the_last_card_from_anywhere() {
        ShowNotes(500, [](int i) { return std::string(size_t(i) * 7 % 1800, 'y'); });
        QScrollBar& bar = *view_->verticalScrollBar();
        bar.setValue(bar.maximum());
        QCOMPARE(view_->VisibleRows().second, 500);
        QCOMPARE(view_->CardRect(499).bottom() + 1, view_->viewport()->height());
        QCOMPARE(bar.value(), bar.maximum());
        bar.setValue(0);
        QCOMPARE(view_->CardRect(0).top(), 0);
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(view_->FocusNote(), 500);
        QCOMPARE(view_->CardRect(499).bottom() + 1, view_->viewport()->height());
    }

    void keys_move_the_focus_through_the_list() {
        ShowNotes(50, [](int i) { return i == 2 ? std::string(20000, 'z') : "Short"; });
        const auto press = [this](Qt::Key key, int times = 1) {
            for (int i = 0; i < times; ++i)
                QTest::keyClick(view_.get(), key);
            return view_->FocusNote();
        };
        for (const int row : {1, 2, 3})
            QCOMPARE(press(Qt::Key_Down), row);
        // The third card is higher than the board: the key scrolls through it before it goes on.
        const int top = view_->CardRect(2).top();
        QCOMPARE(press(Qt::Key_Down), 3);
        QVERIFY(view_->CardRect(2).top() < top);
        for (int i = 0; i < 100 && view_->FocusNote() == 3; ++i)
            press(Qt::Key_Down);
        QCOMPARE(view_->FocusNote(), 4);
        QCOMPARE(press(Qt::Key_Home), 1);
        QCOMPARE(press(Qt::Key_Up), 1);
        QCOMPARE(press(Qt::Key_PageDown, 60), 50);
        QCOMPARE(press(Qt::Key_PageUp, 60), 1);
    }

    void keeps_the_focus_note_in_place_when_the_list_changes() {
        ShowNotes(100, [](int i) { return std::string(size_t(i % 7) * 400, 'w') + " note"; });
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

    void tells_screen_readers_of_its_cards() {
        FillSampleBoard(*board_);
        Show();
        view_->SetFocusNote(2);
        QAccessibleInterface* list = QAccessible::queryAccessibleInterface(view_.get());
        QVERIFY(list);
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Note board"));
        QCOMPARE(list->childCount(), board_->Count());
        QAccessibleInterface* const card = list->child(1);
        QAccessibleInterface* const other = list->child(0);
        QCOMPARE(card->role(), QAccessible::ListItem);
        QVERIFY(card->text(QAccessible::Name).startsWith(QStringLiteral("A picture, files")));
        QVERIFY(card->text(QAccessible::Name).contains(QStringLiteral("Attachment: Waves.mp3")));
        QVERIFY(other->text(QAccessible::Name).contains(QStringLiteral("Category: Lighthouses, England")));
        QVERIFY(card->state().selected && !other->state().selected);
        QCOMPARE(list->indexOfChild(card), 1);
        QCOMPARE(list->focusChild(), card);
        QSignalSpy edits(view_.get(), &BoardView::EditRequested);
        other->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(edits.size(), 1);
        QCOMPARE(edits[0][0].toInt(), board_->IDAt(0));
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(list->indexOfChild(list->focusChild()), board_->Count() - 1);
    }

    void an_empty_board_shows_the_first_step_and_tells_screen_readers_of_it() {
        const char* const search =
            "Search the NoteBook, or choose a category, a source, a key word or a color at the left.";
        view_->SetEmptyState({"No notes in the list", search, "Show all notes", {}});
        Show();
        BothLooks{theme_}.Shoot(*view_, "board-empty");
        QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(view_.get());
        QCOMPARE(list->text(QAccessible::Description), QStringLiteral("No notes in the list\n") + search);
        QCOMPARE(list->childCount(), 1);
        QAccessibleInterface* const pane = list->child(0);
        QVERIFY(pane && !list->child(1) && !list->focusChild());
        QCOMPARE(list->indexOfChild(pane), 0);
        QCOMPARE(pane->parent(), list);
        QStringList texts;
        for (int i = 0; i < pane->childCount(); ++i)
            texts.append(pane->child(i)->text(QAccessible::Name));
        for (const char* const text : {"No notes in the list", search, "Show all notes"})
            QVERIFY2(texts.contains(text), text);
        QSignalSpy step(view_.get(), &BoardView::FirstStepRequested);
        const auto* const button = view_->findChild<QPushButton*>();
        QVERIFY(button && button->isVisible());
        Press(*view_, "Show all notes");
        QCOMPARE(step.count(), 1);
        QTest::keyClick(view_.get(), Qt::Key_End);
        QCOMPARE(view_->FocusNote(), -1);
        view_->SetEmptyState({"No hits", {}, {}, {}});
        QCOMPARE(list->text(QAccessible::Description), QStringLiteral("No hits"));
        QCOMPARE(pane->text(QAccessible::Name), QStringLiteral("No hits"));
        board_->AddText("The first note");
        view_->Rebuild();
        QVERIFY(!button->isVisible());
        QCOMPARE(list->childCount(), 1);
        QCOMPARE(list->child(0)->role(), QAccessible::ListItem);
        QCOMPARE(list->indexOfChild(pane), -1);
        QVERIFY(list->text(QAccessible::Description).isEmpty());
    }

    void offers_every_command_to_the_keyboard() {
        FillSampleBoard(*board_);
        Show();
        const std::vector<BoardCommand> commands = NoteCommands(true);
        view_->SetNoteCommands({commands.begin(), commands.end()});
        view_->SetOtherNoteBooks({"Thesis & more"});
        QStringList offered;
        const std::function<void(const QMenu&)> add = [&](const QMenu& menu) {
            for (const QAction* const action : menu.actions()) {
                offered.append(action->text());
                if (action->menu())
                    add(*action->menu());
            }
        };
        for (int row = 0; row < board_->Count(); ++row) {
            view_->SetFocusNote(board_->IDAt(row));
            QMenu* const menu = OpenMenuAt(*view_->viewport(), QPoint(5, 5), QContextMenuEvent::Keyboard);
            QVERIFY(menu);
            add(*menu);
            menu->close();
        }
        for (int i = 0; i <= int(BoardCommand::DeleteNote); ++i) {
            const std::string_view text = BoardCommandText(BoardCommand(i));
            QVERIFY2(offered.contains(QString::fromLatin1(text.data(), qsizetype(text.size()))), text.data());
        }
        QVERIFY(offered.contains("Thesis && more"));
    }

    void selects_and_opens_by_mouse() {
        ShowNotes(4, "Note");
        QSignalSpy selected(view_.get(), &BoardView::SelectionChanged);
        QSignalSpy edit(view_.get(), &BoardView::EditRequested);
        QSignalSpy remove(view_.get(), &BoardView::RemoveRequested);
        QSignalSpy erase(view_.get(), &BoardView::DeleteRequested);
        Click(Middle(2));
        QCOMPARE(view_->FocusNote(), 3);
        Click(Middle(2));
        QCOMPARE(selected.count(), 1);
        // The first click was meant for a dialog that stood there.
        QTest::mouseDClick(view_->viewport(), Qt::LeftButton, {}, Middle(0));
        DoubleClick(Middle(1));
        QCOMPARE(NotesOf(edit), QList<int>{2});
        // The actions of a card stand in its corner.
        const QPoint corner = view_->CardRect(3).topRight();
        Click(corner + QPoint(-18, 24));
        QCOMPARE(NotesOf(remove), QList<int>{4});
        QTest::mouseMove(view_->viewport(), corner + QPoint(-66, 24));
        TakeShot(*view_, QStringLiteral("board-hover"));
        Click(corner + QPoint(-42, 24));
        Click(corner + QPoint(-66, 24));
        QCOMPARE(NotesOf(erase), QList<int>{4});
        QCOMPARE(NotesOf(edit), QList<int>({2, 4}));
    }

    void the_ground_beside_a_card_belongs_to_none() {
        ShowNotes(4, "Note");
        view_->SetFocusNote(1);
        QSignalSpy selected(view_.get(), &BoardView::SelectionChanged);
        QSignalSpy edit(view_.get(), &BoardView::EditRequested);
        QSignalSpy moved(view_.get(), &BoardView::MoveRequested);
        const QRect card = view_->CardRect(2);
        for (const int x : {card.left() - 1, card.right() + 1}) {
            const QPoint beside(x, card.center().y());
            QVERIFY(view_->viewport()->rect().contains(beside));
            Click(beside);
            DoubleClick(beside);
            QCOMPARE(MenuAt(beside), QStringList());
            Drag(beside, Middle(0));
            Release(Middle(0));
            Drag(Spot(0), beside);
            Release(beside);
        }
        QCOMPARE(view_->FocusNote(), 1);
        QCOMPARE(selected.count() + edit.count() + moved.count(), 0);
        for (const int x : {card.left(), card.right()}) {
            Click(QPoint(x, card.center().y()));
            QCOMPARE(view_->FocusNote(), 3);
            view_->SetFocusNote(1);
        }
    }

    void drags_a_card_and_scrolls_at_the_edge() {
        ShowNotes(5, "Note");
        QSignalSpy moved(view_.get(), &BoardView::MoveRequested);
        Drag(Spot(0), Middle(2));
        TakeShot(*view_, QStringLiteral("board-drag"));
        Release(Middle(2));
        QCOMPARE(NotesOf(moved), QList<int>{1});
        QCOMPARE(moved[0][1].toInt(), 3);
        Drag(Spot(3), Middle(1));
        QTest::keyClick(view_.get(), Qt::Key_Escape);
        Release(Middle(1));
        QCOMPARE(moved.count(), 1);
        // At the lower edge the list scrolls along.
        ShowNotes(60, "More");
        Drag(Spot(1), QPoint(Spot(1).x(), view_->viewport()->height() + 40));
        QTRY_VERIFY(view_->VisibleRows().first >= 3);
        Release(QPoint(10, 10000));
        QCOMPARE(NotesOf(moved), QList<int>({1, 2}));
        QVERIFY(moved[1][1].toInt() > 6);
    }

    void picture_buttons_ask_for_their_command() {
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
            i % 2 == 0 ? Click(at) : DoubleClick(at);
            QVERIFY(command.count() > 0);
            const QList<QVariant> last = command.last();
            QCOMPARE(last[1].toInt(), 0);
            QCOMPARE(last[2].value<PictureCommand>(), expected[i]);
            const auto room = last[3].value<PictureRoom>();
            QCOMPARE(room.width, 400);
            QCOMPARE(room.cardWidth, view_->CardRect(0).width() - 42);
        }
    }

    void a_picture_of_any_zoom_can_be_drawn() {
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

    void menu_holds_the_entries_of_what_is_under_the_mouse() {
        CNote& note = board_->AddText("With everything");
        board_->AttachPicture(note, "Tower", 400, 200);
        board_->AttachFile(note, "Letter", 3, 10);
        board_->Attach(note, "", 12).sourceFile = "https://example.org";
        Show(1000, 1200);
        const auto at = [this](int attachment) { return view_->AttachmentRect(0, attachment).center(); };
        QCOMPARE(MenuAt(at(0)).value(0), QString("Zoom In"));
        QCOMPARE(MenuAt(at(1)), QStringList({"Open Attachment", "Extract Attachment"}));
        QCOMPARE(MenuAt(at(2)), QStringList({"Open Link"}));
        QCOMPARE(MenuAt(Spot(0)), QStringList({"Remove From Current List"}));
        QCOMPARE(MenuAt(QPoint(500, 1190)), QStringList());
        QSignalSpy open(view_.get(), &BoardView::OpenRequested);
        Click(at(2));
        QCOMPARE(open.count(), 1);
        QCOMPARE(open[0][1].toInt(), 2);
    }

    void scrolling_twenty_thousand_notes_lays_out_those_in_sight_alone() {
        ShowNotes(20000, [](int i) { return std::string(size_t(i) * 7 % 5000, 'y'); });
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

Q_DECLARE_METATYPE(lore::PictureCommand)
Q_DECLARE_METATYPE(lore::PictureRoom)

QTEST_MAIN(lore::BoardTest)
#include "board_test.moc"
