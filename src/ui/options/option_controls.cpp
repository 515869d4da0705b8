#include "ui/options/option_controls.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

#include "base/rgb.h"
#include "ui/controls/dialog_parts.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

QWidget* MakeOptionSection(const QString& title, const Theme& theme, QVBoxLayout*& body, QWidget* parent) {
    auto* const section = new QWidget(parent);
    auto* const layout = MakeInner<QVBoxLayout>(section, kSpace * 2);
    auto* const heading = new QLabel(title, section);
    heading->setFont(theme.Font(TextSize::Title));
    layout->addWidget(heading);
    body = layout;
    return section;
}

QCheckBox* MakeOptionBox(const OptionBox& box, bool on, const std::function<void(bool)>& changed, QWidget* parent) {
    auto* const check = new QCheckBox(QString::fromUtf8(box.text), parent);
    check->setObjectName("option" + QString::number(static_cast<int>(box.option)));
    check->setChecked(on);
    QObject::connect(check, &QCheckBox::toggled, parent, changed);
    return check;
}

namespace {

/// Draws one role of a control in a colour of the theme, and goes on doing so.
void Tint(QWidget* control, QPalette::ColorRole role, ColorRole color, const Theme& theme) {
    const auto tint = [control, role, color, &theme] {
        QPalette palette = control->palette();
        palette.setColor(role, theme.Color(color));
        control->setPalette(palette);
    };
    QObject::connect(&theme, &Theme::Changed, control, tint);
    tint();
}

}  // namespace

QLabel* MakeRemark(const QString& text, const Theme& theme, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    Tint(label, QPalette::WindowText, ColorRole::DimText, theme);
    return label;
}

void KeepWhole(QLabel& label, int characters) {
    const int width = label.fontMetrics().averageCharWidth() * characters;
    label.setMinimumSize(width, label.heightForWidth(width));
}

QWidget* MakeRule(const Theme& theme, QWidget* parent) {
    auto* const rule = new QWidget(parent);
    rule->setFixedHeight(1);
    rule->setAutoFillBackground(true);
    Tint(rule, QPalette::Window, ColorRole::FaintEdge, theme);
    return rule;
}

QIcon MakeSwatch(uint32_t color, const Theme& theme, const QWidget& shownIn) {
    const int size = shownIn.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &shownIn);
    const qreal ratio = shownIn.devicePixelRatioF();
    QPixmap picture(QSize(size, size) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(theme.Color(ColorRole::Edge));
    painter.setBrush(ToQColor(color));
    painter.drawRoundedRect(QRectF(0.5, 0.5, size - 1, size - 1), 3, 3);
    return picture;
}

void GiveAltKeys(QWidget& page, const QString& taken) {
    QString used = taken.toLower();
    const auto marked = [&used](const QString& text) {
        if (text.contains('&'))
            return text;
        // The first letter of a word reads best.
        for (const bool wordsOnly : {true, false}) {
            for (qsizetype i = 0; i < text.size(); ++i) {
                const QChar letter = text[i].toLower();
                const bool fits = letter.isLetter() && (!wordsOnly || i == 0 || text[i - 1].isSpace());
                if (fits && !used.contains(letter)) {
                    used += letter;
                    return QString(text).insert(i, '&');
                }
            }
        }
        return text;
    };
    for (QWidget* const control : page.findChildren<QWidget*>()) {
        auto* const button = qobject_cast<QAbstractButton*>(control);
        auto* const label = qobject_cast<QLabel*>(control);
        if (button && !button->text().isEmpty())
            button->setText(marked(button->text()));
        else if (label && label->buddy())
            label->setText(marked(label->text()));
    }
}

}  // namespace lore
