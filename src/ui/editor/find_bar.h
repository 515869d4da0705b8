#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QWidget>
#include <vector>

#include "ui/editor/text_search.h"

class QAction;
class QPushButton;

namespace lore {

class RichTextEdit;
class Theme;

/// Find and replace inside the note. Hits are marked on the screen alone.
class FindBar : public QWidget {
    Q_OBJECT

public:
    FindBar(RichTextEdit& edit, const Theme& theme, QWidget* parent = nullptr);

public slots:
    void ShowFind();
    void ShowReplace();
    void FindNext() { Step(1); }
    void FindPrevious() { Step(-1); }
    void Replace();
    void ReplaceAll();
    void Close();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeRow();
    void MakeReplaceRow();
    void MakeActions();
    QToolButton* MakeTool(const char* icon, const QString& text, void (FindBar::*slot)());
    void Show(bool withReplace);
    void Search();
    void FindHits();
    void Step(int by);
    void Select(size_t hit);
    void ShowHits();
    void ShowCount();
    void ShowResult(const QString& text);

    RichTextEdit& edit_;
    const Theme& theme_;
    QLineEdit* find_ = nullptr;
    QLineEdit* replace_ = nullptr;
    QCheckBox* matchCase_ = nullptr;
    QCheckBox* wholeWords_ = nullptr;
    QLabel* count_ = nullptr;
    QWidget* replaceRow_ = nullptr;
    std::vector<QPushButton*> replaceButtons_;
    std::vector<SearchHit> hits_;
    QTimer again_;
};

}  // namespace lore
