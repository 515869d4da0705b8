#pragma once

#include <optional>
#include <string>

namespace lore {

enum class PromptIcon { None, Information, Warning, Question, Error };
enum class PromptAnswer { Yes, No, Cancel };

/// Everything that is asked of the user or told to the user in a window of its own. Texts are bytes of the core.
class Prompts {
public:
    virtual ~Prompts() = default;
    virtual void Message(const std::string& text, const std::string& title, PromptIcon icon) = 0;
    virtual PromptAnswer Ask(const std::string& text, const std::string& title, bool withCancel = false) = 0;
    /// One line of text, or nothing when the user cancels.
    virtual std::optional<std::string> AskText(const std::string& label, const std::string& title,
                                               const std::string& initial) = 0;
};

}  // namespace lore
