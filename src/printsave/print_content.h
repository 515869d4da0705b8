#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "bibliography/output_document.h"
#include "printsave/hand_over.h"
#include "rtf/document.h"

namespace lore {

/// A form that contents are saved in.
struct SavedForm {
    const char* ending;
    const char* name;
};
inline constexpr SavedForm kSavedForms[] = {{"pdf", "PDF document"},
                                            {"html", "Web page"},
                                            {"rtf", "Rich text"},
                                            {"odt", "OpenDocument text"},
                                            {"txt", "Plain text"}};
/// The form of a file name by its ending, ignoring case; null for any other.
const SavedForm* FindSavedForm(std::string_view fileName);

/// What is shown, printed and saved: a bibliography in a chosen typeface, or notes as one rich text.
class PrintContent {
public:
    explicit PrintContent(const SourceList& formatted);
    explicit PrintContent(Document notes) : notes_(std::move(notes)) {}

    bool IsBibliography() const { return !notes_; }
    /// The typeface of a bibliography, by its place in kBibliographyFonts. Notes keep their own.
    void SetFont(size_t font) { bibliography_.font = kBibliographyFonts[font]; }
    PrintContent InFont(size_t font) const {
        PrintContent copy = *this;
        copy.SetFont(font);
        return copy;
    }

    /// The page that the preview, the printer and PDF files lay out, and that is saved as it stands.
    std::string Html() const;
    /// The bytes of a file of any form but PDF; office programs are told of the paper. Nothing if there was no memory
    /// for it.
    std::optional<std::string> In(const SavedForm& form, const Paper& paper) const;

private:
    BibliographyDocument bibliography_;
    std::optional<Document> notes_;
};

}  // namespace lore
