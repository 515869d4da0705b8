#include "ui/options/agent_page.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <optional>

#include "ui/controls/dialog_parts.h"
#include "ui/look/theme.h"
#include "ui/options/option_controls.h"

namespace lore {

namespace {

struct KeyCode {
    int qt;
    int32_t virtualKey;
};

/// Keys that don't bear the code of their character; letters and digits do.
constexpr KeyCode kCodes[] = {{Qt::Key_Space, 0x20},  {Qt::Key_PageUp, 0x21}, {Qt::Key_PageDown, 0x22},
                              {Qt::Key_End, 0x23},    {Qt::Key_Home, 0x24},   {Qt::Key_Left, 0x25},
                              {Qt::Key_Up, 0x26},     {Qt::Key_Right, 0x27},  {Qt::Key_Down, 0x28},
                              {Qt::Key_Insert, 0x2D}, {Qt::Key_Delete, 0x2E}};
constexpr int32_t kFirstFunctionKey = 0x70;
constexpr int kFunctionKeys = 24;

constexpr std::pair<Qt::KeyboardModifier, int32_t> kModifiers[] = {
    {Qt::ShiftModifier, HotKey::kShift}, {Qt::ControlModifier, HotKey::kControl}, {Qt::AltModifier, HotKey::kAlt}};

bool IsCharacterKey(int key) {
    return (key >= Qt::Key_0 && key <= Qt::Key_9) || (key >= Qt::Key_A && key <= Qt::Key_Z);
}

int32_t VirtualKeyOf(int key) {
    if (IsCharacterKey(key))
        return key;
    if (key >= Qt::Key_F1 && key < Qt::Key_F1 + kFunctionKeys)
        return key - Qt::Key_F1 + kFirstFunctionKey;
    for (const KeyCode& code : kCodes)
        if (code.qt == key)
            return code.virtualKey;
    return 0;
}

int QtKeyOf(int32_t key) {
    if (IsCharacterKey(key))
        return key;
    if (key >= kFirstFunctionKey && key < kFirstFunctionKey + kFunctionKeys)
        return key - kFirstFunctionKey + Qt::Key_F1;
    for (const KeyCode& code : kCodes)
        if (code.virtualKey == key)
            return code.qt;
    return 0;
}

}  // namespace

QKeySequence ToKeySequence(const HotKey& key) {
    const int qtKey = QtKeyOf(key.key);
    Qt::KeyboardModifiers modifiers;
    for (const auto& [qt, flag] : kModifiers)
        if (key.modifiers & flag)
            modifiers |= qt;
    return qtKey == 0 ? QKeySequence() : QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(qtKey)));
}

HotKey FromKeySequence(const QKeySequence& keys) {
    if (keys.isEmpty())
        return {};
    HotKey key{VirtualKeyOf(keys[0].key()), 0};
    for (const auto& [qt, flag] : kModifiers)
        if (key.key > 0 && keys[0].keyboardModifiers().testFlag(qt))
            key.modifiers |= flag;
    return key;
}

COptAgentPg::COptAgentPg(OptionsWorld& world, const Theme& theme, Agent* agent, QWidget* parent)
    : QWidget(parent), model_(world, agent), theme_(theme) {
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSpace * 4, kSpace * 4, kSpace * 4, kSpace * 4);
    layout->setSpacing(kSpace * 4);
    QPushButton* const launch = MakeButton(tr("Launch Lorebinder Agent"), this);
    launch->setObjectName("launchAgent");
    launch->setEnabled(model_.IsInstalled());
    layout->addWidget(launch, 0, Qt::AlignLeft);
    if (!model_.IsInstalled()) {
        QLabel* const missing = MakeRemark(
            tr("Lorebinder Agent isn't installed beside this program. What is set here is kept for it."), theme_, this);
        missing->setObjectName("agentMissing");
        layout->addWidget(missing);
    }
    layout->addWidget(MakeHotKey());
    for (const OptionBox& box : AgentPage::Boxes())
        layout->addWidget(MakeOptionBox(
            box, model_.IsAgentOn(box.option), [this, &box](bool on) { model_.SetAgentOn(box.option, on); }, this));
    layout->addStretch(1);
    connect(launch, &QPushButton::clicked, this, [this] { model_.Launch(); });
}

QWidget* COptAgentPg::MakeHotKey() {
    auto* const box = new QWidget(this);
    auto* const layout = MakeInner<QVBoxLayout>(box, kSpace);
    keys_ = new QKeySequenceEdit(ToKeySequence(model_.GetHotKey()), box);
    keys_->setObjectName("hotKey");
    keys_->setAccessibleName(tr("Hot keys of Lorebinder Agent"));
    QLabel* const label = MakeLabel(tr("Change the Hot Keys assinged to Lorebinder Agent:"), keys_, box);
    QPushButton* const save = MakeButton(tr("Save Hot Keys"), box);
    save->setObjectName("saveHotKey");
    saved_ = MakeRemark({}, theme_, box);
    saved_->setObjectName("hotKeySaved");
    auto* const row = new QHBoxLayout;
    row->setSpacing(kSpace * 2);
    row->addWidget(keys_);
    row->addWidget(save);
    row->addWidget(saved_, 1);
    layout->addWidget(label);
    layout->addLayout(row);
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        QLabel* const other =
            MakeRemark(tr("This desktop gives programs no hot keys: in its own keyboard settings, give a "
                          "key the command \"lorebinder --capture\"."),
                       theme_, box);
        other->setObjectName("noHotKeys");
        layout->addWidget(other);
    }
    connect(keys_, &QKeySequenceEdit::keySequenceChanged, this, [this](const QKeySequence& keys) {
        // One key with its modifiers, not several after another.
        if (keys.count() > 1)
            keys_->setKeySequence(QKeySequence(keys[0]));
        saved_->clear();
    });
    connect(save, &QPushButton::clicked, this, [this] {
        const HotKey key = FromKeySequence(keys_->keySequence());
        keys_->setKeySequence(ToKeySequence(key));
        if (model_.SaveHotKey(key))
            saved_->setText(key.key > 0 ? tr("Saved") : tr("No hot key"));
    });
    return box;
}

}  // namespace lore
