#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "base/text.h"
#include "bibliography/output_selection.h"
#include "bibliography/output_writers.h"
#include "bibliography/source_types.h"
#include "cli/bibliography_data.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/shown_text.h"
#include "platform/pdf_file.h"

namespace lore {

namespace {

constexpr const char* kFailed = "The bibliography could not be written";

/// Where the window keeps a bibliography in the data folder, one may be written.
bool IsOfWindow(const std::filesystem::path& file, const DataPaths& data) {
    std::error_code error;
    return std::filesystem::weakly_canonical(file, error) ==
           std::filesystem::weakly_canonical(data.Bibliography(), error);
}

class BibliographyCommand : public Command {
public:
    const char* Name() const override { return "bibliography"; }
    const char* Help() const override { return "Writes a bibliography as .dat, .html, .rtf, .odt, .pdf or .txt"; }
    void Declare(CLI::App& app) override {
        app.add_option("SOURCEID", ids_, "Sources by number; all when none is given")->transform(DecimalNumber());
        app.add_option("--out", out_, "The file, whose ending says the form")->type_name("FILE")->required();
        app.add_option("--style", selection_.style, "A citation style by number for all sources")
            ->type_name("N")
            ->check(CLI::Range(0, kStyleCount - 1))
            ->transform(DecimalNumber());
        app.add_option("--indent", selection_.indentSpaces, "Blanks of the hanging indent, 0 to 10")
            ->type_name("N")
            ->transform(DecimalNumber());
        app.add_option("--et-al", selection_.authorsBeforeEtAl, "Authors before \"et al\", 1 to 15")
            ->type_name("N")
            ->transform(DecimalNumber());
        app.add_flag("--unsorted", unsorted_, "In the order of the ids, or of the file");
    }
    ExitStatus Run(Session& session) override {
        const std::string ending = ToLower(FileExtension(out_));
        if (!IsForm(ending)) {
            PrintError("the ending of \"" + out_ + "\" must be .dat, .html, .rtf, .odt, .pdf or .txt");
            return ExitStatus::WrongUsage;
        }
        if (!IsOfWindow(out_, session.Data()) && !session.MayWrite(out_))
            return ExitStatus::WrongUsage;
        auto data = LoadBibliographyData(session);
        if (!data)
            return ExitStatus::NothingFound;
        for (const int32_t id : ids_)
            selection_.ids.AddUnique(id);
        selection_.sorted = !unsorted_;
        const LongList absent = Absent(data->sources);
        SourceList sources = SelectSources(std::move(data->sources), data->authors, selection_);
        if (sources.Count() == 0) {
            PrintError(ids_.empty() ? "this NoteBook has no sources" : "none of these sources is in this NoteBook");
            return session.Faults().Any() ? ExitStatus::Fault : ExitStatus::NothingFound;
        }
        for (const int32_t id : absent)
            PrintError("there is no source " + std::to_string(id) + " in this NoteBook");
        if (!Write(session, sources, data->authors, ending))
            return ExitStatus::Fault;
        Print(session, sources);
        return ExitStatus::Done;
    }

private:
    static bool IsForm(std::string_view ending) {
        return ending == "dat" || ending == "pdf" || FindBibliographyWriter(ending) != nullptr;
    }
    /// The chosen ids that no source has.
    LongList Absent(const SourceList& sources) const {
        LongList absent;
        for (const int32_t id : selection_.ids) {
            if (!sources.FindSourceByID(id))
                absent.AddTail(id);
        }
        return absent;
    }
    bool Write(Session& session, SourceList& sources, const AuthorList& authors, std::string_view ending) const {
        if (ending == "dat")
            return Told(session, sources.SaveBibliography(out_, authors));
        sources.FormatAll(authors);
        const BibliographyDocument document = MakeBibliographyDocument(sources);
        if (ending == "pdf")
            return WritePdf(BibliographyAsHtml(document), out_, session.Faults());
        const std::optional<std::string> bytes = FindBibliographyWriter(ending)(document);
        return Told(session, bytes ? WriteFileAtomically(out_, *bytes) : FileResult{ENOMEM});
    }
    bool Told(Session& session, const FileResult& result) const {
        if (!result.Ok())
            session.Faults().Tell({kFailed, out_, result.Reason()});
        return result.Ok();
    }
    void Print(const Session& session, const SourceList& sources) const {
        if (!session.Json()) {
            std::printf("%zu sources written to %s\n", sources.Count(), Shown(out_).c_str());
            return;
        }
        Json ids = Json::array();
        for (const CSource& source : sources)
            ids.push_back(source.SourceID);
        PrintJson({{"file", JsonText(out_)}, {"sources", std::move(ids)}});
    }

    BibliographySelection selection_;
    std::vector<int32_t> ids_;
    std::string out_;
    bool unsorted_ = false;
};

}  // namespace

void AddBibliographyOutputCommands(Commands& commands) {
    commands.push_back(std::make_unique<BibliographyCommand>());
}

}  // namespace lore
