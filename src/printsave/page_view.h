#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QPixmap>

namespace lore {

class PagedText;
class ThemeLook;

/// Sheets of paper one below the other, next to each other in pairs, or many at a glance. Only what is seen is drawn,
/// so that a thousand pages are shown as fast as one.
class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Arrangement { One, Facing, All };

    PageView(const ThemeLook& theme, QWidget* parent);

    /// Shows this text from here on; it outlives the view, or the next call. The place stays as far as it is there.
    void SetText(const PagedText& text);

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
    /// The pages in sight: first and last, from 1.
    std::pair<int, int> VisiblePages() const;

signals:
    void CurrentPageChanged();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class FitKind { None, Width, Page, Glance };

    void Fit(FitKind kind);
    void ApplyFit();
    /// Takes a zoom and keeps the place.
    void ChangeZoom(double zoom);
    void LayOut();
    int Count() const;
    int Columns() const { return columns_; }
    int CellOf(int page) const;
    QSize SheetSize() const;
    QRect SheetRect(int page) const;
    int PageAt(int contentsY) const;
    const QPixmap& Picture(int page);

    const ThemeLook& theme_;
    const PagedText* text_ = nullptr;
    Arrangement arrangement_ = Arrangement::One;
    FitKind fit_ = FitKind::Width;
    double zoom_ = 1;
    int columns_ = 1;
    int current_ = 0;
    bool goes_ = false;  ///< scrolls to a page
    QCache<int, QPixmap> pictures_;
};

}  // namespace lore
