#pragma once

#include <QKeySequence>
#include <QWidget>

#include "settings/option_pages.h"

class QKeySequenceEdit;
class QLabel;

namespace lore {

class Theme;

/// A key with modifiers as Qt has it, and back. A key that has no virtual key code is no key.
QKeySequence ToKeySequence(const HotKey& key);
HotKey FromKeySequence(const QKeySequence& keys);

/// The page "Agent".
class COptAgentPg : public QWidget {
    Q_OBJECT

public:
    /// `agent` may be null.
    COptAgentPg(OptionsWorld& world, const Theme& theme, Agent* agent, QWidget* parent);

private:
    QWidget* MakeHotKey();

    AgentPage model_;
    const Theme& theme_;
    QKeySequenceEdit* keys_ = nullptr;
    QLabel* saved_ = nullptr;
};

}  // namespace lore
