#include "ui/board_empty_pane.h"

#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/board_empty_state.h"
#include "ui/theme.h"

namespace lore {
namespace {

constexpr int kLogoSide = 96;
constexpr int kLogoWidest = 480, kLogoTallest = 240;

}  // namespace

BoardEmptyPane::BoardEmptyPane(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      theme_(theme),
      logo_(new QLabel(this)),
      title_(new QLabel(this)),
      text_(new QLabel(this)),
      action_(new QPushButton(this)) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(3 * kSpace);
    column->addStretch(2);
    for (QLabel* label : {logo_, title_, text_}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(label != logo_);
        column->addWidget(label);
    }
    column->addSpacing(kSpace);
    column->addWidget(action_, 0, Qt::AlignHCenter);
    column->addStretch(3);
    action_->setDefault(true);
    connect(action_, &QPushButton::clicked, this, &BoardEmptyPane::ActionClicked);
    connect(&theme, &Theme::Changed, this, &BoardEmptyPane::Restyle);
    Restyle();
}

void BoardEmptyPane::SetState(const BoardEmptyState& state) {
    QPixmap logo(state.logo);
    if (logo.isNull())
        logo = QIcon(QStringLiteral(":/icons/lorebinder.svg")).pixmap(QSize(kLogoSide, kLogoSide), devicePixelRatioF());
    else if (logo.width() > kLogoWidest || logo.height() > kLogoTallest)
        logo = logo.scaled(kLogoWidest, kLogoTallest, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    logo_->setPixmap(logo);
    title_->setText(state.title);
    title_->setVisible(!state.title.isEmpty());
    text_->setText(state.text);
    text_->setVisible(!state.text.isEmpty());
    action_->setText(state.action);
    action_->setVisible(!state.action.isEmpty());
}

void BoardEmptyPane::Restyle() {
    title_->setFont(theme_.Font(TextSize::Title));
    // On the board a label takes its color from the role of text in fields.
    QPalette dim;
    dim.setColor(QPalette::Text, theme_.Color(ColorRole::DimText));
    dim.setColor(QPalette::WindowText, theme_.Color(ColorRole::DimText));
    text_->setPalette(dim);
}

}  // namespace lore
