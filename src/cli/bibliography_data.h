#pragma once

#include <optional>

#include "bibliography/author_list.h"
#include "bibliography/custom_type_list.h"
#include "bibliography/source_list.h"
#include "cli/session.h"

namespace lore {

inline constexpr char kValueNotTaken[] = "A value could not be taken";

/// What citations are made from.
struct BibliographyData {
    AuthorList authors;
    CustomTypeList types;
    SourceList sources;
    std::vector<CAuthor> listedAuthors;  ///< of a JSON file: as listed there, also those whose number isn't their own
};

/// What is read beside the sources. With types, sources of custom types take the present definition of their type, as
/// they do when the NoteBook is opened.
struct BibliographyParts {
    bool authors = true, types = true;
};

/// Reads the sources of the session's NoteBook, and what citations need beside them. Nothing if there is no such
/// NoteBook.
std::optional<BibliographyData> LoadBibliographyData(Session& session, BibliographyParts parts = {});

/// Reads `{"authors":[...],"sources":[...]}` with the fields of the two records; a missing field has its default,
/// and a number stands for its text. A value of another type is left out, and told as a fault of the session. Nothing,
/// told on standard error, if the file can't be read or isn't of that form; `status` then says why.
std::optional<BibliographyData> ReadBibliographyJson(Session& session, const std::string& file, ExitStatus& status);

}  // namespace lore
