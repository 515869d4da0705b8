#include "ui/options/more_spell_options_dialog.h"

#include <QCheckBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/options/option_controls.h"

namespace lore {

MoreSpellOptionsDialog::MoreSpellOptionsDialog(SpellPage& model, SettingsStore& store, QWidget* parent)
    : DialogFrame(tr("More Options"), "MoreSpellOptions", store, parent) {
    for (const OptionBox& box : SpellPage::SkipBoxes())
        Content()->addWidget(MakeOptionBox(
            box, model.IsOn(box.option), [&model, &box](bool on) { model.SetOn(box, on); }, this));
    Content()->addStretch(1);
    GiveAltKeys(*this, "o");
    QPushButton* const close = AddButton(tr("&OK"));
    SetMainButton(close);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

}  // namespace lore
