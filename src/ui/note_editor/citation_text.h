#pragma once

#include <QTextLayout>
#include <QWidget>

#include "bibliography/source.h"

namespace lore {

/// A citation with its emphasis, as high as its lines are at the width that it gets. A word that is wider goes on in
/// the next line.
class CitationView : public QWidget {
public:
    /// `source` is formatted.
    CitationView(const CSource& source, QWidget* parent);

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void LayOut(int width) const;

    mutable QTextLayout layout_;
    mutable int laidOut_ = -1;  // the width of the lines
    mutable int height_ = 0;
};

}  // namespace lore
