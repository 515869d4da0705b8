#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QHash>
#include <QPixmap>
#include <functional>

namespace lore {

class ThemeLook;

/// What a PageView shows.
struct ShownPages {
    int count = 0;
    QSizeF paper;  ///< in pixels at zoom 1
    /// Is to draw a page (from 0) at a scale, and to hand the picture to PageView::Take, now or later.
    std::function<void(int page, double scale)> draw = {};
    std::function<QString(int page)> text = {};  ///< what stands on a page, from 0
    bool isWhole = true;                         ///< false: more pages are being laid out
};

/// Sheets of paper one below the other, next to each other in pairs, or many at a glance. Only what is seen is drawn,
/// so that a thousand pages are shown as fast as one.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Arrangement { One, Facing, All };

    PageView(const ThemeLook& theme, QWidget* parent);

    /// Shows these pages from here on. The place stays as far as it is there, and what was seen is seen until its new
    /// picture comes.
    void Show(ShownPages pages);
    /// A page was drawn; no picture if it wasn't wanted any more.
    void Take(int page, double scale, const QImage& picture);

    void SetArrangement(Arrangement arrangement);
    /// 1 shows the paper as large as it is.
    double Zoom() const { return zoom_; }
    /// Cut to what can be used.
    void SetZoom(double zoom);
    /// Both hold for other sizes of the window too, until there is another zoom.
    void FitWidth() { Fit(FitKind::Width); }
    void FitPage() { Fit(FitKind::Page); }

    /// From 1: the page gone to, or after scrolling the one in the middle.
    int CurrentPage() const { return current_ + 1; }
    void SetCurrentPage(int page);
    int PageCount() const { return pages_.count; }
    /// "Page 2 of 38"; all pages from 1.
    QString PageName(int page) const;
    // For screen readers.
    /// What stands on a page, and where it lies on the viewport.
    QString PageText(int page) const;
    QRect PageRect(int page) const { return SheetRect(page - 1); }
    /// The pages in sight: first and last, from 1.
    std::pair<int, int> VisiblePages() const;
    /// For tests: true if all of them stand there as they are.
    bool IsDrawn() const;

signals:
    void CurrentPageChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class FitKind { None, Width, Page, Glance };
    struct Picture {
        QPixmap pixmap;
        double scale = 0;  ///< 0: of other pages than those that are shown now
    };

    void Fit(FitKind kind);
    void ApplyFit();
    /// Takes a zoom and keeps the place.
    void ChangeZoom(double zoom);
    void TellZoom();
    void MakeCurrent(int page);
    void LayOut();
    int CellOf(int page) const;
    QSize SheetSize() const;
    QRect SheetRect(int page) const;
    int PageAt(int contentsY) const;
    double Scale() const { return zoom_ * devicePixelRatioF(); }
    bool HasPicture(int page) const;
    void AskFor(int page);

    const ThemeLook& theme_;
    ShownPages pages_;
    Arrangement arrangement_ = Arrangement::One;
    FitKind fit_ = FitKind::Width;
    double zoom_ = 1;
    int columns_ = 1;
    int current_ = 0;
    bool goes_ = false;                     ///< scrolls to a page
    mutable std::pair<int, QString> read_;  ///< the page that was read last, from 1, and its text
    QCache<int, Picture> pictures_;
    QHash<int, double> asked_;  ///< pages that are drawn at the moment, with their scales
};

}  // namespace lore
