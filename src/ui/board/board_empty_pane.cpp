#include "ui/board/board_empty_pane.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/look/theme.h"

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
      action_(new QPushButton(this)),
      otherAction_(new QPushButton(this)) {
    auto* column = new QVBoxLayout(this);
    column->setSpacing(3 * kSpace);
    column->addStretch(2);
    for (QLabel* label : {logo_, title_, text_}) {
        label->setAlignment(Qt::AlignCenter);
        label->setWordWrap(label != logo_);
        column->addWidget(label);
    }
    column->addSpacing(kSpace);
    auto* row = new QHBoxLayout;
    row->setSpacing(2 * kSpace);
    row->addStretch();
    row->addWidget(action_);
    row->addWidget(otherAction_);
    row->addStretch();
    column->addLayout(row);
    column->addStretch(3);
    action_->setDefault(true);
    action_->hide();
    otherAction_->hide();
    connect(action_, &QPushButton::clicked, this, &BoardEmptyPane::ActionClicked);
    connect(otherAction_, &QPushButton::clicked, this, &BoardEmptyPane::OtherActionClicked);
    connect(&theme, &Theme::Changed, this, &BoardEmptyPane::Restyle);
    Restyle();
}

void BoardEmptyPane::SetState(const BoardEmptyState& state) {
    if (state == state_)
        return;
    state_ = state;
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
    otherAction_->setText(state.otherAction);
    otherAction_->setVisible(!state.otherAction.isEmpty());
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
