#include "ui/main/about_dialog.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/help_commands.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

constexpr int kIconSize = 64;
constexpr int kLineInCharacters = 52;

QLabel* MakeLine(const QString& text, const QFont& font, QWidget* parent) {
    auto* const label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(font);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * kLineInCharacters);
    return label;
}

}  // namespace

FWAboutBoxDlg::FWAboutBoxDlg(const Theme& theme, SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("About Lorebinder"), "About", store, parent) {
    auto* const picture = new QLabel(this);
    picture->setPixmap(QIcon(":/icons/lorebinder.svg").pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    picture->setAlignment(Qt::AlignTop);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(kSpace * 3);
    QLabel* const version = MakeLine(ToQString(AboutVersionText()), theme.Font(TextSize::Title), this);
    version->setObjectName("version");
    texts->addWidget(version);
    texts->addWidget(MakeLine(tr("Research notes with their sources, categories, key words and attachments."),
                              theme.Font(TextSize::Body), this));
    texts->addWidget(MakeLine(tr("Icons: Lucide, under the ISC licence. Windows: Qt %1.").arg(qVersion()),
                              theme.Font(TextSize::Small), this));
    texts->addStretch(1);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 5);
    row->addWidget(picture);
    row->addLayout(texts, 1);
    Content()->addLayout(row);
    QPushButton* const close = AddButton(tr("&OK"));
    SetMainButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    close->setFocus();
}

}  // namespace lore
