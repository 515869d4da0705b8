#include "sources/source_editor.h"
#include "ui/archive_entry.h"
#include "ui/calendar/calendar_grid.h"
#include "ui/calendar/calendar_host.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/calendar/task_manager_dialog.h"
#include "ui/controls/dialog_frame.h"
#include "ui/controls/panel_section.h"
#include "ui/import/differences_window.h"
#include "ui/import/import_window.h"
#include "ui/note_editor/note_actions.h"
#include "ui/ports/qt_prompts.h"
#include "ui/sources/edit_source_dlg.h"
#include "ui/sources/source_dialogs.h"
#include "ui/window_rules.h"
#include "ui/window_world.h"

namespace lore {
namespace {

constexpr int kNotes = 74;
constexpr int kLargeLetters = 27;  // pixels, 20 points
constexpr QSize kScreen(1280, 800);

/// The area that scrolls a dialog's content.
QScrollArea* PaneOf(const QWidget& dialog) {
    return dialog.findChild<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly);
}

/// The sizes of a splitter's parts, or the widths of a list's columns without the last one, which takes the rest.
QList<int> SizesOf(const QWidget* part) {
    if (const auto* const split = qobject_cast<const QSplitter*>(part))
        return split->sizes();
    const QHeaderView* const header = qobject_cast<const QTreeView*>(part)->header();
    QList<int> widths;
    for (int column = 0; column < header->count() - 1; ++column)
        widths.append(header->sectionSize(column));
    return widths;
}

void Drag(QWidget* widget, const QPoint& from, const QPoint& by) {
    const QPoint to = widget->mapToGlobal(from + by);
    DragOn(*widget, from, from + by);
    QTest::mouseRelease(widget, Qt::LeftButton, {}, widget->mapFromGlobal(to));
}

/// Moves the line between the first two parts.
void Redivide(QWidget* part) {
    if (const auto* const split = qobject_cast<QSplitter*>(part)) {
        QWidget* const handle = split->handle(1);
        return Drag(handle, handle->rect().center(),
                    split->orientation() == Qt::Vertical ? QPoint(0, -40) : QPoint(-40, 0));
    }
    const QHeaderView* const header = qobject_cast<const QTreeView*>(part)->header();
    QWidget* const viewport = header->viewport();
    Drag(viewport, {header->sectionViewportPosition(0) + header->sectionSize(0) - 1, viewport->height() / 2}, {40, 0});
}

}  // namespace

using Steps = std::function<void(QDialog&)>;

/// Windows open within the smallest screen that the program is made for, whatever letters the desktop has, with all
/// that they need in sight or in reach. What the user makes of their parts is there the next time.
class FitsScreenTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    void Show(QDialog& dialog, const Steps& steps) {
        if (size_.isValid())
            dialog.resize(size_);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCoreApplication::processEvents();
        steps(dialog);
        dialog.done(QDialog::Rejected);
        store_.values.erase({"Windows", dialog.objectName().toStdString()});  // its place; the next one is as large
    }
    void InCalendar(const Steps& steps) {
        TaskManagerDialog dialog(*app_, theme_, window_.get());
        Show(dialog, steps);
    }
    void InDay(const Steps& steps) {
        CalendarHost host(*app_, theme_, window_.get());
        EditDayDialog dialog(host, DateTime(2026, 3, 14), window_.get());
        Show(dialog, steps);
    }
    void InImport(const Steps& steps) {
        std::vector<ArchiveNote> entries;
        for (int i = 1; i <= kNotes; ++i)
            entries.push_back(MakeEntry("{" + std::to_string(i) + "}", "A note of the archive"));
        NoteHeads existing;
        existing.emplace("{SAME}", MakeEntry("{SAME}", "The same").note);
        entries.push_back(MakeEntry("{SAME}", "The same"));
        ImportComparison comparison(entries, existing, guids_, [](int32_t) { return std::optional<ArchiveNote>(); });
        ImportWindow window(comparison, {}, theme_, prompts_, store_, window_.get());
        Show(window, steps);
    }
    void InDifferences(const Steps& steps) {
        DifferencesWindow window(CompareForImport(MakeEntry("{A}", "As it is there"), MakeEntry("{A}", "As it was")),
                                 theme_, store_, nullptr);
        Show(window, steps);
    }
    void InSource(const Steps& steps) {
        WritingCommands& commands = window_->Notes()->Commands();
        SourceEditor editor = SourceEditor::ForNew(commands.Sources());
        const SourceDialogs windows(commands, store_, theme_);
        CEditSourceDlg dialog(editor, windows, window_.get());
        Show(dialog, steps);
    }
    static QFont Letters(int pixels) {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        return font;
    }

    using Opener = void (FitsScreenTest::*)(const Steps&);
    void CheckKept(Opener opener, const QString& part, const char* key) {
        const auto open = [&](const std::function<void(QWidget*)>& steps) {
            (this->*opener)([&](QDialog& dialog) {
                QWidget* const found = part.isEmpty() ? static_cast<QWidget*>(dialog.findChild<QSplitter*>())
                                                      : dialog.findChild<QTreeView*>(part);
                QVERIFY2(found, key);
                steps(found);
            });
        };
        const auto stored = [&] { return store_.Get("Windows", key); };
        QList<int> first, drawn;
        open([&](QWidget* found) { first = SizesOf(found); });
        QVERIFY2(!stored(), "nobody has moved anything");
        open([&](QWidget* found) {
            Redivide(found);
            drawn = SizesOf(found);
        });
        QVERIFY(drawn != first && drawn.size() == first.size());
        QVERIFY(stored());
        open([&](QWidget* found) {
            QCOMPARE(SizesOf(found), drawn);
            if (auto* const same = found->window()->findChild<QCheckBox*>("showSame")) {
                same->click();  // the list is filled anew
                QCOMPARE(SizesOf(found), drawn);
            }
        });
        for (const char* const damaged : {"", "200", "0,0,0,0,0,0", "0,0", "200,wide", "200,-3", "2000000,2000000"}) {
            store_.Set("Windows", key, damaged);
            open([&](QWidget* found) { QCOMPARE(SizesOf(found), first); });
        }
    }

    QSize size_;  ///< of the next windows; their own where it isn't valid
    QFont usual_;

private slots:
    void initTestCase() {
        usual_ = QApplication::font();
        if (QGuiApplication::primaryScreen()->size() != kScreen)
            QSKIP("needs a screen of 1280x800");
    }
    void init() { OpenSample(); }
    void cleanup() {
        QApplication::setFont(usual_);
        size_ = QSize();
        CloseWindow();
    }

    void opens_within_the_screen() {
        const Opener openers[] = {&FitsScreenTest::InCalendar, &FitsScreenTest::InDay, &FitsScreenTest::InImport,
                                  &FitsScreenTest::InSource};
        for (int i = 0; i < 8; ++i) {
            QApplication::setFont(i % 2 == 0 ? usual_ : Letters(kLargeLetters));
            (this->*openers[i / 2])([](QDialog& dialog) {
                QCOMPARE(dialog.size(), dialog.size().boundedTo(kScreen - QSize(0, kSpace * 5)));
                QCOMPARE(FaultsOfWindow(dialog).join('\n'), QString());
                QCOMPARE(PaneOf(dialog)->horizontalScrollBar()->maximum(), 0);
                QCOMPARE(PaneOf(dialog)->verticalScrollBar()->maximum(), 0);
                dialog.resize(1, 1);
                QCoreApplication::processEvents();
                QCOMPARE(FaultsOfWindow(dialog).filter("edge").join('\n'), QString());
            });
        }
    }

    void places_are_kept_within_the_screen() {
        const auto open = [this](bool maximizes) {
            DialogFrame dialog("Kept", "Kept", store_, window_.get());
            dialog.show();
            const QRect place = dialog.geometry();
            if (maximizes)
                dialog.showMaximized();
            dialog.done(QDialog::Rejected);
            return place;
        };
        const QRect screen(QPoint(), kScreen);
        for (const char* const stored : {"300,200,500,400", "0,0,2000,1400", "1100,700,500,400", "-60,-40,500,400",
                                         "-5000,0,500,400", "2147483647,0,2147483647,9"}) {
            store_.Set("Windows", "Kept", stored);
            const QRect first = open(false);
            QVERIFY2(screen.marginsRemoved({kSpace, kSpace * 5, kSpace, kSpace}).contains(first), stored);
            QCOMPARE(open(true), first);
            QCOMPARE(open(false), first);
        }
    }

    void first_sizes_show_what_matters() {
        QApplication::setFont(Letters(13));
        InCalendar([this](QDialog& dialog) {
            const CalendarGrid& grid = *static_cast<TaskManagerDialog&>(dialog).Grid();
            const QFontMetrics letters(theme_.Font(TextSize::Small));
            QVERIFY(grid.CellRect(8).width() >= letters.horizontalAdvance("6:00PM - Dentist") + 4 * kSpace);
        });
        InImport([](QDialog& dialog) {
            const auto* const list = dialog.findChild<QTreeWidget*>("importList");
            QVERIFY(list->viewport()->height() / list->visualItemRect(list->topLevelItem(0)).height() >= 20);
            QCOMPARE(list->horizontalScrollBar()->maximum(), 0);
        });
    }

    void splits_and_columns_are_kept() {
        size_ = QSize(700, 620);
        // The window, the part (its splitter, where it has no name), and where it is stored.
        const std::tuple<Opener, const char*, const char*> parts[] = {
            {&FitsScreenTest::InSource, "", "EditSourceSplit"},
            {&FitsScreenTest::InDifferences, "", "NoteDifferencesSplit"},
            {&FitsScreenTest::InDifferences, "differences", "NoteDifferencesColumns"},
            {&FitsScreenTest::InImport, "importList", "ImportNotesColumns"},
            {&FitsScreenTest::InDay, "events", "EditDayEventColumns"},
            {&FitsScreenTest::InDay, "reminders", "EditDayReminderColumns"}};
        for (const auto& [opener, part, key] : parts)
            CheckKept(opener, QLatin1String(part), key);
    }

    /// More content than any screen has.
    void content_is_scrolled_and_the_buttons_stay() {
        DialogFrame dialog("Long", "Long", store_, window_.get());
        QList<QPushButton*> rows;
        for (int row = 0; row < 40; ++row) {
            rows.append(new QPushButton(QStringLiteral("Row %1").arg(row), &dialog));
            rows.last()->setMinimumWidth(1400);
            dialog.Content()->addWidget(rows.last());
        }
        rows.last()->setMinimumHeight(kScreen.height());
        QPushButton* const side = dialog.AddSideButton(QString(200, 'w'));
        QPushButton* const save = dialog.AddButton("Save");
        rows.first()->setFocus();
        Show(dialog, [&](QDialog&) {
            const QScrollArea& pane = *PaneOf(dialog);
            QVERIFY(dialog.height() > kScreen.height() * 3 / 4 && dialog.height() < kScreen.height());
            QVERIFY(dialog.minimumHeight() < kScreen.height() * 3 / 4);
            QVERIFY(dialog.rect().contains(QRect(save->mapTo(&dialog, QPoint()), save->size())));
            QVERIFY2(side->geometry().bottom() < save->geometry().top(), "one row doesn't hold both");
            QVERIFY(rows.last()->mapTo(pane.viewport(), QPoint()).y() >= pane.viewport()->height());
            rows.last()->setFocus(Qt::ShortcutFocusReason);
            QVERIFY(pane.viewport()->rect().contains(rows.last()->mapTo(pane.viewport(), QPoint())));
            QTest::keyClick(rows.last(), Qt::Key_Tab);
            QCOMPARE(dialog.focusWidget(), side);
            save->setFocus();
            QTest::keyClick(save, Qt::Key_Tab);
            QCOMPARE(dialog.focusWidget(), rows.first());
            QCOMPARE(pane.verticalScrollBar()->value(), 0);
        });
    }

    void keys_work_in_sight_beside_the_largest_letters() {
        QApplication::setFont(Letters(kLargeLetters * 3 / 2));
        InSource([](QDialog& dialog) {
            const auto* const title = dialog.findChild<QLineEdit*>("title");
            QVERIFY(title->hasFocus());
            QVERIFY(title->visibleRegion().boundingRect().height() > title->fontMetrics().height());
        });
        InCalendar([](QDialog& dialog) {
            CalendarGrid& grid = *static_cast<TaskManagerDialog&>(dialog).Grid();
            const auto seen = [&grid] { return grid.visibleRegion().boundingRect(); };
            QVERIFY(seen().height() < grid.height());
            QCOMPARE(seen().top(), 0);
            PressKeys(&grid, {"Ctrl+Home", "Down", "Down", "Down"});
            QVERIFY(seen().contains(grid.CellRect(grid.View().CurrentCell())));
            PressKeys(&grid, {"Ctrl+Home", "Up", "Up"});
            QVERIFY(seen().contains(grid.CellRect(grid.View().CurrentCell())));
        });
    }

    void a_file_dialog_shows_sizes_and_dates_whole() {
        const QTemporaryDir folder;
        PutBytes(folder.filePath("notes.lbe").toStdString(), std::string(249'000, 'x'));
        QFileDialog dialog(window_.get(), {}, folder.path());
        dialog.setViewMode(QFileDialog::Detail);
        dialog.show();
        const auto* const files = dialog.findChild<QTreeView*>();
        QTRY_VERIFY(files->model()->rowCount(files->rootIndex()) == 1);
        for (int column = 1; column < 4; ++column) {
            const QModelIndex cell = files->model()->index(0, column, files->rootIndex());
            QTRY_VERIFY2(files->columnWidth(column) >= files->sizeHintForIndex(cell).width(),
                         qPrintable(cell.data().toString()));
        }
    }

    void a_field_for_a_name_shows_a_long_one() {
        QtPrompts prompts;
        prompts.SetParent(window_.get());
        for (const QFont& letters : {usual_, Letters(kLargeLetters)}) {
            QApplication::setFont(letters);
            Next<QInputDialog>([](QInputDialog& dialog) {
                const auto* const field = dialog.findChild<QLineEdit*>();
                QVERIFY(field->width() >= std::min(field->fontMetrics().averageCharWidth() * 50, 900));
                QVERIFY(dialog.width() < kScreen.width());
                QCOMPARE(field->text(), QString("Lights"));
                dialog.accept();
            });
            QCOMPARE(prompts.AskText("Name:", "Rename", "Lights"), std::optional<std::string>("Lights"));
            Next<QInputDialog>([](QInputDialog& dialog) { dialog.reject(); });
            QCOMPARE(prompts.AskText("Name:", "Rename", "Lights"), std::nullopt);
        }
    }

    /// Marks and icons don't look lost beside large letters.
    void marks_grow_with_the_letters() {
        QApplication::setFont(Letters(kLargeLetters));
        const int letters = QFontMetrics(QApplication::font()).height();
        for (const auto metric :
             {QStyle::PM_IndicatorWidth, QStyle::PM_ExclusiveIndicatorHeight, QStyle::PM_SmallIconSize})
            QVERIFY(QApplication::style()->pixelMetric(metric) >= letters * 2 / 3);
        QWidget window;
        QVERIFY(MakeIconButton("plus", "Add", theme_, &window)->iconSize().height() >= letters * 2 / 3);
        QComboBox box(&window);
        box.addItem("A choice");
        QVERIFY(box.sizeHint().width() >= box.fontMetrics().horizontalAdvance("A choice") + letters * 2 / 3);
        box.setAccessibleDescription("Box");
        box.adjustSize();
        window.show();
        QCOMPARE(FaultsOfWindow(window).join('\n'), QString());
        // An icon stands apart from its word.
        QPixmap red(kSpace * 8, kSpace * 8);
        red.fill(Qt::red);
        QPushButton button(red, "M");
        button.resize(button.sizeHint());
        const QImage shown = button.grab().toImage();
        const auto isGround = [&](int x) {
            return shown.pixelColor(x, shown.height() / 2) == shown.pixelColor(kSpace * 2, shown.height() / 2);
        };
        int end = shown.width() - 1, gap = 0;
        while (end > 0 && shown.pixelColor(end, shown.height() / 2) != Qt::red)
            --end;
        while (end + gap + 1 < shown.width() && isGround(end + gap + 1))
            ++gap;
        QVERIFY2(gap >= letters / 5, qPrintable(QString::number(gap)));
    }
};

}  // namespace lore

QTEST_MAIN(lore::FitsScreenTest)
#include "fits_screen_test.moc"
