#include "notes/search_query.h"

#include "base/text.h"

namespace lore {

namespace {

constexpr char kBothOperators[] = "You can only have one type of operator (AND, OR) in search string.";
constexpr char kBothOperatorsTitle[] = "Invalid Search String";

void SplitTerms(std::string_view text, std::string_view word, std::vector<std::string>& terms) {
    while (true) {
        const size_t end = text.find(word);
        if (const std::string_view piece = Trim(text.substr(0, end)); !piece.empty())
            terms.emplace_back(piece);
        if (end == std::string_view::npos)
            return;
        text.remove_prefix(end + word.size());
    }
}

}  // namespace

bool ParseSearchString(std::string_view text, Prompts* prompts, NoteSearch& search) {
    search = {kNoOperator, std::string(text), {}};
    const bool hasAnd = text.find("AND") != std::string_view::npos;
    const bool hasOr = text.find("OR") != std::string_view::npos;
    if (hasAnd && hasOr) {
        if (prompts)
            prompts->Message(kBothOperators, kBothOperatorsTitle, PromptIcon::Warning);
        search.searchText.clear();
        return false;
    }
    if (!hasAnd && !hasOr) {
        search.searchTerms.emplace_back(text);
        return true;
    }
    search.searchOperator = hasAnd ? kAndOperator : kOrOperator;
    // A piece of Windows-1252 bytes by itself might read as UTF-8.
    SplitTerms(ToUtf8(text), hasAnd ? "AND" : "OR", search.searchTerms);
    return true;
}

SearchTerm SearchTerm::FromText(std::string_view term) {
    SearchTerm result;
    std::u32string characters = ToCodePoints(term);
    result.wholeWord = characters.starts_with(U'"');
    if (result.wholeWord) {
        characters.erase(0, 1);
        if (!characters.empty())
            characters.pop_back();
    }
    for (const char32_t c : characters)
        result.folded.push_back(FoldCase(c));
    return result;
}

std::string SearchTerm::Utf8() const {
    return CodePointsToUtf8(folded);
}

}  // namespace lore
