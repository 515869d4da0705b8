#include "sources/distinct_texts.h"

#include <map>

#include "base/text.h"
#include "bibliography/citation_field.h"

namespace lore {

std::vector<std::string> DistinctTexts(const SourceList& sources,
                                       const std::function<std::string(size_t position)>& textOf) {
    std::map<std::string, std::string> byLowered;
    for (size_t i = 0; i < sources.Count(); ++i) {
        const std::string text(Trim(textOf(i)));
        if (!text.empty())
            byLowered.try_emplace(ToLower(text), text);
    }
    std::vector<std::string> texts;
    texts.reserve(byLowered.size());
    for (auto& [lowered, text] : byLowered)
        texts.push_back(std::move(text));
    return texts;
}

std::vector<std::string> DistinctFieldTexts(const SourceList& sources, size_t slot) {
    return DistinctTexts(sources, [&](size_t position) { return std::string(FieldText(sources[position], slot)); });
}

}  // namespace lore
