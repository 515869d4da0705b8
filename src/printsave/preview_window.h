#pragma once

#include <QMainWindow>
#include <QPageLayout>
#include <functional>
#include <memory>

#include "platform/pdf/paged_text.h"
#include "ports/settings_store.h"
#include "printsave/content_source.h"

class QComboBox;
class QLabel;
class QPrinter;
class QToolBar;

namespace lore {

class PageView;
class PageWorker;
class Theme;

/// Shows contents page by page, prints them and saves them. The first pages stand there at once; what needs all pages
/// waits for those that are still laid out beside the window.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The theme and the store outlive the window.
    PreviewWindow(ContentSource content, const Theme& theme, SettingsStore& store);
    ~PreviewWindow() override;

    PageView* Preview() const { return preview_; }
    /// Of the pages that are laid out.
    int PageCount() const;
    bool IsWhole() const;
    /// Waits for the pages that are still laid out.
    void Finish();
    const QPageLayout& Paper() const { return paper_; }
    /// False, and nothing happens, if its margins leave too little to print on.
    bool SetPaper(QPageLayout paper);
    /// Writes the contents in the form that the name ends in. A failure is told in a window.
    bool Save(const QString& path);
    /// Prints to a printer that is set up: its pages, as often as it wants them, laid out for its paper where that
    /// isn't the one of the window.
    void PrintTo(QPrinter& printer);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Command;
    void MakeCommands();
    QAction* AddCommand(QMenu& menu, const Command& command);
    void MakeFontChoice(QMenuBar& bar);
    void RestorePlace();
    void LayOut();
    void ShowWhole();
    /// Runs work with all pages.
    void WithPages(const std::function<void(const PagedText&)>& work);
    void SetFont(int font);
    void Print();
    void AskAndSave();
    void SetUpPage();
    void GoToPage(int page);
    void ShowPage();

    ContentSource source_;
    std::shared_ptr<const PrintContent> content_;  ///< all of it, once it has been made; otherwise the beginning
    size_t font_ = 0;
    const Theme& theme_;
    SettingsStore& store_;
    QPageLayout paper_;
    std::unique_ptr<PagedText> text_;  ///< the first pages, or all if they are few
    PageWorker* worker_ = nullptr;     ///< has all pages; null if they are few
    int place_ = 1;                    ///< the page to go to once all pages are there again
    PageView* preview_ = nullptr;
    QToolBar* tools_ = nullptr;
    QComboBox* fonts_ = nullptr;
    QLabel* page_ = nullptr;
    QAction *previous_ = nullptr, *next_ = nullptr;
};

/// Writes contents to a file in a form, PDF on this paper. `text` is the same laid out; null if it isn't. Empty if that
/// went well, otherwise what to tell.
QString SaveContent(const PrintContent& content, const SavedForm& form, const QPageLayout& paper, const QString& path,
                    const PagedText* text = nullptr);

}  // namespace lore
