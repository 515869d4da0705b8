#include "ui/sources/source_date_field.h"

#include <QCheckBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include "ui/controls/dialog_parts.h"
#include "ui/controls/text_field.h"
#include "ui/controls/typed_date_edit.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

// The blanks at their starts set the text off inside the control.
constexpr char kYearFormat[] = "  yyyy";
constexpr char kDayFormat[] = " M/dd/yyyy";

}  // namespace

SourceDateField::SourceDateField(SourceEditor& editor, QWidget* parent)
    : QWidget(parent),
      editor_(editor),
      has_(new QCheckBox(tr("Dat&e:"), this)),
      yearOnly_(new QCheckBox(tr("Use yea&r only"), this)),
      manual_(new QCheckBox(tr("Enter Date Ma&nually"), this)),
      picker_(new TypedDateEdit(this)),
      text_(NewTextField(this)) {
    auto* const layout = MakeInner<QHBoxLayout>(this, kSpace * 3);
    has_->setObjectName("hasDate");
    has_->setAccessibleName(tr("Source has a date"));
    picker_->setObjectName("date");
    picker_->setAccessibleName(tr("Date"));
    picker_->setCalendarPopup(true);
    picker_->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    text_->setObjectName("dateText");
    text_->setAccessibleName(tr("Date as text"));
    yearOnly_->setObjectName("yearOnly");
    manual_->setObjectName("manualDate");
    layout->addWidget(has_);
    layout->addWidget(picker_);
    layout->addWidget(text_, 1);
    layout->addWidget(yearOnly_);
    layout->addStretch(0);
    layout->addWidget(manual_);
    setTabOrder(has_, picker_);
    setTabOrder(picker_, text_);
    setTabOrder(text_, yearOnly_);
    connect(has_, &QCheckBox::clicked, this, &SourceDateField::TakeDate);
    connect(picker_, &QDateEdit::dateChanged, this, &SourceDateField::TakeDate);
    connect(yearOnly_, &QCheckBox::clicked, this, [this](bool on) {
        editor_.SetYearOnly(on);
        ShowFormat();
        emit Changed();
    });
    connect(manual_, &QCheckBox::clicked, this, [this](bool on) {
        editor_.SetUseDateText(on);
        Fill();
        emit Changed();
    });
    connect(text_, &QLineEdit::textEdited, this, [this](const QString& text) {
        editor_.SetDateText(FromQString(text));
        emit Changed();
    });
    const DateTime& date = editor_.Working().SourceDate;
    {
        const QSignalBlocker quiet(picker_);
        picker_->setDate(date.IsValid() ? QDate(date.Year(), date.Month(), date.Day()) : QDate::currentDate());
    }
    text_->setText(ToQString(editor_.Working().DateText));
    Fill();
}

void SourceDateField::TakeDate() {
    const QDate date = picker_->date();
    editor_.SetDate(has_->isChecked() ? std::optional(DateTime(date.year(), date.month(), date.day())) : std::nullopt);
    Fill();
    emit Changed();
}

void SourceDateField::Fill() {
    const CSource& source = editor_.Working();
    const bool manual = source.UseDateText != 0;
    has_->setChecked(source.HasDate);
    has_->setEnabled(!manual);
    picker_->setEnabled(source.HasDate);
    yearOnly_->setChecked(source.YearOnly != 0);
    yearOnly_->setEnabled(editor_.CanUseYearOnly());
    manual_->setChecked(manual);
    picker_->setVisible(!manual);
    yearOnly_->setVisible(!manual);
    text_->setVisible(manual);
    ShowFormat();
}

void SourceDateField::ShowFormat() {
    const QString format = QString::fromLatin1(editor_.Working().YearOnly != 0 ? kYearFormat : kDayFormat);
    if (picker_->displayFormat() == format)
        return;  // set anew it would take the caret to the front
    const QSignalBlocker quiet(picker_);
    picker_->setDisplayFormat(format);
}

}  // namespace lore
