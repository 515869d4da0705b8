#include "ui/calendar/modify_event_dialog.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/look/theme_look.h"

namespace lore {

namespace {

constexpr int kTextChars = 56;

/// The text of a button with the first free letter of `letters` as its Alt key.
QString WithAltKey(const char* text, QChar letter) {
    QString marked = QString::fromLatin1(text);
    const auto at = marked.indexOf(letter);
    return at < 0 ? marked : marked.insert(at, '&');
}

}  // namespace

ModifyEventDialog::ModifyEventDialog(ModifyEventMode mode, SettingsStore& store, QWidget* parent)
    : DialogFrame(QString::fromLatin1(TextsOf(mode).title), "ModifyEvent", store, parent) {
    const ModifyEventTexts& texts = TextsOf(mode);
    auto* const explanation = new QLabel(QString::fromLatin1(texts.explanation), this);
    explanation->setWordWrap(true);
    explanation->setMinimumWidth(explanation->fontMetrics().averageCharWidth() * kTextChars);
    QPushButton* const all = MakeChoice(texts.entireSeries, "entireSeries", SeriesReach::EntireSeries);
    QPushButton* const following = MakeChoice(texts.allFollowing, "allFollowing", SeriesReach::AllFollowing);
    QPushButton* const single = MakeChoice(texts.onlyThis, "onlyThis", SeriesReach::OnlyThis);
    all->setText(WithAltKey(texts.entireSeries, 'E'));
    following->setText(WithAltKey(texts.allFollowing, 'F'));
    single->setText(WithAltKey(texts.onlyThis, 'O'));
    Content()->addWidget(explanation);
    Content()->addWidget(MakeGroup(texts.seriesGroup, all, following));
    Content()->addWidget(MakeGroup(texts.singleGroup, single, nullptr));
    if (*texts.cancel != '\0') {
        QPushButton* const cancel = AddButton(WithAltKey(texts.cancel, 'C'));
        cancel->setObjectName("cancel");
        connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    }
    single->setFocus();
}

QPushButton* ModifyEventDialog::MakeChoice(const char* text, const char* name, SeriesReach reach) {
    auto* const button = new QPushButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setAccessibleName(QString::fromLatin1(text));
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, [this, reach] {
        reach_ = reach;
        accept();
    });
    return button;
}

QWidget* ModifyEventDialog::MakeGroup(const char* title, QWidget* first, QWidget* second) {
    auto* const group = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(group, kSpace * 2);
    layout->addWidget(new QLabel(QString::fromLatin1(title), group));
    layout->addWidget(first);
    if (second)
        layout->addWidget(second);
    return group;
}

SeriesReach ModifyEventDialog::AskReach() {
    return exec() == QDialog::Accepted ? reach_ : SeriesReach::Cancel;
}

}  // namespace lore
