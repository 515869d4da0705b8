#pragma once

#include <QMainWindow>
#include <QPageLayout>
#include <QPrinter>
#include <functional>
#include <memory>

#include "platform/pdf/paged_text.h"
#include "ports/settings_store.h"
#include "printsave/print_content.h"

class QComboBox;
class QLabel;
class QPrintPreviewWidget;
class QToolBar;

namespace lore {

class Theme;

/// Shows contents page by page, prints them and saves them.
class PreviewWindow : public QMainWindow {
    Q_OBJECT

public:
    /// All outlive the window.
    PreviewWindow(PrintContent& content, const Theme& theme, SettingsStore& store);
    ~PreviewWindow() override;

    QPrintPreviewWidget* Preview() const { return preview_; }
    int PageCount() const { return text_->PageCount(); }
    const QPageLayout& Paper() const { return paper_; }
    void SetPaper(const QPageLayout& paper);
    /// Writes the contents in the form that the name ends in. A failure is told in a window.
    bool Save(const QString& path);
    /// Prints to a printer that is set up.
    void PrintTo(QPrinter& printer) const;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Command;
    void MakeCommands();
    QAction* AddCommand(QMenu& menu, const Command& command);
    void MakeFontChoice(QMenuBar& bar);
    void RestorePlace();
    void LayOut();
    void SetFont(int font);
    void Print();
    void AskAndSave();
    void SetUpPage();
    void GoToPage(int page);
    void ShowPage();
    void Restyle();

    PrintContent& content_;
    const Theme& theme_;
    SettingsStore& store_;
    QPrinter printer_;
    QPageLayout paper_;
    std::unique_ptr<PagedText> text_;
    QPrintPreviewWidget* preview_ = nullptr;
    QToolBar* tools_ = nullptr;
    QComboBox* fonts_ = nullptr;
    QLabel* page_ = nullptr;
    QAction *previous_ = nullptr, *next_ = nullptr;
};

/// Writes contents to a file in a form, PDF on this paper. Empty if that went well, otherwise what to tell.
QString SaveContent(const PrintContent& content, const SavedForm& form, const QPageLayout& paper, const QString& path);

}  // namespace lore
