#include "ui/options/spell_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTextEdit>
#include <QVBoxLayout>

#include "settings/user_dictionary.h"
#include "ui/controls/dialog_parts.h"
#include "ui/editor/spell_marks.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"
#include "ui/options/font_dialog.h"
#include "ui/options/more_spell_options_dialog.h"
#include "ui/options/option_controls.h"
#include "ui/options/user_dictionary_dialog.h"

namespace lore {

namespace {

constexpr int kSampleLines = 3;

/// "English (United States)" for "en_US".
QString LanguageName(const std::string& language) {
    const QString code = ToQString(language);
    const QLocale locale(code);
    if (locale.language() == QLocale::C)
        return code;
    const QString name = QLocale::languageToString(locale.language());
    return code.contains('_') ? QStringLiteral("%1 (%2)").arg(name, QLocale::territoryToString(locale.territory()))
                              : name;
}

}  // namespace

OptSpellChkPg::OptSpellChkPg(OptionsWorld& world, const Theme& theme, SpellChecker* checker, QWidget* parent)
    : QWidget(parent), model_(world), world_(world), theme_(theme), checker_(checker) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 5);
    const OptionBox& enable = SpellPage::EnableBox();
    layout->addWidget(MakeOptionBox(
        enable, model_.IsOn(enable.option), [this, &enable](bool on) { model_.SetOn(enable, on); }, this));
    AddDictionaries(*layout);
    AddMarks(*layout);
    layout->addStretch(1);
    connect(&theme_, &Theme::Changed, this, &OptSpellChkPg::ShowSample);
    ShowSample();
}

void OptSpellChkPg::AddDictionaries(QVBoxLayout& layout) {
    QVBoxLayout* body = nullptr;
    QWidget* const section = MakeOptionSection(tr("Dictionaries"), theme_, body, this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    auto* const languages = new QComboBox(section);
    languages->setObjectName("languages");
    languages->setAccessibleName(tr("Language of the dictionary"));
    QLabel* const label = MakeLabel(tr("Language:"), languages, section);
    for (const std::string& language : checker_ ? checker_->Languages() : std::vector<std::string>()) {
        languages->addItem(LanguageName(language), ToQString(language));
        if (language == checker_->Language())
            languages->setCurrentIndex(languages->count() - 1);
    }
    QPushButton* const own = MakeButton(tr("User Dictionary"), section);
    own->setObjectName("userDictionary");
    own->setEnabled(checker_ != nullptr);
    QPushButton* const more = MakeButton(tr("More Options"), section);
    more->setObjectName("moreOptions");
    row->addWidget(label);
    row->addWidget(languages);
    row->addWidget(own);
    row->addWidget(more);
    row->addStretch(1);
    body->addLayout(row);
    if (languages->count() == 0) {
        languages->setEnabled(false);
        body->addWidget(MakeRemark(tr("No dictionary is installed. A package such as \"hunspell-en-us\" brings one; "
                                      "it is found at the next start."),
                                   theme_, section));
    }
    layout.addWidget(section);
    connect(languages, &QComboBox::activated, this, [this, languages] {
        const std::string language = FromQString(languages->currentData().toString());
        if (checker_->Select(language))
            model_.SetLanguage(language);
    });
    connect(own, &QPushButton::clicked, this, &OptSpellChkPg::EditUserWords);
    connect(more, &QPushButton::clicked, this, [this] { MoreSpellOptionsDialog(model_, world_.store, this).exec(); });
}

void OptSpellChkPg::AddMarks(QVBoxLayout& layout) {
    QVBoxLayout* body = nullptr;
    QWidget* const section = MakeOptionSection(tr("Misspelled words"), theme_, body, this);
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 4);
    for (const OptionBox& box : SpellPage::MarkBoxes()) {
        const auto changed = [this, &box](bool on) {
            model_.SetOn(box, on);
            ShowSample();
        };
        row->addWidget(MakeOptionBox(box, model_.IsOn(box.option), changed, section));
    }
    row->addStretch(1);
    body->addLayout(row);
    AddColors(*body);
    sample_ = new QTextEdit(section);
    sample_->setObjectName("markSample");
    sample_->setAccessibleName(tr("Sample"));
    sample_->setReadOnly(true);
    sample_->setTabChangesFocus(true);
    sample_->setFont(ToQFont(LoadFontSetting(world_.store, kEditTextFont, DefaultEditTextFont())));
    sample_->setFixedHeight(QFontMetrics(sample_->font()).height() * kSampleLines);
    body->addWidget(sample_);
    layout.addWidget(section);
}

void OptSpellChkPg::AddColors(QVBoxLayout& layout) {
    auto* const row = new QHBoxLayout;
    auto* const colors = new QComboBox(this);
    colors->setObjectName("markColor");
    colors->setAccessibleName(tr("Color of misspelled words"));
    QLabel* const label = MakeLabel(tr("Color:"), colors, this);
    const auto paint = [this, colors] {
        for (int i = 0; i < colors->count(); ++i)
            colors->setItemIcon(i, MakeSwatch(MarkColors()[static_cast<size_t>(i)].color, theme_, *this));
    };
    for (const MarkColor& color : MarkColors())
        colors->addItem(QString::fromLatin1(color.name));
    colors->setMaxVisibleItems(colors->count());
    paint();
    colors->setCurrentIndex(model_.ColorIndex());
    row->addWidget(label);
    row->addWidget(colors);
    row->addStretch(1);
    layout.addLayout(row);
    connect(&theme_, &Theme::Changed, colors, paint);
    connect(colors, &QComboBox::activated, this, [this](int index) {
        model_.SetColorIndex(index);
        ShowSample();
    });
}

void OptSpellChkPg::EditUserWords() {
    UserDictionary words(*checker_);
    UserDictionaryDialog(words, world_.store, this).exec();
}

void OptSpellChkPg::ShowSample() {
    sample_->clear();
    QTextCursor cursor(sample_->document());
    const QStringList parts = tr("The keeper %1 the lamp at dusk.").split("%1");
    cursor.insertText(parts.value(0), QTextCharFormat());
    cursor.insertText(QStringLiteral("lihgted"), MarkLook(model_.Style(), theme_));
    cursor.insertText(parts.value(1), QTextCharFormat());
}

}  // namespace lore
