#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "bibliography/citation.h"
#include "bibliography/source_types.h"
#include "cli/bibliography_data.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "cli/shown_text.h"

namespace lore {

namespace {

/// Spans as [kind, start, end], in characters of the text; both ends belong to a span.
Json JsonSpans(std::string_view text, const LongList& kinds, const LongList& starts, const LongList& ends) {
    Json spans = Json::array();
    for (size_t i = 0; i < starts.Count() && i < ends.Count() && i < kinds.Count(); ++i) {
        const size_t start = CharacterOfByte(text, static_cast<size_t>(starts[i]));
        const size_t end = CharacterOfByte(text, static_cast<size_t>(ends[i]) + 1);
        spans.push_back(Json::array({kinds[i], start, end - 1}));
    }
    return spans;
}

/// The same text with one byte for each character, as far as lines are broken by it: for positions that are characters,
/// also those that a correction moved behind the end of the text.
std::string OneByteEach(std::string_view text) {
    std::string bytes;
    for (const char32_t c : ToCodePoints(text))
        bytes += c < 0x80u ? static_cast<char>(c) : 'x';
    return bytes;
}

Json JsonWrappedSpans(const Json& spans, std::string_view text, int32_t indent, int width) {
    CSource shadow;
    shadow.IndentSpaces = indent;
    for (const Json& span : spans) {
        shadow.SpanStarts.AddTail(span[1]);
        shadow.SpanEnds.AddTail(span[2]);
    }
    const WrappedCitation wrapped = WrapCitation(shadow, OneByteEach(text), width);
    Json moved = spans;
    for (size_t i = 0; i < moved.size(); ++i) {
        moved[i][1] = wrapped.spanStarts[i];
        moved[i][2] = wrapped.spanEnds[i];
    }
    return moved;
}

class CiteCommand : public Command {
public:
    const char* Name() const override { return "cite"; }
    const char* Help() const override { return "Shows sources as they are cited"; }
    void Declare(CLI::App& app) override {
        auto* const ids =
            app.add_option("SOURCEID", ids_, "Sources by number; all when none is given")->transform(DecimalNumber());
        app.add_option("--style", style_, "A citation style by number, for this run only")
            ->type_name("N")
            ->check(CLI::Range(0, kStyleCount - 1))
            ->transform(DecimalNumber());
        app.add_option("--width", width_, "Also wrapped for this width in characters")
            ->type_name("W")
            ->transform(DecimalNumber());
        app.add_option("--file", file_, "Sources of a JSON file instead of the NoteBook's")
            ->type_name("FILE.json")
            ->excludes(ids);
    }
    ExitStatus Run(Session& session) override {
        ExitStatus status = ExitStatus::NothingFound;
        auto data = file_ ? ReadBibliographyJson(session, *file_, status) : LoadBibliographyData(session);
        if (!data)
            return status;
        std::vector<CSource> chosen = Chosen(*data);
        if (chosen.empty() && !ids_.empty()) {
            PrintError("none of these sources is in this NoteBook");
            return ExitStatus::NothingFound;
        }
        Json list = Json::array();
        for (CSource& source : chosen) {
            if (style_)
                source.FormatStyle = *style_;
            FormatSource(source, data->authors);
            list.push_back(Cited(source));
        }
        Print(session, list);
        return ExitStatus::Done;
    }

private:
    std::vector<CSource> Chosen(const BibliographyData& data) const {
        if (ids_.empty())
            return {data.sources.begin(), data.sources.end()};
        std::vector<CSource> chosen;
        for (const int32_t id : ids_) {
            if (const CSource* const source = data.sources.FindSourceByID(id))
                chosen.push_back(*source);
        }
        return chosen;
    }
    Json Cited(CSource& source) const {
        const std::string& text = source.FormattedText;
        Json json = {{"SourceID", source.SourceID},
                     {"FormattedText", JsonText(text)},
                     {"AuthorText", JsonText(source.AuthorText)},
                     {"spans", JsonSpans(text, source.SpanKinds, source.SpanStarts, source.SpanEnds)}};
        if (width_) {
            json["wrapped"] = JsonText(WrapCitation(source, text, *width_).text);
            json["wrappedSpans"] = JsonWrappedSpans(json["spans"], text, source.IndentSpaces, *width_);
        }
        return json;
    }
    static void Print(const Session& session, const Json& list) {
        if (session.Json())
            return PrintJson(list);
        for (const Json& json : list) {
            const bool isWrapped = json.contains("wrapped");
            const std::string text = json.value(isWrapped ? "wrapped" : "FormattedText", "");
            std::printf("%s\n", (isWrapped ? ShownLines(text) : Shown(text)).c_str());
        }
    }

    std::vector<int32_t> ids_;
    std::optional<int32_t> style_;
    std::optional<int> width_;
    std::optional<std::string> file_;
};

}  // namespace

void AddCiteCommands(Commands& commands) {
    commands.push_back(std::make_unique<CiteCommand>());
}

}  // namespace lore
