#pragma once

#include "ports/prompts.h"

namespace lore {

/// Tells the system's messages on standard error. Whoever types a command means it, so questions are answered with Yes;
/// there is nobody to ask for a text or a file.
class PrintedPrompts : public Prompts {
public:
    void Message(const std::string& text, const std::string& title, PromptIcon icon) override;
    PromptAnswer Ask(const std::string&, const std::string&, bool) override { return PromptAnswer::Yes; }
    std::optional<std::string> AskText(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    PromptAnswer AskWithBox(const std::string&, const std::string&, const std::string&, bool& ticked) override;
    std::vector<std::string> AskOpenPaths(const std::string&, const std::string&, PathCount) override { return {}; }
    std::optional<std::string> AskSavePath(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    /// True if the system has refused something.
    bool HasWarned() const { return warned_; }

private:
    bool warned_ = false;
};

}  // namespace lore
