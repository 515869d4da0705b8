#include "bibliography/output_writers.h"

#include "base/text.h"

namespace lore {

namespace {

struct Form {
    std::string_view ending;
    BibliographyWriter writer;
};

template <std::string (*kWrite)(const BibliographyDocument&)>
std::optional<std::string> Always(const BibliographyDocument& document) {
    return kWrite(document);
}

constexpr Form kForms[] = {{"txt", Always<BibliographyAsText>},
                           {"html", Always<BibliographyAsHtml>},
                           {"rtf", Always<BibliographyAsRtf>},
                           {"odt", BibliographyAsOdt}};

constexpr int kTextWidth = 80;

}  // namespace

std::string BibliographyAsText(const BibliographyDocument& document) {
    std::string text;
    CSource source;
    for (const BibliographyEntry& entry : document.entries) {
        source.IndentSpaces = entry.indentSpaces;
        const WrappedCitation wrapped = WrapCitation(source, entry.text, kTextWidth);
        text.append(text.empty() ? "" : "\n").append(TrimRight(wrapped.text)).append("\n");
    }
    return text;
}

BibliographyWriter FindBibliographyWriter(std::string_view ending) {
    for (const Form& form : kForms) {
        if (EqualNoCase(ending, form.ending))
            return form.writer;
    }
    return nullptr;
}

}  // namespace lore
