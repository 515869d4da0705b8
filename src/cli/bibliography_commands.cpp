#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "bibliography/author_name.h"
#include "bibliography/citation.h"
#include "bibliography/source_types.h"
#include "cli/bibliography_data.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/print_records.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

class AuthorsCommand : public Command {
public:
    const char* Name() const override { return "authors"; }
    const char* Help() const override { return "Lists the authors"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return ExitStatus::NothingFound;
        const auto path = NoteBookPaths(session.Data(), noteBook->folder).Authors();
        AuthorList authors;
        session.Check(authors.LoadAuthors(path), kAuthorsUnread, path);
        PrintRecords(session, authors, JsonAuthor, [](const CAuthor& author) {
            return std::to_string(author.AuthorID) + "  " + FormatAuthorInverted(author, {false, true, true});
        });
        return ExitStatus::Done;
    }
};

class SourceTypesCommand : public Command {
public:
    const char* Name() const override { return "sourcetypes"; }
    const char* Help() const override { return "Lists the user-defined source types"; }
    void Declare(CLI::App&) override {}
    ExitStatus Run(Session& session) override {
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return ExitStatus::NothingFound;
        const auto path = NoteBookPaths(session.Data(), noteBook->folder).SourceTypes();
        CustomTypeList types;
        session.Check(types.LoadTypesUnsorted(path, session.Context()), kSourceTypesUnread, path);
        PrintRecords(session, types, JsonCustomType, [](const CCustomSourceType& type) { return type.name; });
        return ExitStatus::Done;
    }
};

class SourcesCommand : public Command {
public:
    const char* Name() const override { return "sources"; }
    const char* Help() const override { return "Lists the sources"; }
    void Declare(CLI::App& app) override {
        app.add_flag("--sorted", sorted_, "The ids in the order of their citations");
    }
    ExitStatus Run(Session& session) override {
        auto data = LoadBibliographyData(session, {.authors = sorted_ || !session.Json(), .types = sorted_});
        if (!data)
            return ExitStatus::NothingFound;
        if (sorted_) {
            data->sources.SortSources(data->authors);
            PrintRecords(
                session, data->sources, [](const CSource& s) { return Json(s.SourceID); },
                [](const CSource& s) { return std::to_string(s.SourceID); });
        } else {
            PrintRecords(session, data->sources, JsonSource, [&](const CSource& source) {
                CSource formatted = source;
                FormatSource(formatted, data->authors);
                return std::to_string(source.SourceID) + "  " + ToUtf8(SourceTypeName(source)) + "  " +
                       ToUtf8(formatted.FormattedText);
            });
        }
        return ExitStatus::Done;
    }

private:
    bool sorted_ = false;
};

}  // namespace

void AddBibliographyCommands(Commands& commands) {
    commands.push_back(std::make_unique<AuthorsCommand>());
    commands.push_back(std::make_unique<SourcesCommand>());
    commands.push_back(std::make_unique<SourceTypesCommand>());
}

}  // namespace lore
