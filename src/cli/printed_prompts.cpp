#include "cli/printed_prompts.h"

#include "cli/session.h"

namespace lore {

void PrintedPrompts::Message(const std::string& text, const std::string&, PromptIcon icon) {
    warned_ = warned_ || icon == PromptIcon::Warning || icon == PromptIcon::Error;
    PrintMessage(text);
}

PromptAnswer PrintedPrompts::AskWithBox(const std::string&, const std::string&, const std::string&, bool& ticked) {
    ticked = false;
    return PromptAnswer::Yes;
}

}  // namespace lore
