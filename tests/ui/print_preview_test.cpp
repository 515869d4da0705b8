#include <QDoubleSpinBox>
#include <QMessageBox>
#include <QPageRanges>
#include <QPageSetupDialog>
#include <QPrinter>
#include <memory>

#include "printsave/page_view.h"
#include "printsave/preview_window.h"
#include "rtf/rtf.h"
#include "support/memory_store.h"
#include "support/read_world.h"
#include "support/refused_threads.h"
#include "ui/board_fixture.h"
#include "ui/controls.h"
#include "ui/look/theme.h"
#include "ui/tab_walk.h"

namespace lore {

/// The window of PrintSave as a user drives it.
class PrintPreviewTest : public QObject {
    Q_OBJECT

private:
    /// So many sources of one style, each two lines long.
    static PrintContent Bibliography(int count) {
        SourceList sources;
        for (int i = 0; i < count; ++i) {
            CSource source;
            source.SourceID = i + 1;
            source.FormattedText =
                "Stevenson, Alan. 1850. A Rudimentary Treatise on the History, Construction, and "
                "Illumination of Lighthouses, Part " +
                std::to_string(i + 1) + ". London: John Weale. https://example.org/" + std::to_string(i);
            source.SpanKinds = {1};
            source.SpanStarts = {23};
            source.SpanEnds = {107};
            sources.AddTail(source);
        }
        return PrintContent(sources);
    }

    void Open(ContentSource content) {
        window_ = std::make_unique<PreviewWindow>(std::move(content), theme_, store_);
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }

    void Open(PrintContent content) { Open(ContentSource{std::move(content)}); }
    /// A bibliography whose first 50 entries are there at once; the others come once they are let.
    ContentSource Slow(int count) {
        return {Bibliography(50), [this, count] {
                    others_.acquire();
                    return Bibliography(count);
                }};
    }

    QAction* Command(const QString& text) const { return MenuEntry(*window_, text); }
    void Run(std::initializer_list<const char*> commands) const {
        for (const char* const command : commands)
            Command(command)->trigger();
    }
    QComboBox* Fonts() const { return In<QComboBox>(*window_, "fonts"); }
    /// What of the pages is seen now.
    QImage Seen() const {
        QWidget& viewport = *window_->Preview()->viewport();
        QImage image(viewport.size(), QImage::Format_RGB32);
        viewport.render(&image);
        return image;
    }
    QString PageText() const { return In<QLabel>(*window_, "page")->text(); }
    /// The bytes of a file that the window saves; none if it can't.
    std::string Saved(const char* name) {
        const QString file = folder_.filePath(name);
        return window_->Save(file) ? BytesOf(file.toStdString()) : std::string();
    }
    static int PagesOf(const std::string& pdf) {
        int pages = 0;
        for (size_t at = pdf.find("/Type /Page\n"); at != std::string::npos; at = pdf.find("/Type /Page\n", at + 1))
            ++pages;
        return pages;
    }

    Theme theme_{*qApp, Appearance::Light};
    std::unique_ptr<PreviewWindow> window_;
    MemoryStore store_;
    QTemporaryDir folder_;
    QSemaphore others_;

private slots:
    void init() { store_ = MemoryStore(); }
    void cleanup() {
        others_.release(100);
        window_.reset();
        others_.acquire(others_.available());
    }
    void pages_are_turned() {
        Open(Bibliography(80));
        const int pages = window_->PageCount();
        QVERIFY(pages >= 3);
        QTRY_COMPARE(PageText(), QStringLiteral("Page 1 of %1").arg(pages));
        QVERIFY(!Command("Previous Page")->isEnabled());
        const QString second = QStringLiteral("Page 2 of %1").arg(pages);
        BringUp(*window_);
        QCOMPARE(ToldDuring([this] { Run({"Next Page"}); }), QStringList("focus " + second));
        QCOMPARE(PageText(), second);
        Fonts()->setFocus();
        QVERIFY(ToldDuring([this] { Run({"Previous Page", "Next Page"}); }).contains("said " + second));
        Run({"Last Page"});
        QCOMPARE(window_->Preview()->CurrentPage(), pages);
        QVERIFY(!Command("Next Page")->isEnabled());
        const double before = window_->Preview()->Zoom();
        QVERIFY(ToldDuring([this] { Run({"Zoom In"}); }).last().startsWith("said Zoom "));
        QVERIFY(window_->Preview()->Zoom() > before);
        for (int i = 0; i < 40; ++i)
            Command("Zoom Out")->trigger();
        QVERIFY(window_->Preview()->Zoom() > 0.05);
    }

    void first_pages_stand_there_while_the_rest_is_laid_out() {
        Open(Slow(600));
        QVERIFY(!window_->IsWhole());
        QVERIFY(window_->PageCount() >= 2);
        QVERIFY(PageText().startsWith("Page 1 \u2013"));
        QVERIFY(window_->Preview()->IsDrawn());
        const QImage early = Seen();
        QVERIFY(early.pixelColor(early.width() / 2, 24) == Qt::white);
        Run({"Next Page"});
        QScrollBar* const bar = window_->Preview()->verticalScrollBar();
        const int place = bar->value() + 100;
        bar->setValue(place);
        others_.release();
        QTRY_VERIFY(window_->IsWhole());
        QVERIFY(window_->PageCount() > 20);
        QCOMPARE(PageText(), QStringLiteral("Page 2 of %1").arg(window_->PageCount()));
        QCOMPARE(bar->value(), place);
        Run({"First Page"});
        QTRY_VERIFY(window_->Preview()->IsDrawn());
        QVERIFY2(Seen() == early, "the first page stands as it stood");
    }

    void what_needs_all_pages_waits_for_them() {
        for (const bool hasThreads : {true, false}) {
            const std::unique_ptr<RefusedThreads> refused(hasThreads ? nullptr : new RefusedThreads);
            others_.release(3);
            Open(Slow(400));
            Run({"Last Page"});
            QVERIFY(window_->IsWhole());
            const int pages = window_->PageCount();
            QCOMPARE(window_->Preview()->CurrentPage(), pages);
            QTRY_VERIFY(window_->Preview()->IsDrawn());
            Open(Slow(400));
            QCOMPARE(PagesOf(Saved("whole.pdf")), pages);
            Open(Slow(400));
            QVERIFY(Saved("whole.txt").find("Part 400.") != std::string::npos);
        }
    }

    void each_page_has_its_text_for_a_screen_reader() {
        Open(Slow(400));
        others_.release();
        QTRY_VERIFY(window_->IsWhole());
        QAccessibleInterface* const pages = QAccessible::queryAccessibleInterface(window_->Preview());
        QCOMPARE(pages->childCount(), window_->PageCount());
        QString all;
        for (int page = 0; page < pages->childCount(); ++page) {
            QAccessibleTextInterface* const text = pages->child(page)->textInterface();
            all += text->text(0, text->characterCount()) + '\n';
        }
        for (int part = 1; part <= 400; ++part)
            QCOMPARE(all.count(QStringLiteral("Part %1. London").arg(part)), 1);
        QVERIFY(all.indexOf("Part 399.") < all.indexOf("Part 400."));
        Fonts()->setCurrentText("Courier New");  // the first pages are shown till the others are laid out
        QVERIFY(pages->child(0)->text(QAccessible::Name).contains("being laid out"));
        QVERIFY(pages->child(0)->textInterface()->characterCount() > 0);
    }

    void layouts_overtake_each_other() {
        Open(Slow(400));
        for (const char* font : {"Courier New", "Arial", "Times New Roman", "Courier New"}) {
            Fonts()->setCurrentText(font);
            QTest::qWait(1);
        }
        others_.release(5);
        QTRY_VERIFY(window_->IsWhole());
        const int pages = window_->PageCount();
        window_->Preview()->SetCurrentPage(9);
        Fonts()->setCurrentText("Arial");
        QVERIFY(window_->Preview()->CurrentPage() < 9);
        QTRY_VERIFY2(window_->IsWhole(), "what was made once isn't made again");
        QVERIFY(window_->PageCount() < pages);
        QCOMPARE(window_->Preview()->CurrentPage(), 9);
        Open(Slow(400));
        others_.release();
        window_.reset();  // while it is laid out
    }

    void only_pages_in_sight_are_drawn() {
        Open(Bibliography(900));
        window_->resize(1000, 900);
        PageView* const view = window_->Preview();
        QVERIFY(window_->PageCount() > 40);
        const auto visible = [view] {
            const auto [first, last] = view->VisiblePages();
            return last - first + 1;
        };
        Run({"Fit Page"});
        QCOMPARE(visible(), 1);
        Run({"Facing Pages"});
        QVERIFY(visible() <= 4);
        for (int page : {1, 17, window_->PageCount(), 2}) {
            view->SetCurrentPage(page);
            const auto [first, last] = view->VisiblePages();
            QVERIFY(first <= page && page <= last);
            QCOMPARE(view->CurrentPage(), page);
        }
        Run({"All Pages"});
        QVERIFY(visible() > 4 && visible() < window_->PageCount());
        QTest::keyClick(view, Qt::Key_End);
        QCOMPARE(view->CurrentPage(), window_->PageCount());
        QTest::keyClick(view, Qt::Key_Home);
        QCOMPARE(view->CurrentPage(), 1);
    }

    void the_width_is_fitted_until_somebody_zooms() {
        Open(Bibliography(900));
        window_->resize(1000, 900);
        PageView* const view = window_->Preview();
        Run({"One Page"});
        const double fitted = view->Zoom();
        window_->resize(1200, 900);
        QVERIFY(view->Zoom() > fitted);
        view->SetCurrentPage(20);
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->value() + 77);
        Run({"Zoom In", "Zoom In"});
        QCOMPARE(view->CurrentPage(), 20);
        const double zoomed = view->Zoom();
        window_->resize(1000, 900);
        QCOMPARE(view->Zoom(), zoomed);
    }

    void another_font_lays_out_anew_and_is_remembered() {
        Open(Bibliography(80));
        const int pages = window_->PageCount();
        Fonts()->setCurrentText("Courier New");
        const int wide = window_->PageCount();
        QVERIFY(wide > pages);
        window_->close();
        Open(Bibliography(80));
        QCOMPARE(Fonts()->currentText(), QStringLiteral("Courier New"));
        QCOMPARE(window_->PageCount(), wide);
        Open(PrintContent(DocumentFromText("Notes have fonts of their own", "Arial", 24)));
        QVERIFY(!Fonts());
    }

    void another_paper_makes_more_pages_and_is_remembered() {
        Open(Bibliography(80));
        const int pages = window_->PageCount();
        QPageLayout paper = window_->Paper();
        paper.setPageSize(QPageSize(QPageSize::A5));
        paper.setOrientation(QPageLayout::Landscape);
        window_->SetPaper(paper);
        QVERIFY(window_->PageCount() > pages * 2);
        const std::string pdf = Saved("a5.pdf"), rtf = Saved("a5.rtf");
        QCOMPARE(PagesOf(pdf), window_->PageCount());
        QVERIFY(pdf.find("/MediaBox [0 0 595") != std::string::npos);
        const char kPaper[] = "\\paperw11906\\paperh8391\\margl1134\\margr1134\\margt1134\\margb1134\\landscape";
        QVERIFY2(rtf.find(kPaper) != std::string::npos, rtf.c_str());
        for (const QPageSize& size :
             {QPageSize(QPageSize::Letter), QPageSize(QSizeF(111.3, 222), QPageSize::Millimeter)}) {
            const QPageLayout chosen(size, QPageLayout::Landscape, QMarginsF(30, 10, 12.5, 0), QPageLayout::Millimeter);
            window_->SetPaper(chosen);
            Open(Bibliography(80));
            QVERIFY2(window_->Paper().isEquivalentTo(chosen), store_.Get("Windows", "PrintSavePaper")->c_str());
        }
        for (const char* const damaged : {"", "210,297", "210,297,portrait,20,20,20,nan", "0,0,portrait,0,0,0,0",
                                          "210,297,sideways,0,0,0,0", "210,297,portrait,100,0,100,0"}) {
            store_.Set("Windows", "PrintSavePaper", damaged);
            Open(Bibliography(2));
            QCOMPARE(window_->Paper().pageSize().id(), QPageSize::A4);
        }
    }

    void margins_that_leave_no_room_are_told_and_asked_again() {
        Open(Bibliography(80));
        const QPageLayout before = window_->Paper();
        const int pages = window_->PageCount();
        const std::optional<std::string> stored = store_.Get("Windows", "PrintSavePaper");
        int setups = 0;
        QString told;
        QTimer driver;
        connect(&driver, &QTimer::timeout, this, [&] {
            QWidget* const modal = QApplication::activeModalWidget();
            if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
                told = box->text();
                box->accept();
            } else if (auto* const setup = qobject_cast<QPageSetupDialog*>(modal)) {
                for (const char* const name : {"leftMargin", "rightMargin"})
                    In<QDoubleSpinBox>(*setup, name)->setValue(100);
                ++setups < 2 ? setup->accept() : setup->reject();
            }
        });
        driver.start(20);
        Run({"Page Setup..."});
        QVERIFY2(told.contains("20 mm"), qPrintable(told));
        QVERIFY(window_->Paper().isEquivalentTo(before));
        QCOMPARE(window_->PageCount(), pages);
        QCOMPARE(store_.Get("Windows", "PrintSavePaper"), stored);
    }

    void a_range_is_printed() {
        Open(Bibliography(80));
        const int all = window_->PageCount();
        QPageLayout across = window_->Paper();
        across.setOrientation(QPageLayout::Landscape);
        window_->SetPaper(across);
        const int allAcross = window_->PageCount();
        across.setOrientation(QPageLayout::Portrait);
        window_->SetPaper(across);
        QVERIFY(allAcross > all);
        const std::tuple<const char*, QPageLayout::Orientation, int, int> kRanges[] = {
            {"", QPageLayout::Portrait, 1, all},       {"2", QPageLayout::Portrait, 1, 1},
            {"2-3", QPageLayout::Portrait, 3, 6},      {"1-99", QPageLayout::Portrait, 1, all},
            {"1,3", QPageLayout::Portrait, 1, 2},      {"99", QPageLayout::Portrait, 1, 0},
            {"", QPageLayout::Landscape, 1, allAcross}};
        for (const auto& [ranges, orientation, copies, pages] : kRanges) {
            QFile::remove(folder_.filePath("range.pdf"));
            QPrinter printer(QPrinter::HighResolution);
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(folder_.filePath("range.pdf"));
            across.setOrientation(orientation);
            printer.setPageLayout(across);
            printer.setPageRanges(QPageRanges::fromString(ranges));
            printer.setCopyCount(copies);
            window_->PrintTo(printer);
            QCOMPARE(PagesOf(BytesOf(folder_.filePath("range.pdf").toStdString())), pages);
        }
    }

    void every_form_is_saved_and_a_failure_told() {
        Open(Bibliography(3));
        for (const SavedForm& form : kSavedForms) {
            const QString file = folder_.filePath(QStringLiteral("saved.") + form.ending);
            QVERIFY2(window_->Save(file), form.ending);
            QVERIFY(QFileInfo(file).size() > 100);
        }
        for (const QString& file : {folder_.filePath("no folder/a.pdf"), folder_.filePath("a.doc")}) {
            QString told;
            QTimer::singleShot(0, window_.get(), [&] {
                auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                told = box ? box->text() : QString();
                if (box)
                    box->accept();
            });
            QVERIFY(!window_->Save(file));
            QVERIFY2(told.contains(".pdf"), qPrintable(told));
        }
    }

    void the_mark_of_an_item_stands_beside_its_first_line() {
        for (const char* const list : {"ul", "ol"})
            CheckMark(
                FirstPageOf(QStringLiteral("<%1><li><span style=\"font-size:36pt\">xxxx</span></li></%1>").arg(list)));
    }

    void a_cell_that_begins_with_a_list_keeps_its_ground() {
        const QImage page =
            FirstPageOf("<table><td style=\"background-color:#ff0000\"><ul><li>x</li></ul></td></table>");
        QCOMPARE(page.pixelColor(82, 88), QColor(Qt::red));
    }

private:
    static QImage FirstPageOf(const QString& html) {
        QImage page(794, 1123, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        PagedText(html, StandardPaper()).DrawPage(painter, 0, PagedText::kPixelsPerInch);
        return page;
    }
    static void CheckMark(const QImage& page) {
        // What stands on the line, from the left: the mark, maybe of several pieces, and four letters.
        QList<QRect> pieces;
        for (int x = 0; x < page.width(); ++x) {
            QRect column;
            for (int y = 0; y < page.height(); ++y)
                if (qGray(page.pixel(x, y)) < 128)
                    column |= QRect(x, y, 1, 1);
            if (column.isEmpty())
                continue;
            if (!pieces.isEmpty() && pieces.last().right() == x - 1)
                pieces.last() |= column;
            else
                pieces.append(column);
        }
        QVERIFY2(pieces.size() >= 5, qPrintable(QString::number(pieces.size())));
        const QRect letter = pieces.last(), dot = pieces[pieces.size() - 5];
        const int gap = pieces[pieces.size() - 4].left() - dot.right();
        QVERIFY2(gap >= letter.width() / 3, qPrintable(QString::number(gap)));
        QVERIFY(letter.top() <= dot.center().y() && dot.center().y() <= letter.bottom());
    }

private slots:
    void paper_looks_the_same_in_a_dark_window() {
        const QString html = QString::fromStdString(Bibliography(5).Html());
        theme_.SetAppearance(Appearance::Dark);
        const QImage dark = FirstPageOf(html);
        theme_.SetAppearance(Appearance::Light);
        QVERIFY(dark == FirstPageOf(html));
    }

    void stands_in_both_looks() {
        const BothLooks looks{theme_};
        Open(Bibliography(40));
        window_->resize(900, 760);
        looks.Shoot(*window_, "print-preview");
        Run({"Fit Page", "Facing Pages"});
        looks.Shoot(*window_, "print-preview-facing");
    }
};

}  // namespace lore

QTEST_MAIN(lore::PrintPreviewTest)
#include "print_preview_test.moc"
