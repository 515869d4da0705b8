#include "printsave/preview_window.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPageRanges>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <cerrno>

#include "base/file_io.h"
#include "platform/printed_faults.h"
#include "printsave/page_accessible.h"
#include "printsave/page_view.h"
#include "printsave/page_worker.h"
#include "printsave/stored_paper.h"
#include "settings/settings.h"
#include "ui/controls/dialog_parts.h"
#include "ui/look/announce.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/look/theme_tool_bar.h"
#include "ui/look/window_place.h"

namespace lore {

namespace {

constexpr char kPlace[] = "PrintSave", kFont[] = "PrintSaveFont";
constexpr int kDefaultWidth = 980, kDefaultHeight = 1000;
constexpr double kZoomStep = 1.2;

Paper PaperOf(const QPageLayout& layout) {
    const auto twips = [](qreal millimeters) { return qRound(millimeters * 1440 / 25.4); };
    const QSizeF sheet = layout.fullRect(QPageLayout::Millimeter).size();
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    return {twips(sheet.width()), twips(sheet.height()),  twips(margins.left()),
            twips(margins.top()), twips(margins.right()), twips(margins.bottom())};
}

/// The pages that a printer is to draw, from 0, in its order.
std::vector<int> PagesFor(const QPrinter& printer, int count) {
    const QPageRanges ranges = printer.pageRanges();
    std::vector<int> pages;
    for (int page = 0; page < count; ++page) {
        if (ranges.isEmpty() || ranges.contains(page + 1))
            pages.push_back(page);
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst)
        std::ranges::reverse(pages);
    const int copies = printer.supportsMultipleCopies() ? 1 : std::max(printer.copyCount(), 1);
    std::vector<int> all;
    for (size_t i = 0; i < pages.size() * static_cast<size_t>(copies); ++i)
        all.push_back(printer.collateCopies() ? pages[i % pages.size()] : pages[i / static_cast<size_t>(copies)]);
    return all;
}

void DrawPages(const PagedText& text, QPrinter& printer) {
    const std::vector<int> pages = PagesFor(printer, text.PageCount());
    if (pages.empty())
        return;
    QPainter painter(&printer);
    for (size_t i = 0; i < pages.size(); ++i) {
        if (i > 0)
            printer.newPage();
        text.DrawPage(painter, pages[i], printer.resolution());
    }
}

QString FontLabel(const BibliographyFont& font) {
    return QString::fromUtf8(font.name.data(), static_cast<qsizetype>(font.name.size()));
}

}  // namespace

struct PreviewWindow::Command {
    QString text;
    QList<QKeySequence> keys;
    std::function<void()> run;
    const char* icon = nullptr;  ///< with one it stands in the tool bar too
    bool isNamed = false;        ///< its text stands there beside the icon
};

PreviewWindow::PreviewWindow(ContentSource content, const Theme& theme, SettingsStore& store)
    : source_(std::move(content)), theme_(theme), store_(store), paper_(StandardPaper()) {
    setObjectName("printSave");
    setContextMenuPolicy(Qt::NoContextMenu);  // its own would hide the tool bar for good
    const bool isBibliography = source_.beginning.IsBibliography();
    setWindowTitle((isBibliography ? tr("Bibliography") : tr("Notes")) + tr(" \u2013 Print or Save"));
    if (QLocale::system().measurementSystem() == QLocale::ImperialUSSystem)
        paper_.setPageSize(QPageSize(QPageSize::Letter), QMarginsF());
    paper_ = StoredPaper(store_).value_or(paper_);
    const int stored = ToQString(store_.Get(kWindowsSection, kFont).value_or("0")).toInt();
    if (isBibliography)
        font_ = static_cast<size_t>(std::clamp<int>(stored, 0, std::size(kBibliographyFonts) - 1));
    MakeCommands();
    InstallPageAccessibility();
    preview_ = new PageView(theme_, this);
    preview_->setObjectName("preview");
    preview_->setAccessibleName(tr("Pages"));
    setCentralWidget(preview_);
    page_ = new QLabel(this);
    page_->setObjectName("page");
    page_->setContentsMargins(kSpace * 2, 0, kSpace * 2, 0);
    statusBar()->setSizeGripEnabled(false);
    statusBar()->addPermanentWidget(page_);
    connect(statusBar(), &QStatusBar::messageChanged, this, [this](const QString& text) { Announce(*this, text); });
    connect(preview_, &PageView::CurrentPageChanged, this, &PreviewWindow::ShowPage);
    connect(&theme_, &Theme::Changed, preview_->viewport(), qOverload<>(&QWidget::update));
    if (source_.makeWhole) {
        worker_ = new PageWorker(this);
        connect(worker_, &PageWorker::LaidOut, this, &PreviewWindow::ShowWhole);
        connect(worker_, &PageWorker::Drawn, preview_, &PageView::Take);
    }
    DressMoreButton(*tools_);
    LayOut();
    preview_->FitWidth();
    RestorePlace();
    preview_->setFocus();
}

PreviewWindow::~PreviewWindow() = default;

void PreviewWindow::MakeCommands() {
    tools_ = addToolBar(tr("Tool bar"));
    tools_->setObjectName("tools");
    tools_->setMovable(false);
    tools_->setContextMenuPolicy(Qt::PreventContextMenu);
    tools_->setIconSize(QSize(kSpace * 4, kSpace * 4));
    tools_->setContentsMargins(kSpace * 2, kSpace, kSpace * 2, kSpace);
    const auto zoom = [this](double factor) {
        return [this, factor] { preview_->SetZoom(preview_->Zoom() * factor); };
    };
    QMenu& file = *menuBar()->addMenu(tr("&File"));
    AddCommand(file, {tr("&Print..."), {QKeySequence::Print}, [this] { Print(); }, "printer", true});
    AddCommand(file, {tr("&Save As..."), {QKeySequence::Save}, [this] { AskAndSave(); }, "save", true});
    AddCommand(file, {tr("Page Set&up..."), {Qt::CTRL | Qt::SHIFT | Qt::Key_P}, [this] { SetUpPage(); }, "file", true});
    file.addSeparator();
    AddCommand(file, {tr("&Close"), {QKeySequence(Qt::CTRL | Qt::Key_W), QKeySequence(Qt::CTRL | Qt::Key_Q)}, [this] {
                          close();
                      }});
    QMenu& view = *menuBar()->addMenu(tr("&View"));
    tools_->addSeparator();
    AddCommand(view, {tr("Zoom &In"), {QKeySequence::ZoomIn, Qt::CTRL | Qt::Key_Equal}, zoom(kZoomStep), "zoom-in"});
    AddCommand(view, {tr("Zoom &Out"), {QKeySequence::ZoomOut}, zoom(1 / kZoomStep), "zoom-out"});
    AddCommand(view, {tr("Fit &Width"), {Qt::CTRL | Qt::Key_1}, [this] { preview_->FitWidth(); }});
    AddCommand(view, {tr("Fit &Page"), {Qt::CTRL | Qt::Key_2}, [this] { preview_->FitPage(); }});
    view.addSeparator();
    AddCommand(view, {tr("On&e Page"), {Qt::CTRL | Qt::Key_3}, [this] {
                          preview_->SetArrangement(PageView::Arrangement::One);
                      }});
    AddCommand(view, {tr("&Facing Pages"), {Qt::CTRL | Qt::Key_4}, [this] {
                          preview_->SetArrangement(PageView::Arrangement::Facing);
                      }});
    AddCommand(view, {tr("&All Pages"), {Qt::CTRL | Qt::Key_5}, [this] {
                          preview_->SetArrangement(PageView::Arrangement::All);
                      }});
    view.addSeparator();
    tools_->addSeparator();
    const auto step = [this](int by) { return [this, by] { GoToPage(preview_->CurrentPage() + by); }; };
    previous_ = AddCommand(view, {tr("P&revious Page"), {Qt::CTRL | Qt::Key_PageUp}, step(-1), "arrow-left"});
    next_ = AddCommand(view, {tr("&Next Page"), {Qt::CTRL | Qt::Key_PageDown}, step(1), "arrow-right"});
    AddCommand(view, {tr("Firs&t Page"), {Qt::CTRL | Qt::Key_Home}, [this] { GoToPage(1); }});
    AddCommand(view, {tr("&Last Page"), {Qt::CTRL | Qt::Key_End}, [this] {
                          Finish();
                          GoToPage(PageCount());
                      }});
    if (source_.beginning.IsBibliography())
        MakeFontChoice(*menuBar());
}

QAction* PreviewWindow::AddCommand(QMenu& menu, const Command& command) {
    QAction* const action = menu.addAction(command.text);
    action->setShortcuts(command.keys);
    connect(action, &QAction::triggered, this, command.run);
    if (command.icon) {
        action->setIcon(theme_.Icon(command.icon));
        action->setIconVisibleInMenu(false);
        tools_->addAction(action);
        if (command.isNamed)
            qobject_cast<QToolButton*>(tools_->widgetForAction(action))
                ->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
    return action;
}

void PreviewWindow::MakeFontChoice(QMenuBar& bar) {
    QMenu& menu = *bar.addMenu(tr("F&ont"));
    fonts_ = new QComboBox(this);
    fonts_->setObjectName("fonts");
    NameBox(*fonts_, tr("Font"));
    auto* const group = new QActionGroup(this);
    for (const BibliographyFont& font : kBibliographyFonts) {
        const int number = fonts_->count();
        fonts_->addItem(FontLabel(font));
        QAction* const action = menu.addAction(QStringLiteral("&%1 %2").arg(number + 1).arg(FontLabel(font)));
        action->setCheckable(true);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, number] { fonts_->setCurrentIndex(number); });
    }
    const int stored = ToQString(store_.Get(kWindowsSection, kFont).value_or("0")).toInt();
    fonts_->setCurrentIndex(std::clamp(stored, 0, fonts_->count() - 1));
    group->actions().at(fonts_->currentIndex())->setChecked(true);
    tools_->addSeparator();
    tools_->addWidget(fonts_);
    connect(fonts_, &QComboBox::currentIndexChanged, this, [this, group](int font) {
        group->actions().at(font)->setChecked(true);
        SetFont(font);
    });
}

void PreviewWindow::RestorePlace() {
    if (!RestoreWindowPlace(*this, store_, kPlace))
        resize(QSize(kDefaultWidth, kDefaultHeight).boundedTo(RoomForWindow(*this).size()));
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
    StoreWindowPlace(store_, kPlace, *this);
    PrintedFaults faults("PrintSave");
    FlushTold(store_, faults);
    QMainWindow::closeEvent(event);
}

int PreviewWindow::PageCount() const {
    return worker_ && IsWhole() ? worker_->PageCount() : text_->PageCount();
}

bool PreviewWindow::IsWhole() const {
    return !worker_ || worker_->IsDone();
}

void PreviewWindow::LayOut() {
    if (worker_) {
        if (worker_->Content() && worker_->IsDone())
            place_ = preview_->CurrentPage();
        const std::shared_ptr<const PrintContent> known = worker_->Content();
        const auto make = [make = source_.makeWhole, known, font = font_] {
            return std::make_shared<const PrintContent>(known ? known->InFont(font) : make().InFont(font));
        };
        worker_->LayOut(make, paper_);
    }
    content_ = std::make_shared<const PrintContent>(source_.beginning.InFont(font_));
    text_ = std::make_unique<PagedText>(QString::fromStdString(content_->Html()), paper_);
    const auto draw = [this](int page, double scale) {
        preview_->Take(page, scale, PictureOfPage(*text_, page, scale));
    };
    const auto read = [this](int page) { return text_->TextOfPage(page); };
    preview_->Show({text_->PageCount(), text_->PaperSize(), draw, read, IsWhole()});
    ShowPage();
}

void PreviewWindow::ShowWhole() {
    content_ = worker_->Content();
    const auto draw = [this](int page, double scale) { worker_->Draw(page, scale); };
    const auto read = [this](int page) {
        QString text;
        worker_->Run([&text, page](const PagedText& pages) { text = pages.TextOfPage(page); });
        return text;
    };
    preview_->Show({worker_->PageCount(), text_->PaperSize(), draw, read});
    if (place_ > preview_->CurrentPage())
        preview_->SetCurrentPage(place_);
    place_ = 1;
    ShowPage();
    Announce(*preview_, page_->text());  // how many there are, whatever has the focus
}

void PreviewWindow::Finish() {
    if (IsWhole())
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    worker_->Finish();
    QGuiApplication::restoreOverrideCursor();
}

void PreviewWindow::WithPages(const std::function<void(const PagedText&)>& work) {
    Finish();
    if (!worker_)
        return work(*text_);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    worker_->Run(work);
    QGuiApplication::restoreOverrideCursor();
}

bool PreviewWindow::SetPaper(QPageLayout paper) {
    paper.setMode(QPageLayout::StandardMode);
    if (!HasRoom(paper))
        return false;
    paper_ = paper;
    StorePaper(store_, paper_);
    LayOut();
    return true;
}

void PreviewWindow::SetFont(int font) {
    font_ = static_cast<size_t>(font);
    store_.Set(kWindowsSection, kFont, std::to_string(font));
    LayOut();
}

void PreviewWindow::PrintTo(QPrinter& printer) {
    QPageLayout paper = printer.pageLayout();
    paper.setMode(QPageLayout::StandardMode);
    printer.setFullPage(true);
    WithPages([&](const PagedText& text) {
        printer.setDocName(text.Title());
        if (paper.isEquivalentTo(paper_) || !HasRoom(paper))
            return DrawPages(text, printer);
        DrawPages(PagedText(QString::fromStdString(content_->Html()), paper), printer);
    });
}

void PreviewWindow::Print() {
    Finish();
    QPrinter printer(QPrinter::HighResolution);
    QPageLayout whole = paper_;
    whole.setMode(QPageLayout::FullPageMode);
    printer.setPageLayout(whole);
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, PageCount());
    if (dialog.exec() != QDialog::Accepted)
        return;
    PrintTo(printer);
    if (printer.printerState() == QPrinter::Error)
        QMessageBox::warning(this, tr("Print"), tr("The printer has refused the pages. Please look at its queue."));
}

void PreviewWindow::AskAndSave() {
    QStringList filters;
    for (const SavedForm& form : kSavedForms)
        filters.append(QStringLiteral("%1 (*.%2)").arg(tr(form.name), QString::fromLatin1(form.ending)));
    QFileDialog dialog(this, tr("Save As"), {}, filters.join(";;"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QString::fromLatin1(kSavedForms[0].ending));
    dialog.selectFile(source_.beginning.IsBibliography() ? tr("Bibliography") : tr("Notes"));
    connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& filter) {
        dialog.setDefaultSuffix(
            QString::fromLatin1(kSavedForms[std::max<qsizetype>(filters.indexOf(filter), 0)].ending));
    });
    bool isSaved = false;  // with another name it may be
    while (!isSaved && dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        isSaved = Save(dialog.selectedFiles().constFirst());
}

bool PreviewWindow::Save(const QString& path) {
    const SavedForm* const form = FindSavedForm(path.toStdString());
    QString failed = tr("The name must end in .pdf, .html, .rtf, .odt or .txt.");
    if (form)
        WithPages([&](const PagedText& text) { failed = SaveContent(*content_, *form, paper_, path, &text); });
    if (failed.isEmpty())
        statusBar()->showMessage(tr("Saved as %1").arg(path));
    else
        QMessageBox::warning(this, tr("Save As"), failed);
    return failed.isEmpty();
}

void PreviewWindow::SetUpPage() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageLayout(paper_);
    while (QPageSetupDialog(&printer, this).exec() == QDialog::Accepted && !SetPaper(printer.pageLayout())) {
        QMessageBox::warning(this, tr("Page Setup"),
                             tr("The margins leave less than %1 mm of the paper to print on.\n\nPlease make them "
                                "smaller, or choose a larger paper.")
                                 .arg(kSmallestRoom));
    }
}

void PreviewWindow::GoToPage(int page) {
    if (page > PageCount())
        Finish();
    preview_->SetCurrentPage(page);
    ShowPage();
}

void PreviewWindow::ShowPage() {
    const int page = preview_->CurrentPage();
    page_->setText(preview_->PageName(page));
    if (!preview_->hasFocus())
        Announce(*preview_, page_->text());
    previous_->setEnabled(page > 1);
    next_->setEnabled(page < PageCount() || !IsWhole());
}

QString SaveContent(const PrintContent& content, const SavedForm& form, const QPageLayout& paper, const QString& path,
                    const PagedText* text) {
    std::optional<std::string> bytes;
    if (std::string_view(form.ending) != "pdf")
        bytes = content.In(form, PaperOf(paper));
    else if (text)
        bytes = MakePdf(*text, paper);
    else
        bytes = MakePdf(PagedText(QString::fromStdString(content.Html()), paper), paper);
    const std::filesystem::path file(QFile::encodeName(path).toStdString());
    const FileResult result = bytes ? WriteFileAtomically(file, *bytes) : FileResult{ENOMEM};
    return result.Ok() ? QString()
                       : QObject::tr("%1 could not be written: %2.").arg(path, QString::fromStdString(result.Reason()));
}

}  // namespace lore
