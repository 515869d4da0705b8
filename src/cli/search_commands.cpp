#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/printed_prompts.h"
#include "notes/search_database.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

class SearchCommand : public Command {
public:
    const char* Name() const override { return "search"; }
    const char* Help() const override { return "Searches the texts of the notes"; }
    void Declare(CLI::App& app) override {
        app.add_option("TEXT", text_, "Terms joined by AND or OR; in quotes for whole words")->required();
        app.add_option("--ids", ids_, "Only in these notes, as the search of the current list")->type_name("ID,ID...");
        app.add_flag("--marked", marked_, "Add the rich text with the hits marked");
    }
    ExitStatus Run(Session& session) override {
        LongList ids;
        if (!ParseIdsOption(ids_, ids))
            return ExitStatus::WrongUsage;
        PrintedPrompts prompts;
        NoteSearch search;
        const std::string typed = CleanText(FromUtf8(Trim(text_)));
        if (!ParseSearchString(typed, &prompts, search))
            return ExitStatus::WrongUsage;
        const auto results = ids_ ? SearchNotes(session, search, ids) : SearchAll(session, search);
        if (!results)
            return ExitStatus::NothingFound;
        Print(session, search, *results);
        return results->empty() ? ExitStatus::NothingFound : ExitStatus::Done;
    }

private:
    using Results = std::vector<SearchResult>;

    std::optional<Results> SearchAll(Session& session, const NoteSearch& search) const {
        const auto noteBook = session.NoteBook();
        if (!noteBook)
            return std::nullopt;
        if (search.searchTerms.empty())
            return Results{};
        SearchOptions options;
        options.marked = marked_;
        options.hits = session.Json();
        return SearchDatabase(NoteBookPaths(session.Data(), noteBook->folder).Notes(), NoteMatcher(search), options,
                              session.Context(), session.Faults());
    }
    /// The search of the current note list: these notes in this order, SHOWALL as a word like any other.
    std::optional<Results> SearchNotes(Session& session, const NoteSearch& search, const LongList& ids) const {
        OpenNoteBook book;
        if (!session.Load(book))
            return std::nullopt;
        const NoteMatcher matcher(search);
        const bool isWholeList = search.searchTerms.empty();
        Results results;
        for (const CNote& note : FindNotes(book.index, ids, session.Context(), session.Faults())) {
            const std::string text = PlainText(note.rtfText);
            if (!isWholeList && !matcher.Matches(text))
                continue;
            SearchResult result{note.id, matcher.Hits(text), {}};
            if (marked_ && !result.hits.empty())
                result.displayRtf = matcher.MarkedRtf(note.rtfText);
            results.push_back(std::move(result));
        }
        return results;
    }
    void Print(const Session& session, const NoteSearch& search, const Results& results) const {
        if (!session.Json()) {
            for (const SearchResult& result : results)
                std::printf("%d\n", result.id);
            return;
        }
        Json terms = Json::array();
        for (const std::string& term : search.searchTerms)
            terms.push_back(JsonText(term));
        JsonPrinter printer;
        printer.Put("{\"searchOperator\":");
        printer.PutJson(search.searchOperator);
        printer.Put(",\"searchTerms\":");
        printer.PutJson(terms);
        printer.Put(",\"results\":[");
        for (size_t i = 0; i < results.size(); ++i) {
            printer.Put(i > 0 ? "," : "");
            PutResult(printer, results[i]);
        }
        printer.Put("]}");
        printer.End();
    }
    /// A word that stands everywhere has millions of hits: they are printed as they are, without a document of them.
    void PutResult(JsonPrinter& printer, const SearchResult& result) const {
        printer.Put("{\"id\":" + std::to_string(result.id) + ",\"hits\":[");
        std::string hit;
        for (const TextRange& range : result.hits) {
            hit.append(hit.empty() ? "[" : ",[");
            hit.append(std::to_string(range.begin)).append(",").append(std::to_string(range.end)).append("]");
        }
        printer.Put(hit);
        printer.Put("]");
        if (marked_) {
            printer.Put(",\"displayRtf\":");
            printer.PutJson(JsonText(result.displayRtf));
        }
        printer.Put("}");
    }

    std::string text_;
    std::optional<std::string> ids_;
    bool marked_ = false;
};

}  // namespace

void AddSearchCommands(Commands& commands) {
    commands.push_back(std::make_unique<SearchCommand>());
}

}  // namespace lore
