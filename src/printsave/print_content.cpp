#include "printsave/print_content.h"

#include "base/text.h"
#include "bibliography/document_odt.h"
#include "bibliography/output_writers.h"
#include "notes/note_list_document.h"
#include "rtf/html_writer.h"
#include "rtf/office_rtf.h"

namespace lore {

const SavedForm* FindSavedForm(std::string_view fileName) {
    const std::string_view ending = FileExtension(fileName);
    for (const SavedForm& form : kSavedForms) {
        if (EqualNoCase(ending, form.ending))
            return &form;
    }
    return nullptr;
}

PrintContent::PrintContent(const SourceList& formatted) : bibliography_(MakeBibliographyDocument(formatted)) {}

std::string PrintContent::Html() const {
    return notes_ ? WriteHtml(*notes_, "Notes") : BibliographyAsHtml(bibliography_);
}

std::optional<std::string> PrintContent::In(const SavedForm& form, const Paper& paper) const {
    const std::string_view ending = form.ending;
    if (!notes_) {
        const BibliographyWriter writer = FindBibliographyWriter(ending);
        BibliographyDocument document = bibliography_;
        document.paper = paper;
        return writer ? writer(document) : std::nullopt;
    }
    if (ending == "html")
        return Html();
    if (ending == "rtf")
        return WriteOfficeRtf(*notes_, paper);
    if (ending == "odt")
        return DocumentAsOdt(*notes_, paper);
    return DocumentAsText(*notes_);
}

}  // namespace lore
