#include "cli/bibliography_data.h"

#include "app/source_json.h"
#include "base/file_io.h"
#include "cli/command.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

void TellForm(const std::string& file) {
    PrintError(file + " is not of the form {\"authors\":[...],\"sources\":[...]}");
}

/// Calls `take` for each element of an array, with its name; false, and told, if the key holds anything else, or an
/// element is no object.
template <typename Taker>
bool ForEach(const std::string& file, const SourceJson& json, const char* key, const char* name, Taker take) {
    const auto found = json.find(key);
    if (found == json.end())
        return true;
    if (!found->is_array()) {
        TellForm(file);
        return false;
    }
    size_t position = 0;
    for (const SourceJson& element : *found) {
        ++position;
        if (!element.is_object()) {
            PrintError(file + ": element " + std::to_string(position) + " of \"" + key + "\" is not an object");
            return false;
        }
        take(element, name + (" " + std::to_string(position)));
    }
    return true;
}

}  // namespace

std::optional<BibliographyData> LoadBibliographyData(Session& session, BibliographyParts parts) {
    const auto noteBook = session.NoteBook();
    if (!noteBook)
        return std::nullopt;
    const NoteBookPaths paths(session.Data(), noteBook->folder);
    BibliographyData data;
    if (parts.authors)
        session.Check(data.authors.LoadAuthors(paths.Authors()), kAuthorsUnread, paths.Authors());
    session.Check(data.sources.LoadSources(paths.Sources(), session.Context()), kSourcesUnread, paths.Sources());
    if (parts.types) {
        session.Check(data.types.LoadTypes(paths.SourceTypes(), session.Context()), kSourceTypesUnread,
                      paths.SourceTypes());
        data.sources.LinkCustomTypes(data.types);
    }
    return data;
}

std::optional<BibliographyData> ReadBibliographyJson(Session& session, const std::string& file, ExitStatus& status) {
    std::string bytes;
    status = ExitStatus::Fault;
    if (const FileResult result = ReadFileOrStream(file, bytes); !result.Ok()) {
        session.Faults().Tell({kFileUnread, file, result.Reason()});
        return std::nullopt;
    }
    const SourceJson json = SourceJson::parse(bytes, nullptr, false);
    BibliographyData data;
    const TellLeftOut tell = [&](const std::string& value) { session.Faults().Tell({kValueNotTaken, file, value}); };
    const auto addAuthor = [&](const SourceJson& author, const std::string& name) {
        data.listedAuthors.push_back(AuthorOfJson(author, name, tell));
        data.authors.AddAuthor(data.listedAuthors.back());
    };
    const auto addSource = [&](const SourceJson& source, const std::string& name) {
        data.sources.AddTail(SourceOfJson(source, name, tell, session.Context()));
    };
    if (!json.is_object()) {
        TellForm(file);
        return std::nullopt;
    }
    const bool isTaken =
        ForEach(file, json, "authors", "author", addAuthor) && ForEach(file, json, "sources", "source", addSource);
    return isTaken ? std::optional(std::move(data)) : std::nullopt;
}

}  // namespace lore
