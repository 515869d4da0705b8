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

class LayoutJob;
class PageView;
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
    int PageCount() const { return text_->PageCount(); }
    bool IsWhole() const { return !job_; }
    /// Waits for the pages that are still laid out.
    void Finish();
    const QPageLayout& Paper() const { return paper_; }
    void SetPaper(const QPageLayout& paper);
    /// Writes the contents in the form that the name ends in. A failure is told in a window.
    bool Save(const QString& path);
    /// Prints to a printer that is set up.
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
    void LayOutBeside();
    void TakeWhole();
    void SetFont(int font);
    void Print();
    void AskAndSave();
    void SetUpPage();
    void GoToPage(int page);
    void ShowPage();
    void Restyle();

    ContentSource source_;
    std::shared_ptr<const PrintContent> content_;
    std::shared_ptr<const PrintContent> whole_;  ///< in any font; null until it has been made once
    size_t font_ = 0;
    const Theme& theme_;
    SettingsStore& store_;
    QPageLayout paper_;
    std::unique_ptr<PagedText> text_;
    LayoutJob* job_ = nullptr;  ///< makes the pages behind those of the beginning
    PageView* preview_ = nullptr;
    QToolBar* tools_ = nullptr;
    QComboBox* fonts_ = nullptr;
    QLabel* page_ = nullptr;
    QAction *previous_ = nullptr, *next_ = nullptr;
};

/// Writes contents to a file in a form, PDF on this paper. Empty if that went well, otherwise what to tell.
QString SaveContent(const PrintContent& content, const SavedForm& form, const QPageLayout& paper, const QString& path);

}  // namespace lore
