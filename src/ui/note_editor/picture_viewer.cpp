#include "ui/note_editor/picture_viewer.h"

#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/controls/panel_section.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr double kSmallest = 0.05;
constexpr double kLargest = 16.0;
constexpr double kStep = 1.25;
/// A picture may claim to be of any size; beyond this it isn't read.
constexpr int kMostMegabytes = 512;

QPixmap ReadPicture(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    reader.setDecideFormatFromContent(true);
    QImageReader::setAllocationLimit(kMostMegabytes);
    return QPixmap::fromImage(reader.read());
}

}  // namespace

PictureViewer::PictureViewer(const QString& path, const QString& title, const Theme& theme, QWidget* parent)
    : QDialog(parent), picture_(ReadPicture(path)), scroll_(new QScrollArea(this)), shown_(new QLabel(scroll_)) {
    setWindowTitle(title);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 3);
    shown_->setAlignment(Qt::AlignCenter);
    shown_->setScaledContents(true);
    shown_->setAccessibleName(title);
    scroll_->setAccessibleName(title);
    scroll_->setWidget(shown_);
    scroll_->setAlignment(Qt::AlignCenter);
    scroll_->setFrameShape(QFrame::NoFrame);
    layout->addWidget(scroll_, 1);
    AddButtons(theme);
    const QSize room = parent ? parent->screen()->availableSize() * 3 / 4 : QSize(960, 720);
    resize((picture_.size() + QSize(kSpace * 12, kSpace * 24)).boundedTo(room).expandedTo(QSize(420, 320)));
    FitToWindow();
}

void PictureViewer::AddButtons(const Theme& theme) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    QToolButton* const out = MakeIconButton("zoom-out", tr("Zoom Out"), theme, this);
    QToolButton* const in = MakeIconButton("zoom-in", tr("Zoom In"), theme, this);
    auto* const fit = new QPushButton(tr("&Fit to Window"), this);
    zoomText_ = new QLabel(this);
    auto* const close = new QPushButton(tr("&Close"), this);
    close->setDefault(true);
    row->addWidget(out);
    row->addWidget(in);
    row->addWidget(fit);
    row->addWidget(zoomText_);
    row->addStretch(1);
    row->addWidget(close);
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    connect(out, &QToolButton::clicked, this, [this] { ZoomBy(-1); });
    connect(in, &QToolButton::clicked, this, [this] { ZoomBy(1); });
    connect(fit, &QPushButton::clicked, this, &PictureViewer::FitToWindow);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    const std::pair<QKeySequence::StandardKey, int> keys[] = {{QKeySequence::ZoomIn, 1}, {QKeySequence::ZoomOut, -1}};
    for (const auto& [key, step] : keys)
        connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, [this, by = step] { ZoomBy(by); });
}

void PictureViewer::ZoomBy(int steps) {
    fits_ = false;
    zoom_ = std::clamp(zoom_ * std::pow(kStep, steps), kSmallest, kLargest);
    Apply();
}

void PictureViewer::FitToWindow() {
    fits_ = true;
    const QSize room = scroll_->viewport()->size();
    if (picture_.isNull() || room.isEmpty())
        return;
    const double fit = std::min(room.width() / static_cast<double>(picture_.width()),
                                room.height() / static_cast<double>(picture_.height()));
    zoom_ = std::clamp(fit, kSmallest, 1.0);
    Apply();
}

void PictureViewer::Apply() {
    shown_->setPixmap(picture_);
    shown_->resize((QSizeF(picture_.size()) * zoom_).toSize().expandedTo(QSize(1, 1)));
    zoomText_->setText(tr("%1 %").arg(std::lround(zoom_ * 100)));
}

void PictureViewer::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    if (fits_)
        FitToWindow();
}

void PictureViewer::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier))
        return QDialog::wheelEvent(event);
    ZoomBy(event->angleDelta().y() > 0 ? 1 : -1);
    event->accept();
}

}  // namespace lore
