#include "base/text.h"
#include "edit/draft_store.h"
#include "support/noted_starts.h"
#include "ui/controls/run_when_free.h"
#include "ui/look/window_place.h"
#include "ui/main/control_bar.h"
#include "ui/main/panel_page.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/note_editor/note_editor_window.h"
#include "ui/note_editor/note_text_pane.h"
#include "ui/picture_bytes.h"
#include "ui/ports/qt_progress.h"
#include "ui/ports/quit_guard.h"
#include "ui/tab_walk.h"
#include "ui/window_rules.h"
#include "ui/window_world.h"

namespace lore {

/// Drives the whole window on the sample NoteBook, as a user does.
class MainWindowTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void Open() {
        OpenWindow(1180, 800);
        QTest::qWait(10);
    }

    QString Pane(int index) const {
        return window_->statusBar()->findChildren<QLabel*>(Qt::FindDirectChildrenOnly).at(index)->text();
    }

    PanelPage* Panel(PanelKind kind) const { return window_->Panels()->PageAt(kind); }
    QModelIndex Row(PanelKind kind, const QString& name) const {
        const QAbstractItemModel* const model = Panel(kind)->Tree()->model();
        return model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }

    QLineEdit* SearchBox() const { return In<QLineEdit>(*window_, "searchBox"); }
    void Search(const QString& text) {
        Retype(SearchBox(), text);
        QTest::keyClick(SearchBox(), Qt::Key_Return);
    }

    /// Opens the menu of a card and chooses an entry; gives the entries with their keys.
    QMap<QString, QString> ChooseFromCard(int32_t id, const QString& chosen = {}) {
        BoardView* const board = window_->Board();
        board->SetFocusNote(id);
        const QPoint point = board->CardRect(app_->List().PositionOf(id)).topLeft() + QPoint(8, 14);
        QMap<QString, QString> keys;
        QMenu* const menu = OpenMenuAt(*board->viewport(), point);
        if (!menu)
            return keys;
        for (const QAction* const action : menu->actions())
            keys[action->text()] = action->shortcut().toString();
        menu->close();
        if (QAction* const entry = EntryOf(*menu, chosen))
            entry->trigger();
        return keys;
    }
    /// The board gets the keys.
    BoardView& FocusBoard() {
        BringUp(*window_);
        window_->Board()->setFocus();
        return *window_->Board();
    }
    void DeleteByKey() {
        prompts_.answers = {PromptAnswer::Yes};
        QTest::keyClick(&FocusBoard(), Qt::Key_Delete);
    }
    /// Reads the list of notes while that of the sources can't be read.
    void ShowWithoutSources(const LongList& listed) {
        const Unreadable sources(app_->NoteBook().paths.Sources());
        ReloadAndShow(listed);
    }
    void ReloadAndShow(const LongList& listed) {
        app_->ReloadNotes(listed);
        window_->ShowNoteBook();
    }
    /// Opens the window anew, with other programs to start and work beside it, if there is any.
    void OpenWithCompanions() {
        CloseWindow();
        companions_ = NotedStarts();
        morePorts_ = [this](AppPorts& ports) {
            ports.companions = &companions_;
            ports.background = background_.get();
        };
        Open();
        faults_.bar = window_->Faults();
    }
    bool OffersTryAgain() const { return SeenTexts<QPushButton>(*window_->Faults()).contains("Try again"); }
    /// What the empty board says: its title, and its buttons.
    QStringList EmptyBoard() const {
        return SeenTexts<QLabel>(*window_->Board()).mid(0, 1) + SeenTexts<QPushButton>(*window_->Board());
    }
    bool TellsOfNoEntries(PanelKind kind) const {
        window_->Panels()->SetPage(static_cast<int>(kind));
        return !Panel(kind)->Tree()->findChild<QLabel*>()->isHidden();
    }

    NotedStarts companions_;
    std::unique_ptr<QtProgress> background_;

private slots:
    void init() {
        morePorts_ = nullptr;
        background_.reset();
        faults_.bar = nullptr;
        Begin();
        MakeSample();
        Open();
    }
    void cleanup() { CloseWindow(); }
    void shows_the_last_list_and_its_counts() {
        const int notes = static_cast<int>(app_->NoteBook().TotalNoteCount());
        QVERIFY(notes >= 60);
        QCOMPARE(window_->windowTitle(), QStringLiteral("<Lorebinder Premium> - Ver. 1.56 - Fennelworks, Inc."));
        const QString count = QString::number(notes);
        const std::pair<int, QString> panes[] = {{0, "NoteBook:   < LorebinderMain >"},
                                                 {1, "Not Linked"},
                                                 {3, "Notes:    " + count},
                                                 {4, "In List:    " + count}};
        for (const auto& [index, text] : panes)
            QCOMPARE(Pane(index), text);
        QCOMPARE(window_->Board()->VisibleRows().first, 0);
        QVERIFY(faults_.faults.empty());
        QCOMPARE(progress_.shown, 0);
    }

    void an_empty_list_shows_the_picture_of_the_data_folder() {
        CloseWindow();
        const QImage logo = Filled(60, 40, Qt::darkRed);
        QVERIFY(logo.save(QString::fromStdString((DataPaths{Root()}.DataFiles() / "Logo.bmp").string())));
        Open();
        app_->ClearList();
        window_->ShowNoteBook();
        TakeShot(*window_, "main-logo-light");
        const QList<QLabel*> labels = window_->Board()->findChildren<QLabel*>();
        QVERIFY(std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
            return label->isVisible() && label->pixmap().toImage().convertToFormat(QImage::Format_RGB32) == logo;
        }));
    }

    void search_scrolls_to_the_first_new_note() {
        BoardView* const board = window_->Board();
        LongList kept;
        for (size_t i = 0; i < 30; ++i)
            kept.AddTail(app_->List()[i].id);
        app_->ClearList();
        app_->Gather(kept);
        emit window_->Panels()->CommandRequested({.action = PanelAction::TakeOut});
        board->SetFocusNote(kept[0]);
        Search("SHOWALL");
        const int row = app_->List().PositionOf(board->FocusNote());
        QCOMPARE(row, 30);
        QCOMPARE(Pane(4), QStringLiteral("In List:    %1").arg(app_->List().Count()));
        QVERIFY(app_->List()[30].newlyAdded && app_->List().IsSelected(30));
        QVERIFY(board->viewport()->rect().contains(board->CardRect(row).topLeft()));
        // A search among the current notes goes to its first hit; one without hits leaves no focus note.
        Search("\"fresnel\"");
        QCOMPARE(board->FocusNote(), -1);
        emit window_->Tools()->SearchRequested(QStringLiteral("fresnel"), SearchScope::CurrentNotes);
        QVERIFY(board->FocusNote() > 0);
        QVERIFY(!app_->List().ShownNote(size_t(app_->List().PositionOf(board->FocusNote()))).displayRtf.empty());
    }

    void a_panel_gathers_and_takes_out() {
        app_->ClearList();
        const QModelIndex row = Row(PanelKind::Categories, "Engineering");
        QVERIFY(row.isValid());
        emit Panel(PanelKind::Categories)->Tree()->activated(row);
        const size_t gathered = app_->List().Count();
        QVERIFY(gathered > 0);
        emit Panel(PanelKind::Categories)->Tree()->activated(row);
        QCOMPARE(app_->List().Count(), gathered);
        QCOMPARE(row.data(Qt::AccessibleTextRole).toString(), QStringLiteral("Engineering (%1/%1)").arg(gathered));
        const LongList first{app_->List()[0].id};
        emit window_->Panels()->CommandRequested({.action = PanelAction::TakeOut, .notes = first});
        QCOMPARE(app_->List().Count(), gathered - 1);
        QCOMPARE(Pane(4), QStringLiteral("In List:    %1").arg(gathered - 1));
    }

    void a_panel_out_of_sight_follows_when_it_comes_in_sight() {
        const auto counts = [this] {
            const QAbstractItemModel* const words = Panel(PanelKind::KeyWords)->Tree()->model();
            const QModelIndexList found = words->match(words->index(0, 0), Qt::DisplayRole, "read again");
            return found.isEmpty() ? QString() : found[0].data(Qt::AccessibleTextRole).toString();
        };
        ControlBar& bar = *window_->Panels();
        bar.SetPage(static_cast<int>(PanelKind::Categories));
        emit bar.CommandRequested({.action = PanelAction::AttachKeyWord, .name = "read again"});
        const QString all = QString::number(app_->List().Count());
        QCoreApplication::processEvents();
        QCOMPARE(counts(), QString());
        bar.SetPage(static_cast<int>(PanelKind::KeyWords));
        QCOMPARE(counts(), QString("read again (%1/%1)").arg(all));
        bar.hide();
        emit bar.CommandRequested({.action = PanelAction::TakeOut, .notes = {app_->List()[0].id}});
        QCoreApplication::processEvents();
        QCOMPARE(counts(), QString("read again (%1/%1)").arg(all));
        bar.show();
        QCOMPARE(counts(), QString("read again (%1/%2)").arg(app_->List().Count()).arg(all));
    }

    void filter_narrows_a_panel() {
        auto* const filter = Panel(PanelKind::Categories)->findChild<QLineEdit*>();
        const auto shown = [this] {
            QStringList names;
            for (const char* const name : {"Engineering", "Lenses", "Signals"})
                if (Row(PanelKind::Categories, name).isValid())
                    names.append(name);
            return names.join(' ') + (TellsOfNoEntries(PanelKind::Categories) ? "nothing" : "");
        };
        QTest::keyClicks(filter, "lenses");
        QCOMPARE(shown(), QString("Engineering Lenses"));
        QTest::keyClicks(filter, "xyz");
        QCOMPARE(shown(), QString("nothing"));
        TakeShot(*window_, "main-filter-without-hits");
        filter->clear();
        QCOMPARE(shown(), QString("Engineering Lenses Signals"));
    }

    void a_panel_that_is_filled_anew_takes_no_focus_from_the_board() {
        window_->Panels()->SetPage(static_cast<int>(PanelKind::Categories));
        PanelPage* const page = Panel(PanelKind::Categories);
        page->Tree()->setCurrentIndex(Row(PanelKind::Categories, "Signals"));
        FocusBoard();
        const QStringList told = ToldDuring([page] {
            page->findChild<QLineEdit*>()->setText("Sig");
            page->findChild<QLineEdit*>()->clear();
        });
        QCOMPARE(told, QStringList());
        QCOMPARE(page->Tree()->currentIndex().data().toString(), QString("Signals"));
        QVERIFY(TellsOfFocusChild(*page->Tree()));
        QCOMPARE(NameOf(*page->Tree()), QString("Categories"));
        const auto* const tab = In<QToolButton>(*window_, "panelTab1");
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(const_cast<QToolButton*>(tab));
        QVERIFY(face->role() == QAccessible::PageTab && !face->state().selected);
        face->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(face->state().selected && window_->Panels()->Page() == 1);
    }

    void a_color_has_words_beside_its_swatch() {
        window_->Panels()->SetPage(static_cast<int>(PanelKind::Colors));
        QTreeView* const tree = Panel(PanelKind::Colors)->Tree();
        QCoreApplication::processEvents();
        const QModelIndex row = tree->model()->index(0, 0);
        QVERIFY(row.data().toString().startsWith("#"));
        QVERIFY(row.data(Qt::AccessibleTextRole).toString().startsWith(row.data().toString() + " ("));
        const QImage shown = tree->viewport()->grab(tree->visualRect(row)).toImage();
        const int swatch = 3 * shown.height();  // it is narrower
        QVERIFY(shown.width() > 2 * swatch);
        QSet<QRgb> colors;
        for (int x = swatch; x < shown.width() / 2; ++x)
            for (int y = 0; y < shown.height(); ++y)
                colors.insert(shown.pixel(x, y));
        QVERIFY(colors.size() > 1);
    }

    void every_command_shows_its_keys() {
        QCOMPARE(CommandsWithoutKeys(*window_->menuBar()), QStringList());
        for (const auto& [entry, menu] : {std::pair("Lorebinder Options...", "Options"),
                                          {"Edit Custom Source Types...", "Sources"},
                                          {"Create Bibliography...", "Sources"}})
            QCOMPARE(MenuEntry(*window_, entry, "Tools"), MenuEntry(*window_, entry, menu));
        // Those of a card's menu still do what they did when it has been open.
        ChooseFromCard(app_->List()[0].id);
        DeleteByKey();
        QCOMPARE(Told().last(), QString("Delete Note?"));
    }

    /// A command shows its progress, which lets events through, while the menu still works on the click.
    void a_menu_outlives_its_command() {
        window_->Panels()->SetPage(static_cast<int>(PanelKind::Colors));
        PanelPage* const page = Panel(PanelKind::Colors);
        page->Tree()->setCurrentIndex(page->Tree()->model()->index(0, 0));
        const QPointer<QMenu> menu = OpenMenuAt(*page->Tree()->viewport(), QPoint(), QContextMenuEvent::Keyboard);
        QVERIFY(menu);
        QAction* const wanted = EntryOf(*menu, "Set All Notes In List To This Color");
        QVERIFY(wanted);
        bool isThere = false;
        connect(page, &PanelPage::CommandRequested, page, [&] {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            isThere = !menu.isNull();
        });
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(wanted).center());
        QVERIFY(isThere);
        QCOMPARE(window_->Notes()->WhatToUndo(), NextUndo::Colors);
    }

    void clearing_the_filter_brings_the_tree_back() {
        PanelPage* const page = Panel(PanelKind::Categories);
        QTreeView* const tree = page->Tree();
        auto* const filter = page->findChild<QLineEdit*>();
        tree->collapseAll();
        tree->setExpanded(Row(PanelKind::Categories, "Engineering"), true);
        tree->setCurrentIndex(Row(PanelKind::Categories, "Engineering"));
        const auto expanded = [tree] {
            QStringList names;
            for (int row = 0; row < tree->model()->rowCount(); ++row)
                if (tree->isExpanded(tree->model()->index(row, 0)))
                    names.append(tree->model()->index(row, 0).data().toString());
            return names;
        };
        const QStringList before = expanded();
        // Hidden by the filter, and then another one chosen in it.
        for (const auto& [word, chosen] : {std::pair("signals", "Engineering"), std::pair("lenses", "Lenses")}) {
            QTest::keyClicks(filter, word);
            window_->Panels()->Rebuild(*app_);
            if (const QModelIndex row = Row(PanelKind::Categories, chosen); row.isValid()) {
                QVERIFY(tree->isExpanded(Row(PanelKind::Categories, "Engineering")));
                tree->setCurrentIndex(row);
            }
            filter->clear();
            QCOMPARE(expanded(), before);
            QCOMPARE(tree->currentIndex().data().toString(), QString(chosen));
        }
    }

    void a_card_has_its_menu() {
        window_->Board()->SetOtherNoteBooks({"Another"});
        const int32_t first = app_->List()[0].id, second = app_->List()[1].id;
        const QMap<QString, QString> keys{{"Edit Note", "F2"},
                                          {"Remove From Current List", {}},
                                          {"Copy Note To NoteBook", {}},
                                          {"Delete Note Permanently", "Del"}};
        QCOMPARE(ChooseFromCard(first), keys);
        InDialog<NoteEditorWindow>([&] { ChooseFromCard(first, "Edit Note"); },
                                   [&](NoteEditorWindow& editor) { QCOMPARE(editor.Note().id, first); });
        ChooseFromCard(second, "Remove From Current List");
        QVERIFY(!app_->List().Contains(second) && app_->NoteBook().index.Contains(second));
        prompts_.answers = {PromptAnswer::Yes};
        ChooseFromCard(first, "Delete Note Permanently");
        QVERIFY(!app_->NoteBook().index.Contains(first));
    }

    void the_note_that_takes_the_place_of_one_that_goes_gets_the_focus() {
        emit window_->Tools()->SortChosen(805);
        BoardView* const board = window_->Board();
        const LongList ids = app_->List().GetNoteIDs();
        const size_t last = ids.Count() - 1;
        board->SetFocusNote(ids[3]);
        QTest::keyClick(&FocusBoard(), Qt::Key_Delete);
        QVERIFY2(app_->List().Contains(ids[3]), "the answer was No");
        for (const size_t next : {4, 5}) {
            DeleteByKey();
            QCOMPARE(board->FocusNote(), ids[next]);
        }
        const int row = app_->List().PositionOf(ids[5]);
        QVERIFY(row >= board->VisibleRows().first && row < board->VisibleRows().second);
        board->SetFocusNote(ids[last]);
        DeleteByKey();
        QCOMPARE(board->FocusNote(), ids[last - 1]);
        QVERIFY(board->hasFocus());
        PressKeys(board, {"Ctrl+Z", "Ctrl+Z", "Ctrl+Z"});
        QVERIFY(app_->List().GetNoteIDs() == ids);
        ChooseFromCard(ids[7], "Remove From Current List");
        QCOMPARE(board->FocusNote(), ids[8]);
        app_->ClearList();
        app_->Gather(LongList{ids[0]});
        window_->ShowNoteBook();
        ChooseFromCard(ids[0], "Remove From Current List");
        QCOMPARE(board->FocusNote(), -1);
    }

    void an_empty_notebook_offers_the_first_note() {
        CloseWindow();
        Begin();
        Open();
        QCOMPARE(EmptyBoard(), QStringList({"No notes yet", "Add Note...", "Import Notes..."}));
        TakeShot(*window_, "main-no-notes");
        for (const PanelKind kind : {PanelKind::Categories, PanelKind::Sources, PanelKind::KeyWords})
            QVERIFY(TellsOfNoEntries(kind));
        Press(*window_->Board(), "Import Notes...");
        QVERIFY(prompts_.seen.at(0).find("? open ") != std::string::npos);
        InDialog<NoteEditorWindow>([this] { Press(*window_->Board(), "Add Note..."); },
                                   [](NoteEditorWindow& editor) {
                                       QTest::keyClicks(editor.Text()->Edit(), "The first note");
                                       editor.SaveNote();
                                   });
        QCOMPARE(app_->List().Count(), size_t{1});
        QTRY_VERIFY(!TellsOfNoEntries(PanelKind::Categories) && !TellsOfNoEntries(PanelKind::Sources));
        Trigger("Clear Current Notes");
        QCOMPARE(EmptyBoard(), QStringList({"No notes in the list", "Show all notes"}));
        Press(*window_->Board(), "Show all notes");
        QCOMPARE(app_->List().Count(), size_t{1});
        QVERIFY(EmptyBoard().isEmpty());
    }

    void an_upgrade_widens_the_panels_once() {
        CloseWindow();
        store_.Set("Options", "ProgVersion", "11.2");
        store_.Set("Options", "SrchCtrlsWidth", "250");
        Open();
        QCOMPARE(window_->Panels()->width(), std::max(377, window_->Panels()->minimumSizeHint().width()));
        window_->findChild<QSplitter*>("split")->setSizes({450, 700});
        const int chosen = window_->Panels()->width();
        window_->ShowNoteBook();
        QCOMPARE(window_->Panels()->width(), chosen);
        window_->close();
        QCOMPARE(*store_.Get("Options", "SrchCtrlsWidth"), std::to_string(chosen));
    }

    void sorting_keeps_the_focus_note() {
        const int32_t focus = app_->List()[5].id;
        window_->Board()->SetFocusNote(focus);
        emit window_->Tools()->SortChosen(801);
        QCOMPARE(window_->Board()->FocusNote(), focus);
        for (size_t i = 1; i < app_->List().Count(); ++i)
            QVERIFY(app_->List()[i].dateCreated.IsEarlierOrEqual(app_->List()[i - 1].dateCreated));
        QCOMPARE(app_->SortOrder(), 801);
    }

    void keys_move_the_focus_note_as_a_drag_does() {
        const auto ids = [this] {
            const LongList all = app_->List().GetNoteIDs();
            return QList<int32_t>(all.begin(), all.end());
        };
        QList<int32_t> expected = ids();
        const int last = static_cast<int>(expected.size()) - 1, order = app_->SortOrder();
        BoardView& board = FocusBoard();
        const std::tuple<int, const char*, int> moves[] = {{0, "Alt+Down", 1},
                                                           {20, "Alt+Up", 19},
                                                           {0, "Alt+Up", 0},
                                                           {last, "Alt+Down", last},
                                                           {last, "Alt+Up", last - 1}};
        for (const auto& [from, key, to] : moves) {
            const int32_t moved = expected[from];
            board.SetFocusNote(moved);
            const QString card = board.CardText(from);
            PressKeys(&board, {key});
            expected.move(from, to);
            QCOMPARE(ids(), expected);
            QCOMPARE(board.FocusNote(), moved);
            QVERIFY(board.viewport()->rect().intersects(board.CardRect(to)));
            QCOMPARE(board.CardText(to), card);
            QCOMPARE(app_->SortOrder(), order);
        }
        window_->close();
        CloseWindow();
        Open();
        QCOMPARE(ids(), expected);
    }

    void closed_lists_whose_choice_is_carried_out_choose_nothing() {
        QSignalSpy sorted(window_->Tools(), &MainToolBar::SortChosen);
        QSignalSpy switched(window_->Tools(), &MainToolBar::NoteBookChosen);
        QSignalSpy zoomed(window_->Tools(), &MainToolBar::ZoomChosen);
        QSignalSpy shown(window_->Panels(), &ControlBar::ChoiceChanged);
        BringUp(*window_);
        const QStringList names{"NoteBook", "Order of the notes", "Zoom", "Show Category Set:"};
        QStringList met;
        for (QComboBox* const box : window_->findChildren<QComboBox*>()) {
            if (!names.contains(box->accessibleName()))
                continue;
            met.append(box->accessibleName());
            box->addItem("Another");
            const int before = box->currentIndex();
            const Qt::Key keys[] = {Qt::Key_Down, Qt::Key_Up,   Qt::Key_PageDown, Qt::Key_PageUp,
                                    Qt::Key_End,  Qt::Key_Home, Qt::Key_A,        Qt::Key_F4};
            for (const Qt::Key key : keys) {
                box->setFocus();
                QTest::keyClick(box, key);
                QVERIFY2(box->view()->isVisible(), qPrintable(QKeySequence(key).toString()));
                QCOMPARE(box->currentIndex(), before);
                QTest::keyClick(box->view(), Qt::Key_Escape);
                QTRY_VERIFY(!box->view()->isVisible());
            }
            for (const int delta : {-120, 120}) {
                TurnWheel(box, delta);
                QCOMPARE(box->currentIndex(), before);
            }
        }
        QCOMPARE(met.size(), names.size());
        QCOMPARE(sorted.count() + switched.count() + zoomed.count() + shown.count(), 0);
    }

    void switching_the_notebook_keeps_each_list() {
        MakeSample({2000, 100, 200});
        CloseWindow();
        Open();
        QCOMPARE(app_->NoteBookChoices().size(), size_t{2});
        app_->ClearList();
        for (const bool isMain : {false, true}) {
            emit window_->Tools()->NoteBookChosen(isMain ? 0 : 1);
            QCOMPARE(app_->NoteBook().database.IsMain(), isMain);
            QCOMPARE(app_->List().IsEmpty(), isMain);
        }
        QCOMPARE(*store_.Get("Options", "Database"), *store_.Get("Options", "LocalGUID"));
    }

    void closing_stores_place_and_zoom() {
        emit window_->Tools()->ZoomChosen(150);
        window_->close();
        QCOMPARE(*store_.Get("Options", "ZoomLvl"), std::string("150"));
        QVERIFY(!store_.Get("Options", "FrameRect")->ends_with(","));
        const QRect room = qApp->primaryScreen()->availableGeometry();
        QCOMPARE(PlaceOnScreen({-9000, 300, INT32_MAX, 360}), QRect(room.left(), 300, room.width(), 60));
        QCOMPARE(PlaceOnScreen({-190, 30, 10, 90}), QRect(-190, 30, 200, 60));
        QCOMPARE(PlaceOnScreen({-191, 30, 9, 90}), std::nullopt);
        QCOMPARE(PlaceOnScreen({30, room.bottom() - 8, 90, 2000}), std::nullopt);
        QCOMPARE(PlaceOnScreen({90, 90, 30, 30}), std::nullopt);
        CloseWindow();
        Open();
        QCOMPARE(window_->Board()->Options().zoom, 1.5);
    }

    void what_closing_cant_write_is_told_in_a_box_unless_it_is_an_order() {
        const std::filesystem::path list = app_->NoteBook().paths.LastViewList();
        Block(list);
        prompts_.seen.clear();
        {
            struct ClosesWindow : IgnoresClose {
                QWidget* window = nullptr;
                bool eventFilter(QObject* object, QEvent* event) override {
                    if (event->type() == QEvent::Close)
                        window->close();
                    return IgnoresClose::eventFilter(object, event);
                }
            } stays;  // or the test would end with the program
            stays.window = window_.get();
            const QuitGuard guard;
            QWidget other;
            other.installEventFilter(&stays);
            other.show();
            QEvent quit(QEvent::Quit);
            QCoreApplication::sendEvent(qApp, &quit);
        }
        QVERIFY(!window_->isVisible());
        QVERIFY(prompts_.seen.empty());
        window_->show();
        window_->close();
        QVERIFY(!window_->isVisible());
        QCOMPARE(Told(), QStringList("Not Saved"));
        QVERIFY(prompts_.seen[0].find(list.string()) != std::string::npos);
    }

    void keys_reach_every_pane() {
        BoardView& board = *window_->Board();
        const auto press = [this](const char* key) { PressKeys(window_.get(), {key}); };
        window_->activateWindow();
        press("Ctrl+F");
        QVERIFY(SearchBox()->hasFocus());
        press("F6");
        QVERIFY(Panel(PanelKind::Categories)->Tree()->hasFocus());
        board.SetFocusNote(-1);
        press("F6");
        QVERIFY(board.hasFocus());
        QCOMPARE(board.FocusNote(), board.Model().IDAt(0));
        QTest::keyClick(&board, Qt::Key_End);
        const int32_t last = board.FocusNote();
        press("Shift+F6");
        board.verticalScrollBar()->setValue(0);
        press("F6");
        QCOMPARE(board.FocusNote(), last);
        QVERIFY(board.VisibleRows().second == board.Model().Count());
        Trigger("Next Pane");
        QVERIFY(SearchBox()->hasFocus());
        Trigger("Previous Pane");
        QVERIFY(board.hasFocus());
        press("Shift+F6");
        QVERIFY(Panel(PanelKind::Categories)->Tree()->hasFocus());
        // Tab stops at the panel that is open; the arrows open the others.
        for (QToolButton* const tab : window_->Panels()->findChildren<QToolButton*>())
            if (tab->isChecked())
                tab->setFocus(Qt::TabFocusReason);
        for (const char* const key : {"Right", "Right", "Right", "Left"})
            PressKeys(QApplication::focusWidget(), {key});
        QCOMPARE(window_->Panels()->Page(), 2);
        board.SetFocusNote(board.Model().IDAt(0));
        QVERIFY(TellsOfFocusChild(board));
    }

    void what_a_narrow_tool_bar_has_no_room_for_comes_with_the_button_at_its_end() {
        window_->activateWindow();
        window_->Panels()->SetPage(static_cast<int>(PanelKind::KeyWords));
        window_->resize(window_->fontMetrics().averageCharWidth() * 80, 600);
        QCoreApplication::processEvents();
        auto* const more = In<QToolButton>(*window_->Tools(), "qt_toolbar_ext_button");
        const QList<QComboBox*> lists = window_->Tools()->findChildren<QComboBox*>();
        const auto shown = [&lists] {
            return std::count_if(lists.begin(), lists.end(), [](auto* list) { return list->isVisible(); });
        };
        QVERIFY(more->isVisible() && shown() < lists.size());
        TakeShot(*window_, "main-narrow");
        more->setFocus(Qt::TabFocusReason);
        QTest::keyClick(more, Qt::Key_Space);
        QTRY_COMPARE(shown(), lists.size());
        TakeShot(*window_, "main-narrow-unfolded");
    }

    void keys_of_the_board_copy_cut_paste_and_undo() {
        QClipboard& clipboard = *QApplication::clipboard();
        const size_t notes = app_->List().Count();
        const int32_t id = app_->List()[2].id;
        const QString text = QString::fromStdString(ToUtf8(app_->List()[2].plainText)).simplified();
        BoardView* const board = &FocusBoard();
        clipboard.setText("kept");
        board->SetFocusNote(-1);
        PressKeys(board, {"Ctrl+C", "Ctrl+X"});
        QCOMPARE(clipboard.text(), QStringLiteral("kept"));
        board->SetFocusNote(id);
        PressKeys(board, {"Ctrl+Ins"});
        QCOMPARE(clipboard.text().simplified(), text);
        QVERIFY(clipboard.mimeData()->data("text/rtf").startsWith("{\\rtf1") && clipboard.mimeData()->hasHtml());
        clipboard.clear();
        PressKeys(board, {"Shift+Del"});
        QCOMPARE(clipboard.text().simplified(), text);
        QCOMPARE(app_->List().Count(), notes - 1);
        QVERIFY(app_->NoteBook().index.Contains(id));
        InDialog<NoteEditorWindow>([board] { PressKeys(board, {"Ctrl+V"}); },
                                   [&](NoteEditorWindow& editor) {
                                       const std::string pasted = ToUtf8(editor.Text()->PlainText());
                                       QCOMPARE(QString::fromStdString(pasted).simplified(), text);
                                       prompts_.answers = {PromptAnswer::Yes};
                                       editor.CancelNote();
                                   });
        const int32_t other = app_->List()[0].id;
        board->SetFocusNote(other);
        DeleteByKey();
        QVERIFY(!app_->List().Contains(other));
        PressKeys(board, {"Alt+Backspace"});
        QVERIFY(app_->List().Contains(other));
        // In a field the same keys are those of the field.
        SearchBox()->setFocus();
        clipboard.setText("lamp");
        PressKeys(SearchBox(), {"Ctrl+V"});
        QCOMPARE(SearchBox()->text(), QStringLiteral("lamp"));
    }

    void what_a_panel_gives_the_list_is_undone_by_key() {
        const auto values = [this] { return std::pair(app_->List()[0].borderColor, app_->List()[0].keyWords); };
        const auto before = values();
        const int32_t focus = app_->List()[5].id;
        FocusBoard().SetFocusNote(focus);
        QAction* const undo = MenuEntry(*window_, "Undo Delete");
        QMenu* const menu = qobject_cast<QMenu*>(undo->associatedObjects().value(0));
        QVERIFY(menu);
        const auto isOffered = [&] {
            emit menu->aboutToShow();
            const bool isEnabled = undo->isEnabled();
            emit menu->aboutToHide();
            return isEnabled;
        };
        emit window_->Panels()->CommandRequested({.action = PanelAction::SetListColor, .color = MakeRgb(1, 120, 1)});
        emit window_->Panels()->CommandRequested({.action = PanelAction::AttachKeyWord, .name = "read again"});
        QVERIFY(values().second.ends_with("read again") && values().first == MakeRgb(1, 120, 1));
        for (const char* const words : {"Undo Key Word", "Undo Border Color"}) {
            QCOMPARE(undo->text().remove('&'), QString::fromLatin1(words));  // before the menu has been open too
            QVERIFY(isOffered());
            QVERIFY(values() != before);
            PressKeys(&FocusBoard(), {"Ctrl+Z"});
        }
        QVERIFY(values() == before);
        QCOMPARE(window_->Board()->FocusNote(), focus);
        QCOMPARE(undo->text().remove('&'), QStringLiteral("Undo Delete"));
        QVERIFY(!isOffered());
        QVERIFY(faults_.faults.empty());
    }

    void damaged_files_and_kept_copies_are_told() {
        const NoteBookPaths paths = app_->NoteBook().paths;
        const LongList listed = app_->List().GetNoteIDs();
        const int32_t id = listed[0];
        const std::filesystem::path file = *app_->NoteBook().index.FindPath(id);
        const std::filesystem::path damaged[] = {paths.Categories(), paths.Sources(), file};
        for (const std::filesystem::path& cut : damaged)
            std::filesystem::resize_file(cut, std::filesystem::file_size(cut) - 40);
        faults_.bar = window_->Faults();
        const QStringList said = ToldDuring([&] { ReloadAndShow(listed); });
        QVERIFY2(said.last().startsWith("said Sources.dat, "), qPrintable(said.join('\n')));
        QVERIFY(window_->Faults()->isVisible() && !OffersTryAgain());
        const QString told = window_->Faults()->findChild<QLabel*>()->text();
        for (const std::filesystem::path& cut : damaged)
            QVERIFY2(told.contains(QString::fromStdString(cut.filename().string())), qPrintable(told));
        TakeShot(*window_, "main-damaged");
        Press(*window_->Faults(), "Hide");
        app_->ReloadNotes(listed);
        QVERIFY(!window_->Faults()->isVisible());
        // What a save keeps beside is told where it stays when the editor has closed.
        InDialog<NoteEditorWindow>([this, id] { emit window_->Board()->EditRequested(id); },
                                   [](NoteEditorWindow& editor) {
                                       QTest::keyClicks(editor.Text()->Edit(), "Changed ");
                                       editor.SaveNote();
                                       QVERIFY(!editor.isVisible());
                                   });
        QVERIFY(std::filesystem::exists(file.string() + ".kept"));
        QVERIFY(window_->Faults()->isVisible());
        const std::string kept = file.filename().string() + ".kept";
        QVERIFY(std::any_of(faults_.faults.begin(), faults_.faults.end(),
                            [&](const Fault& fault) { return fault.what.find(kept) != std::string::npos; }));
    }

    void try_again_reads_anew_and_keeps_the_list() {
        faults_.bar = window_->Faults();
        const LongList kept{app_->List()[7].id, app_->List()[2].id};
        app_->ClearList();
        for (const int32_t id : kept)
            app_->Gather(LongList{id});
        ShowWithoutSources(kept);
        QVERIFY(OffersTryAgain());
        const size_t before = app_->NoteBook().sources.Count();
        Press(*window_->Faults(), "Try again");
        QVERIFY(!window_->Faults()->isVisible());
        QVERIFY(app_->NoteBook().sources.Count() > before);
        QVERIFY(app_->List().GetNoteIDs() == kept);
        QCOMPARE(Pane(4), QStringLiteral("In List:    2"));
    }

    void what_is_written_later_leaves_the_bar() {
        faults_.bar = window_->Faults();
        const std::filesystem::path list = app_->NoteBook().paths.LastViewList();
        Block(list);
        store_.isFull = true;
        app_->SaveOptions();
        app_->SaveOptions();
        QCOMPARE(window_->Faults()->Count(), size_t{2});
        QVERIFY(OffersTryAgain());
        store_.isFull = false;
        app_->SaveOptions();
        QCOMPARE(window_->Faults()->Count(), size_t{1});
        QVERIFY(!OffersTryAgain());
        std::filesystem::remove_all(list);
        app_->SaveOptions();
        QVERIFY(!window_->Faults()->isVisible());
    }

    void try_again_repeats_a_print_that_failed() {
        OpenWithCompanions();
        const auto print = [this](bool fails) {
            companions_.failure = fails ? std::optional<std::string>("No such file or directory") : std::nullopt;
            Trigger("Save/Print Current Notes...");
        };
        print(true);
        QVERIFY(OffersTryAgain());
        Press(*window_->Faults(), "Try again");
        QVERIFY(OffersTryAgain());
        companions_.failure.reset();
        const size_t before = companions_.started.size();
        Press(*window_->Faults(), "Try again");
        QCOMPARE(companions_.started.size(), before + 1);
        QVERIFY(!window_->Faults()->isVisible());
        // One that comes to its end leaves nothing of an earlier one to repeat.
        print(true);
        QVERIFY(OffersTryAgain());
        print(false);
        QVERIFY(!OffersTryAgain());
        // Once the user has put the bar away, what comes later doesn't print.
        print(true);
        Press(*window_->Faults(), "Hide");
        window_->Faults()->Add({"The note could not be saved", "/data/Notes/DAY01012020.dat", "No space left"});
        QVERIFY(window_->Faults()->isVisible() && !OffersTryAgain());
    }

    // A question within the loop of the command could not be answered before its end.
    void a_draft_found_by_try_again_waits_for_the_command_after_it() {
        background_ = std::make_unique<QtProgress>(theme_);
        OpenWithCompanions();
        background_->SetParent(window_.get());
        companions_.failure = "No such file or directory";
        Trigger("Save/Print Current Notes...");
        ShowWithoutSources(app_->List().GetNoteIDs());
        companions_.failure.reset();
        Draft draft;
        draft.note = app_->List()[0];
        draft.note.plainText = "Unsaved words";
        draft.note.rtfText = "{\\rtf1\\ansi Unsaved words}";
        QVERIFY(DraftStore(app_->NoteBook().paths).WriteDraft(draft).Ok());
        prompts_.seen.clear();
        const size_t before = companions_.started.size();
        size_t printed = 0;
        bool free = false;
        prompts_.answers = {PromptAnswer::Cancel};
        prompts_.whileShown = [&] {
            printed = companions_.started.size() - before;
            free = IsFree();
        };
        Press(*window_->Faults(), "Try again");
        QTRY_COMPARE(Told(), QStringList("Unsaved Note"));
        QCOMPARE(printed, size_t{1});
        QVERIFY(free);
        prompts_.whileShown = nullptr;
    }

    // A screen reader triggers them even so.
    void commands_of_the_menu_do_nothing_while_another_one_is_at_work_or_asks() {
        QApplication::clipboard()->clear();
        const size_t listed = app_->List().Count();
        const auto trigger = [this] {
            Trigger("Paste As New Note...");
            Trigger("Clear Current Notes");
        };
        QSignalSpy asked[] = {{window_->Tools(), &MainToolBar::NewNoteRequested},
                              {window_->Tools(), &MainToolBar::CalendarRequested}};
        const auto tryAll = [&] {
            trigger();
            for (const char* const name : {"newNote", "calendar"})
                In<QToolButton>(*window_, name)->click();
        };
        {
            const Busy busy;
            tryAll();
        }
        QMessageBox question(window_.get());
        question.open();
        tryAll();
        question.close();
        QCOMPARE(asked[0].count() + asked[1].count(), 0);
        QVERIFY(prompts_.seen.empty());
        QCOMPARE(app_->List().Count(), listed);
        trigger();
        QCOMPARE(Told(), QStringList("Nothing To Capture"));
        QCOMPARE(app_->List().Count(), size_t{0});
    }

    void stands_in_both_looks() {
        const std::pair<const char*, int> pages[] = {
            {"main-categories", 100}, {"main-sources", 100}, {"main-keywords", 150}, {"main-colors", 200}};
        for (int page = 0; page < 4; ++page) {
            CloseWindow();
            Open();
            window_->Panels()->SetPage(page);
            emit window_->Tools()->ZoomChosen(pages[page].second);
            Panel(PanelKind::Categories)->Tree()->expandToDepth(1);
            if (page == 1)
                Search("\"fresnel\" OR lens");
            BothLooks{theme_}.Shoot(*window_, pages[page].first);
        }
    }
};

}  // namespace lore

QTEST_MAIN(lore::MainWindowTest)
#include "main_window_test.moc"
