#include "ui/calendar/recurrence_tabs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme_look.h"

namespace lore {

namespace {

constexpr int kNumberChars = 5;

QStringList Ordinals() {
    return {"1st", "2nd", "3rd", "4th", "last"};
}

QStringList Weekdays() {
    return {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
}

QStringList Months() {
    QStringList months;
    for (int month = 1; month <= 12; ++month)
        months << QLocale::c().monthName(month);
    return months;
}

QWidget* MakePage(QWidget* parent) {
    auto* const page = new QWidget(parent);
    auto* const rows = new QVBoxLayout(page);
    rows->setSpacing(kSpace * 2);
    return page;
}

QHBoxLayout* AddRow(QWidget* page) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    static_cast<QVBoxLayout*>(page->layout())->addLayout(row);
    return row;
}

}  // namespace

RecurrenceTabs::RecurrenceTabs(EventEditor& model, QWidget* parent) : QTabWidget(parent), model_(model) {
    setObjectName("recurrence");
    setAccessibleName(tr("Recurrence"));
    addTab(MakeDaily(), tr("< Daily >"));
    addTab(MakeWeekly(), tr("< Weekly >"));
    addTab(MakeMonthly(), tr("< Monthly >"));
    addTab(MakeYearly(), tr("< Yearly >"));
    setCurrentIndex(model.Tab());
    connect(this, &QTabWidget::currentChanged, this,
            [this](int tab) { Apply([this, tab] { model_.ChooseTab(static_cast<SeriesType>(tab)); }); });
}

void RecurrenceTabs::Apply(const std::function<void()>& change) {
    change();
    Refresh();
    emit Changed();
}

void RecurrenceTabs::Refresh() {
    const QSignalBlocker quiet(this);
    setCurrentIndex(model_.Tab());
    for (const auto& [tab, show] : shows_) {
        if (tab == model_.Tab())
            show();
    }
}

QHBoxLayout* RecurrenceTabs::AddForm(QWidget* page, SeriesType tab, bool first, const QString& text, const char* name) {
    QHBoxLayout* const row = AddRow(page);
    auto* const radio = new QRadioButton(text, page);
    radio->setObjectName(QString::fromLatin1(name));
    row->addWidget(radio);
    connect(radio, &QRadioButton::clicked, this, [this, first] { Apply([this, first] { model_.ChooseForm(first); }); });
    shows_.emplace_back(tab, [this, radio, first] { radio->setChecked(model_.Pattern(first ? 0 : 1) == 1); });
    return row;
}

void RecurrenceTabs::AddNumber(QHBoxLayout* row, SeriesType tab, size_t slot, const QString& name) {
    auto* const field = NewTextField(this);
    field->setObjectName(QStringLiteral("number%1_%2").arg(tab).arg(slot));
    field->setAccessibleName(name);
    field->setFixedWidth(field->fontMetrics().averageCharWidth() * kNumberChars + kSpace * 6);
    row->addWidget(field);
    const auto fill = [this, field, slot] {
        const int32_t value = model_.Pattern(slot);
        const QString text = value < 0 ? QString() : QString::number(value);
        if (field->text() != text)
            field->setText(text);
    };
    connect(field, &QLineEdit::textEdited, this, [this, field, slot](const QString& text) {
        Apply([this, field, slot, text] {
            if (model_.TypePattern(slot, FromQString(text)).empty())
                field->clear();
        });
    });
    connect(field, &QLineEdit::editingFinished, this, [this, tab, fill] {
        if (tab == model_.Tab())
            fill();
    });
    // Whoever empties a field is about to type another number into it.
    shows_.emplace_back(tab, [field, fill] {
        if (!field->hasFocus() || !field->text().isEmpty())
            fill();
    });
}

void RecurrenceTabs::AddChoice(QHBoxLayout* row, SeriesType tab, size_t slot, const QString& name,
                               const QStringList& texts) {
    auto* const choice = new QComboBox(this);
    NameBox(*choice, name);
    choice->addItems(texts);
    choice->setMaxVisibleItems(static_cast<int>(texts.size()));
    row->addWidget(choice);
    connect(choice, &QComboBox::activated, this,
            [this, slot](int index) { Apply([this, slot, index] { model_.SetPattern(slot, index); }); });
    shows_.emplace_back(tab, [this, choice, slot] { choice->setCurrentIndex(model_.Pattern(slot)); });
}

void RecurrenceTabs::AddText(QHBoxLayout* row, const QString& text) {
    row->addWidget(new QLabel(text, this));
}

QWidget* RecurrenceTabs::MakeDaily() {
    QWidget* const page = MakePage(this);
    QHBoxLayout* const every = AddForm(page, kDaily, true, tr("Ever&y"), "dailyEvery");
    AddNumber(every, kDaily, kDailyN, tr("Number of days"));
    AddText(every, tr("days"));
    every->addStretch(1);
    AddForm(page, kDaily, false, tr("Every &Weekday"), "dailyWeekdays")->addStretch(1);
    static_cast<QVBoxLayout*>(page->layout())->addStretch(1);
    return page;
}

QWidget* RecurrenceTabs::MakeWeekly() {
    QWidget* const page = MakePage(this);
    QHBoxLayout* const every = AddRow(page);
    AddText(every, tr("Every"));
    AddNumber(every, kWeekly, kWeeklyN, tr("Number of weeks"));
    AddText(every, tr("weeks on"));
    every->addStretch(1);
    QHBoxLayout* days = AddRow(page);
    for (int day = 0; day < 7; ++day) {
        if (day == 4) {
            days->addStretch(1);
            days = AddRow(page);
        }
        auto* const box = new QCheckBox(Weekdays()[day], page);
        const size_t slot = kWeeklySunday + static_cast<size_t>(day);
        box->setObjectName(QStringLiteral("weekday%1").arg(day));
        days->addWidget(box);
        connect(box, &QCheckBox::clicked, this,
                [this, slot](bool on) { Apply([this, slot, on] { model_.SetPattern(slot, on ? 1 : 0); }); });
        shows_.emplace_back(kWeekly, [this, box, slot] { box->setChecked(model_.Pattern(slot) == 1); });
    }
    days->addStretch(1);
    static_cast<QVBoxLayout*>(page->layout())->addStretch(1);
    return page;
}

QWidget* RecurrenceTabs::MakeMonthly() {
    QWidget* const page = MakePage(this);
    QHBoxLayout* const day = AddForm(page, kMonthly, true, tr("Da&y"), "monthlyDay");
    AddNumber(day, kMonthly, kMonthlyDay, tr("Day of the month"));
    AddText(day, tr("of every"));
    AddNumber(day, kMonthly, kMonthlyDayN, tr("Number of months"));
    AddText(day, tr("months"));
    day->addStretch(1);
    QHBoxLayout* const the = AddForm(page, kMonthly, false, tr("T&he"), "monthlyWeekday");
    AddChoice(the, kMonthly, kMonthlyOrdinal, tr("Which one of the month"), Ordinals());
    AddChoice(the, kMonthly, kMonthlyWeekday, tr("Day of the week"), Weekdays());
    AddText(the, tr("of every"));
    AddNumber(the, kMonthly, kMonthlyWeekdayN, tr("Number of months"));
    AddText(the, tr("months"));
    the->addStretch(1);
    static_cast<QVBoxLayout*>(page->layout())->addStretch(1);
    return page;
}

QWidget* RecurrenceTabs::MakeYearly() {
    QWidget* const page = MakePage(this);
    QHBoxLayout* const every = AddForm(page, kYearly, true, tr("Ever&y"), "yearlyEvery");
    AddChoice(every, kYearly, kYearlyMonth, tr("Month"), Months());
    AddNumber(every, kYearly, kYearlyDay, tr("Day of the month"));
    every->addStretch(1);
    QHBoxLayout* const the = AddForm(page, kYearly, false, tr("T&he"), "yearlyWeekday");
    AddChoice(the, kYearly, kYearlyOrdinal, tr("Which one of the month"), Ordinals());
    AddChoice(the, kYearly, kYearlyWeekday, tr("Day of the week"), Weekdays());
    AddText(the, tr("of"));
    AddChoice(the, kYearly, kYearlyWeekdayMonth, tr("Month"), Months());
    the->addStretch(1);
    static_cast<QVBoxLayout*>(page->layout())->addStretch(1);
    return page;
}

}  // namespace lore
