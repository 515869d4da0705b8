#include "ui/note_editor/source_row_view.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/note_editor/citation_text.h"

namespace lore {

namespace {

/// Takes the width that it gets, and cuts its text to it with an ellipsis.
class RemarkButton : public QPushButton {
public:
    explicit RemarkButton(QWidget* parent) : QPushButton(parent) {
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

    void SetRemark(const QString& text) {
        remark_ = text;
        Elide();
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QPushButton::resizeEvent(event);
        Elide();
    }

private:
    void Elide() {
        const QString shown = fontMetrics().elidedText(remark_, Qt::ElideRight, width() - 2 * kSpace);
        setText(QString(shown).replace(QLatin1Char('&'), QStringLiteral("&&")));
    }

    QString remark_;
};

}  // namespace

SourceRowView::SourceRowView(SourceRows& rows, size_t row, const Theme& theme, QWidget* parent)
    : QFrame(parent),
      rows_(rows),
      row_(row),
      theme_(theme),
      citation_(new CitationView(rows.Rows()[row].source, this)),
      line_(new RemarkButton(this)),
      edit_(NewTextField(this)) {
    setFocusPolicy(Qt::StrongFocus);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 2, kSpace * 2, kSpace * 2, kSpace * 2);
    layout->setSpacing(kSpace);
    line_->setFlat(true);
    line_->setCursor(Qt::IBeamCursor);
    line_->setFont(theme.Font(TextSize::Small));
    edit_->setText(ToQString(rows.Rows()[row].text));
    const QString about = tr("Note specific information on %1").arg(Citation());
    edit_->setAccessibleName(about);
    line_->setAccessibleDescription(about);  // else a screen reader would speak the tool tip with its markup
    QSizePolicy policy = edit_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    edit_->setSizePolicy(policy);
    edit_->hide();
    edit_->installEventFilter(this);
    layout->addWidget(citation_);
    // One over the other, so that a click that closes a line moves none that it is meant for.
    auto* const place = new QGridLayout;
    place->addWidget(line_, 0, 0);
    place->addWidget(edit_, 0, 0);
    layout->addLayout(place);
    setAccessibleName(tr("Source: %1").arg(Citation()));
    connect(line_, &QPushButton::clicked, this, &SourceRowView::OpenLine);
    connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) {
        rows_.SetText(row_, FromQString(text));
        emit Changed();
    });
    connect(edit_, &QLineEdit::editingFinished, this, &SourceRowView::CloseLine);
    connect(&theme_, &Theme::Changed, this, &SourceRowView::Restyle);
    Restyle();
}

QString SourceRowView::Citation() const {
    return ToQString(rows_.Rows()[row_].source.FormattedText).simplified();
}

void SourceRowView::SetSelected(bool selected) {
    selected_ = selected;
    update();
}

void SourceRowView::OpenLine() {
    emit Clicked();
    if (!rows_.OpenLine(row_))
        return;
    edit_->show();
    edit_->setFocus(Qt::OtherFocusReason);
    line_->hide();  // with the focus, it would pass that to the next control on its way
}

void SourceRowView::CloseLine() {
    rows_.CloseLine(row_);
    edit_->hide();
    line_->show();
    Restyle();
}

void SourceRowView::Restyle() {
    const QString text = ToQString(rows_.LineText(row_));
    static_cast<RemarkButton*>(line_)->SetRemark(text.simplified());
    line_->setAccessibleName(text);
    line_->setToolTip(QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()));
    line_->setStyleSheet(QStringLiteral("QPushButton { text-align: left; border: none; padding: 0 %1px; color: %2; }")
                             .arg(kSpace)
                             .arg(theme_.Color(ColorRole::DimText).name()));
    update();
}

void SourceRowView::mousePressEvent(QMouseEvent* event) {
    emit Clicked();
    QFrame::mousePressEvent(event);
}

void SourceRowView::focusInEvent(QFocusEvent* event) {
    emit Clicked();
    QFrame::focusInEvent(event);
}

void SourceRowView::keyPressEvent(QKeyEvent* event) {
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (plain && event->key() == Qt::Key_Delete)
        emit RemoveRequested();
    else if (plain && (event->key() == Qt::Key_F2 || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        OpenLine();
    else
        QFrame::keyPressEvent(event);
}

bool SourceRowView::eventFilter(QObject* watched, QEvent* event) {
    const auto* const key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    const bool ends = key && !(key->modifiers() & ~Qt::KeypadModifier) &&
                      (key->key() == Qt::Key_Escape || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter);
    if (!ends)
        return QFrame::eventFilter(watched, event);
    // Esc and Enter end the line, not the window.
    setFocus(Qt::OtherFocusReason);
    return true;
}

void SourceRowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(theme_.Color(ColorRole::Field));
    const bool strong = selected_ || hasFocus();
    painter.setPen(QPen(theme_.Color(strong ? ColorRole::Accent : ColorRole::FaintEdge), strong ? 2 : 1));
    painter.drawRoundedRect(strong ? frame.adjusted(0.5, 0.5, -0.5, -0.5) : frame, kControlRadius, kControlRadius);
}

}  // namespace lore
