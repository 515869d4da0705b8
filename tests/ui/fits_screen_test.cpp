#include <functional>

#include "ui/archive_entry.h"
#include "ui/calendar/calendar_grid.h"
#include "ui/calendar/calendar_host.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/calendar/task_manager_dialog.h"
#include "ui/dialog_frame.h"
#include "ui/import/import_window.h"
#include "ui/qt_prompts.h"
#include "ui/source_window.h"
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

bool IsInSight(const QWidget& widget, const QScrollArea& pane) {
    const QRect place(widget.mapTo(pane.viewport(), QPoint()), widget.size());
    return pane.viewport()->rect().contains(place);
}

}  // namespace

using Steps = std::function<void(QDialog&)>;

/// Windows open within the smallest screen that the program is made for, whatever letters the desktop has, with all
/// that they need in sight or in reach.
class FitsScreenTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    static void Show(QDialog& dialog, const Steps& steps) {
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCoreApplication::processEvents();
        steps(dialog);
        dialog.done(QDialog::Rejected);
    }
    void InCalendar(const Steps& steps) {
        TaskManagerDialog dialog(*app_, *theme_, window_.get());
        Show(dialog, steps);
    }
    void InDay(const Steps& steps) {
        CalendarHost host(*app_, *theme_, window_.get());
        EditDayDialog dialog(host, DateTime(2026, 3, 14), window_.get());
        Show(dialog, steps);
    }
    void InImport(const Steps& steps) {
        std::vector<ArchiveNote> entries;
        for (int i = 1; i <= kNotes; ++i)
            entries.push_back(MakeEntry("{" + std::to_string(i) + "}", "A note of the archive"));
        ImportComparison comparison(entries, {}, guids_, [](int32_t) { return std::optional<ArchiveNote>(); });
        ImportWindow window(comparison, {}, *theme_, prompts_, store_, window_.get());
        Show(window, steps);
    }
    void InSource(const Steps& steps) {
        InNewSource(*window_, store_, *theme_, [&](CEditSourceDlg& dialog) { Show(dialog, steps); });
    }
    static QFont Letters(int pixels) {
        QFont font = QApplication::font();
        font.setPixelSize(pixels);
        return font;
    }

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
        CloseWindow();
    }

    void opens_within_the_screen() {
        using Opener = void (FitsScreenTest::*)(const Steps&);
        const Opener openers[] = {&FitsScreenTest::InCalendar, &FitsScreenTest::InDay, &FitsScreenTest::InImport,
                                  &FitsScreenTest::InSource};
        for (int i = 0; i < 8; ++i) {
            QApplication::setFont(i % 2 == 0 ? usual_ : Letters(kLargeLetters));
            (this->*openers[i / 2])([](QDialog& dialog) {
                QVERIFY2(dialog.size() == dialog.size().boundedTo(kScreen - QSize(0, kSpace * 5)),
                         qPrintable(QStringLiteral("%1x%2").arg(dialog.width()).arg(dialog.height())));
                QCOMPARE(FaultsOfWindow(dialog).join('\n'), QString());
                QCOMPARE(PaneOf(dialog)->horizontalScrollBar()->maximum(), 0);
                QCOMPARE(PaneOf(dialog)->verticalScrollBar()->maximum(), 0);
                dialog.resize(1, 1);
                QCoreApplication::processEvents();
                QCOMPARE(FaultsOfWindow(dialog).filter("edge").join('\n'), QString());
            });
            store_.values.clear();  // the places, so that each opens as for the first time
        }
    }

    void a_large_window_of_an_earlier_screen_is_made_smaller() {
        store_.Set("Windows", "EditSource", "0,0,2000,1400");
        InSource([](QDialog& dialog) { QVERIFY(dialog.height() < kScreen.height()); });
    }

    void first_sizes_show_what_matters() {
        QApplication::setFont(Letters(13));
        InCalendar([this](QDialog& dialog) {
            const CalendarGrid& grid = *static_cast<TaskManagerDialog&>(dialog).Grid();
            const QFontMetrics letters(theme_->Font(TextSize::Small));
            QVERIFY(grid.CellRect(8).width() >= letters.horizontalAdvance("6:00PM - Dentist") + 4 * kSpace);
        });
        InImport([](QDialog& dialog) {
            const auto* const list = dialog.findChild<QTreeWidget*>("importList");
            QVERIFY(list->viewport()->height() / list->visualItemRect(list->topLevelItem(0)).height() >= 20);
            QCOMPARE(list->horizontalScrollBar()->maximum(), 0);
        });
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
        QPushButton* const side = dialog.AddSideButton(QString(200, 'w'));
        QPushButton* const save = dialog.AddButton("Save");
        rows.first()->setFocus();
        Show(dialog, [&](QDialog&) {
            const QScrollArea& pane = *PaneOf(dialog);
            QVERIFY(dialog.height() > kScreen.height() * 3 / 4 && dialog.height() < kScreen.height());
            QVERIFY(dialog.minimumHeight() < kScreen.height() * 3 / 4);
            QVERIFY(dialog.rect().contains(QRect(save->mapTo(&dialog, QPoint()), save->size())));
            QVERIFY2(side->geometry().bottom() < save->geometry().top(), "one row doesn't hold both");
            QVERIFY(!IsInSight(*rows.last(), pane));
            rows.last()->setFocus(Qt::ShortcutFocusReason);
            QCOMPARE(pane.verticalScrollBar()->value(), pane.verticalScrollBar()->maximum());
            QTest::keyClick(rows.last(), Qt::Key_Tab);
            QCOMPARE(dialog.focusWidget(), side);
            save->setFocus();
            QTest::keyClick(save, Qt::Key_Tab);
            QCOMPARE(dialog.focusWidget(), rows.first());
            QCOMPARE(pane.verticalScrollBar()->value(), 0);
        });
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
        QComboBox box;
        box.addItem("A choice");
        const int least = box.fontMetrics().horizontalAdvance("A choice") + letters * 2 / 3;
        QVERIFY(box.sizeHint().width() >= least);
    }
};

}  // namespace lore

QTEST_MAIN(lore::FitsScreenTest)
#include "fits_screen_test.moc"
