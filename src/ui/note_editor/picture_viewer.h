#pragma once

#include <QDialog>
#include <QPixmap>

class QLabel;
class QScrollArea;

namespace lore {

class Theme;

/// Shows one picture, fitted to the window or at a zoom.
class PictureViewer : public QDialog {
    Q_OBJECT

public:
    PictureViewer(const QString& path, const QString& title, const Theme& theme, QWidget* parent = nullptr);

    /// The file is a picture that could be read.
    bool IsLoaded() const { return !picture_.isNull(); }
    double Zoom() const { return zoom_; }
    /// Steps of a quarter, between a twentieth and sixteen times.
    void ZoomBy(int steps);
    void FitToWindow();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void AddButtons(const Theme& theme);
    void Apply();

    QPixmap picture_;
    QScrollArea* scroll_;
    QLabel* shown_;
    QLabel* zoomText_ = nullptr;
    double zoom_ = 1.0;
    bool fits_ = true;
};

}  // namespace lore
