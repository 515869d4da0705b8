#include <CLI/CLI.hpp>
#include <algorithm>

#include "base/text.h"
#include "bibliography/author_name.h"
#include "bibliography/citation_field.h"
#include "bibliography/output_selection.h"
#include "bibliography/source_limits.h"
#include "bibliography/source_types.h"
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
        const std::vector<CSource> sources = Prepare(session, *data, book);
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
                       "HasDate is true, but SourceDate isn't a date that exists; mend it, or set HasDate to false.");
                return false;
            }
            if (const std::string wrong = WhyNoSource(source); !wrong.empty()) {
                Refuse(name, wrong);
                return false;
            }
            if (!HasRoomFor(source, name))
                return false;
        }
        return true;
    }
    /// Which number of a source means nothing, and which ones do; empty if all have a meaning.
    static std::string WhyNoSource(const CSource& source) {
        const auto wrong = [](const char* field, int32_t number, const std::string& wanted) {
            return std::string(field) + " is " + std::to_string(number) + "; it must be " + wanted + ".";
        };
        const bool isCustom = source.SourceType >= kFirstCustomType && !source.CustomTypeCopy.GUID.empty();
        if (!isCustom && StandardTypeName(source.SourceType).empty())
            return wrong("SourceType", source.SourceType,
                         "1 to " + std::to_string(kTypeCount) + ", or " + std::to_string(kFirstCustomType) +
                             " and more with a CustomTypeCopy that has a GUID");
        if (StyleName(source.FormatStyle).empty())
            return wrong("FormatStyle", source.FormatStyle, "0 to " + std::to_string(kStyleCount - 1));
        return {};
    }
    /// Brings numbers outside of their limits to the nearer one, and flags to what they count as, and tells it.
    void HoldNumbers(CSource& source, const std::string& name, FaultNotice& faults) const {
        const auto hold = [&](const char* field, int32_t& number, int32_t held) {
            if (number != held)
                faults.Tell(
                    {kValueNotTaken, file_,
                     name + ": " + field + " is " + std::to_string(number) + " and becomes " + std::to_string(held)});
            number = held;
        };
        hold("IndentSpaces", source.IndentSpaces, HeldIndentSpaces(source.IndentSpaces));
        hold("AuthorsBeforeEtAl", source.AuthorsBeforeEtAl, HeldAuthorsBeforeEtAl(source.AuthorsBeforeEtAl));
        hold("YearOnly", source.YearOnly, source.YearOnly == 1 ? 1 : 0);
        hold("UseDateText", source.UseDateText, source.UseDateText == 1 ? 1 : 0);
    }
    /// As the source editor trims what is typed there.
    static void TrimTexts(CSource& source) {
        const auto trim = [](std::string& text) { text = std::string(Trim(text)); };
        std::for_each(source.FieldTexts.begin(), source.FieldTexts.end(), trim);
        trim(source.DateText);
        for (CCustomSourceField& field : source.CustomTypeCopy.fields)
            trim(field.value);
    }
    void AddAuthors(const BibliographyData& data, SourceMerge& merge) const {
        size_t position = 0;
        for (CAuthor author : data.listedAuthors) {
            ++position;
            if (TrimAuthorName(author))
                merge.MergeAuthor(author);
            else
                PrintError(file_ + ": author " + std::to_string(position) +
                           " is left out: there is neither a first nor a last name");
        }
    }
    /// A source without identity gets one; each carries its authors with it.
    std::vector<CSource> Prepare(Session& session, const BibliographyData& data, const OpenNoteBook& book) const {
        std::vector<CSource> sources;
        for (CSource source : data.sources) {
            if (!book.sources.FindSourceByGUID(source.SourceGUID))
                HoldNumbers(source, "source " + std::to_string(sources.size() + 1), session.Faults());
            if (source.SourceGUID.empty())
                source.SourceGUID = session.Guids().NewGuid();
            TrimTexts(source);
            for (const int32_t id : source.AuthorIDs) {
                const CAuthor* const author = data.authors.FindAuthorByID(id);
                CAuthor trimmed = author ? *author : CAuthor();
                if (TrimAuthorName(trimmed))
                    source.EmbeddedAuthors.push_back(trimmed);
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
