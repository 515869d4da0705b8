#pragma once

#include <QAbstractScrollArea>
#include <memory>

#include "ui/sources/citation_layout.h"

namespace lore {

class Theme;

/// One citation as lists of sources show it, on the ground of the window around it.
class CSourcePreviewWnd : public QAbstractScrollArea {
    Q_OBJECT

public:
    CSourcePreviewWnd(const Theme& theme, QWidget* parent);

    /// Shows a formatted source as it is now.
    void Show(const CSource& source);
    QString Text() const { return accessibleDescription(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void LayOut();

    const Theme& theme_;
    CSource source_;
    std::unique_ptr<CitationLayout> layout_;
};

}  // namespace lore
