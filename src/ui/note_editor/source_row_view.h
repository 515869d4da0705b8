#pragma once

#include <QFrame>

#include "edit/source_rows.h"

class QLineEdit;
class QPushButton;

namespace lore {

class CitationView;
class Theme;

/// One row of the panel of sources.
class SourceRowView : public QFrame {
    Q_OBJECT

public:
    SourceRowView(SourceRows& rows, size_t row, const Theme& theme, QWidget* parent = nullptr);

    void SetSelected(bool selected);
    /// Opens the line under the citation, as a click on it does.
    void OpenLine();
    QLineEdit* Line() const { return edit_; }
    QPushButton* LineButton() const { return line_; }

signals:
    void Clicked();
    void Changed();
    void RemoveRequested();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CloseLine();
    void Restyle();
    QString Citation() const;

    SourceRows& rows_;
    size_t row_;
    const Theme& theme_;
    CitationView* citation_;
    QPushButton* line_;
    QLineEdit* edit_;
    bool selected_ = false;
};

}  // namespace lore
