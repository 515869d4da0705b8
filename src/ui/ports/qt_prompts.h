#pragma once

#include "ports/prompts.h"

class QWidget;

namespace lore {

/// Message boxes over a window.
class QtPrompts : public Prompts {
public:
    /// The window that the boxes stand over; null until there is one.
    void SetParent(QWidget* parent) { parent_ = parent; }

    void Message(const std::string& text, const std::string& title, PromptIcon icon) override;
    PromptAnswer Ask(const std::string& text, const std::string& title, bool withCancel) override;
    std::optional<std::string> AskText(const std::string& label, const std::string& title,
                                       const std::string& initial) override;
    PromptAnswer AskWithBox(const std::string& text, const std::string& title, const std::string& box,
                            bool& ticked) override;
    std::vector<std::string> AskOpenPaths(const std::string& title, const std::string& filter,
                                          PathCount count) override;
    std::optional<std::string> AskSavePath(const std::string& title, const std::string& filter,
                                           const std::string& proposed) override;

private:
    QWidget* Owner() const;

    QWidget* parent_ = nullptr;
};

}  // namespace lore
