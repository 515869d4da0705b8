#include <CLI/CLI.hpp>

#include "base/text.h"
#include "bibliography/author_name.h"
#include "bibliography/citation_field.h"
#include "bibliography/source_limits.h"
#include "cli/bibliography_data.h"
#include "cli/command.h"
#include "cli/print_records.h"
#include "exchange/merged_lists.h"
#include "notes/check_finding.h"
#include "sources/source_editor.h"

namespace lore {

namespace {

class SourceCommand : public Command {
public:
    const char* Name() const override { return "source"; }
    const char* Help() const override { return "Adds authors and sources"; }
    void Declare(CLI::App& app) override {
        CLI::App* const add = app.add_subcommand("add", "Adds the authors and sources of a JSON file");
        add->add_option("--file", file_, "{\"authors\":[...],\"sources\":[...]}, as for \"cite --file\"")
            ->required()
            ->type_name("FILE.json");
        app.require_subcommand(1);
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::Done;
        const auto data = ReadBibliographyJson(session, file_, status);
        OpenNoteBook book;
        if (data && !CanBeStored(*data))
            return ExitStatus::Fault;
        if (!data || !session.OpenForWriting(book, status))
            return status;
        const std::vector<CSource> sources = Prepare(session, *data);
        IdCounters counters = session.Counters();
        SourceMerge merge(book, counters);
        AddAuthors(*data, merge);
        merge.AddTypes(sources);
        merge.NumberTypes();
        std::vector<int32_t> ids;
        ids.reserve(sources.size());
        for (const CSource& source : sources) {
            if (const CSource* const known = book.sources.FindSourceByGUID(source.SourceGUID))
                PrintError(file_ + ": source " + std::to_string(ids.size() + 1) + " is there already as " +
                           std::to_string(known->SourceID) + ", which stays as it is");
            ids.push_back(merge.Merge(source));
        }
        session.StoreCounters(counters);
        if (!WriteMergedLists(book, merge, false, session.Faults()))
            return ExitStatus::Fault;
        PrintIds(session, ids);
        return ExitStatus::Done;
    }

private:
    void Refuse(const std::string& record, const std::string& reason) const {
        PrintError(file_ + ": " + record + ": " + reason + " Nothing was added.");
    }
    template <typename Record>
    bool HasRoomFor(const Record& record, const std::string& name) const {
        const std::optional<LongText> longText = FindLongText(record);
        if (longText)
            Refuse(name, "the field " + longText->field + " holds a text" + OverLimit(longText->bytes) + ".");
        return !longText;
    }
    /// Whether all records of the file are such as the dialogs would store; the first that isn't is told.
    bool CanBeStored(const BibliographyData& data) const {
        size_t position = 0;
        for (const CAuthor& author : data.listedAuthors) {
            if (!HasRoomFor(author, "author " + std::to_string(++position)))
                return false;
        }
        position = 0;
        for (const CSource& source : data.sources) {
            const std::string name = "source " + std::to_string(++position);
            if (Trim(FieldText(source, 0)).empty()) {
                Refuse(name, kNoTitleText);
                return false;
            }
            if (source.HasDate && !source.SourceDate.IsValid()) {
                Refuse(name,
                       "HasDate is true, but SourceDate is no date that exists; mend it, or set HasDate to false.");
                return false;
            }
            if (!HasRoomFor(source, name))
                return false;
        }
        return true;
    }
    static bool HasName(CAuthor author) { return TrimAuthorName(author); }
    void AddAuthors(const BibliographyData& data, SourceMerge& merge) const {
        size_t position = 0;
        for (const CAuthor& author : data.listedAuthors) {
            ++position;
            if (HasName(author))
                merge.MergeAuthor(author);
            else
                PrintError(file_ + ": author " + std::to_string(position) +
                           " is left out: there is neither a first nor a last name");
        }
    }
    /// A source without identity gets one; each carries its authors with it.
    std::vector<CSource> Prepare(Session& session, const BibliographyData& data) const {
        std::vector<CSource> sources;
        for (CSource source : data.sources) {
            if (source.SourceGUID.empty())
                source.SourceGUID = session.Guids().NewGuid();
            for (const int32_t id : source.AuthorIDs) {
                const CAuthor* const author = data.authors.FindAuthorByID(id);
                if (author && HasName(*author))
                    source.EmbeddedAuthors.push_back(*author);
                else
                    PrintError(file_ + ": source " + std::to_string(sources.size() + 1) + " loses author " +
                               std::to_string(id) + (author ? ", which has no name" : ", which the file lacks"));
            }
            sources.push_back(std::move(source));
        }
        return sources;
    }

    std::string file_;
};

}  // namespace

void AddSourceCommands(Commands& commands) {
    commands.push_back(std::make_unique<SourceCommand>());
}

}  // namespace lore
