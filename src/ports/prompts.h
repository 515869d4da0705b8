#pragma once

#include <optional>
#include <string>
#include <vector>

namespace lore {

/// The filter under which pickers offer export archives.
inline constexpr char kArchiveFilter[] = "Lorebinder Export Files (*.lbe) |*.lbe|";

enum class PromptIcon { None, Information, Warning, Question, Error };
enum class PromptAnswer { Yes, No, Cancel };
enum class PathCount { One, Several };

/// Everything that is asked of the user or told to the user in a window of its own. Texts are bytes of the core.
class Prompts {
public:
    virtual ~Prompts() = default;
    virtual void Message(const std::string& text, const std::string& title, PromptIcon icon) = 0;
    virtual PromptAnswer Ask(const std::string& text, const std::string& title, bool withCancel = false) = 0;
    /// One line of text, or nothing when the user cancels.
    virtual std::optional<std::string> AskText(const std::string& label, const std::string& title,
                                               const std::string& initial) = 0;
    /// Yes or No, with a box to tick below the text; `ticked` is how the box stood when the window closed.
    virtual PromptAnswer AskWithBox(const std::string& text, const std::string& title, const std::string& box,
                                    bool& ticked) = 0;
    /// Files to open, none when the user cancels. `filter` is made of pairs, "Text (*.lbe) |*.lbe|". Paths are those
    /// of the file system.
    virtual std::vector<std::string> AskOpenPaths(const std::string& title, const std::string& filter,
                                                  PathCount count) = 0;
    /// Where to save, or nothing when the user cancels. A name without an ending gets the one of the filter.
    virtual std::optional<std::string> AskSavePath(const std::string& title, const std::string& filter,
                                                   const std::string& proposed) = 0;
};

}  // namespace lore
