#include <functional>

#include "ui/archive_entry.h"
#include "ui/calendar/calendar_host.h"
#include "ui/calendar/edit_day_dialog.h"
#include "ui/import/differences_window.h"
#include "ui/import/import_window.h"
#include "ui/source_window.h"
#include "ui/window_world.h"

namespace lore {
namespace {

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

/// What the user makes of the parts of a window is there the next time.
class KeptLayoutTest : public QObject, protected WindowWorld {
    Q_OBJECT

private:
    using Steps = std::function<void(QDialog&)>;
    void Show(QDialog& dialog, const Steps& steps) {
        dialog.resize(700, 620);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCoreApplication::processEvents();
        steps(dialog);
        dialog.done(QDialog::Rejected);
        store_.values.erase({"Windows", dialog.objectName().toStdString()});  // its place; the next one is as large
    }
    void InImport(const Steps& steps) {
        NoteHeads existing;
        existing.emplace("{SAME}", MakeEntry("{SAME}", "The same").note);
        ImportComparison comparison({MakeEntry("{NEW}", "A new text"), MakeEntry("{SAME}", "The same")}, existing,
                                    guids_, [](int32_t) { return std::optional<ArchiveNote>(); });
        ImportWindow window(comparison, {}, *theme_, prompts_, store_, nullptr);
        Show(window, steps);
    }
    void InDifferences(const Steps& steps) {
        DifferencesWindow window(CompareForImport(MakeEntry("{A}", "As it is there"), MakeEntry("{A}", "As it was")),
                                 *theme_, store_, nullptr);
        Show(window, steps);
    }
    void InSource(const Steps& steps) {
        InNewSource(*window_, store_, *theme_, [&](CEditSourceDlg& dialog) { Show(dialog, steps); });
    }
    void InDay(const Steps& steps) {
        CalendarHost host(*app_, *theme_, window_.get());
        EditDayDialog dialog(host, DateTime(2026, 3, 14), window_.get());
        Show(dialog, steps);
    }

private slots:
    void init() { OpenSample(); }
    void cleanup() { CloseWindow(); }

    void splits_and_columns_are_kept() {
        using Opener = void (KeptLayoutTest::*)(const Steps&);
        // The window, the part (its splitter, where it has no name), and where it is stored.
        const std::tuple<Opener, const char*, const char*> parts[] = {
            {&KeptLayoutTest::InSource, "", "EditSourceSplit"},
            {&KeptLayoutTest::InDifferences, "", "NoteDifferencesSplit"},
            {&KeptLayoutTest::InDifferences, "differences", "NoteDifferencesColumns"},
            {&KeptLayoutTest::InImport, "importList", "ImportNotesColumns"},
            {&KeptLayoutTest::InDay, "events", "EditDayEventColumns"},
            {&KeptLayoutTest::InDay, "reminders", "EditDayReminderColumns"}};
        for (const auto& [opener, part, key] : parts)
            CheckKept(opener, QLatin1String(part), key);
    }

private:
    void CheckKept(void (KeptLayoutTest::*opener)(const Steps&), const QString& part, const char* key) {
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
};

}  // namespace lore

QTEST_MAIN(lore::KeptLayoutTest)
#include "kept_layout_test.moc"
