#include "ui/controls/panel_section.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/look/theme.h"

namespace lore {

PanelSection::PanelSection(const QString& title, const Theme& theme, QWidget* parent)
    : QWidget(parent), title_(new QLabel(title, this)), body_(new QVBoxLayout(this)) {
    QFont font = theme.Font(TextSize::Body);
    font.setWeight(QFont::DemiBold);
    title_->setFont(font);
    title_->setTextFormat(Qt::PlainText);
    body_->setContentsMargins(0, 0, 0, 0);
    body_->setSpacing(kSpace);
    body_->addWidget(title_);
}

QToolButton* MakeIconButton(const QString& icon, const QString& name, const Theme& theme, QWidget* parent) {
    auto* const button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setToolTip(name);
    button->setAccessibleName(name);
    button->setIcon(theme.Icon(icon));
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

}  // namespace lore
