#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/file_io.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

constexpr const char* kAlignNames[] = {"left", "center", "right", "justify"};

Json JsonTextColor(const TextColor& color) {
    return Json::array({color.red, color.green, color.blue});
}

/// A stretch of text with its look; values that are as usual are left out.
Json JsonRun(const Document& document, std::string_view text, const CharFormat& format) {
    Json json = {{"text", text}};
    const std::pair<const char*, bool> flags[] = {
        {"bold", format.bold}, {"italic", format.italic}, {"underline", format.underline}, {"strike", format.strike}};
    for (const auto& [name, on] : flags) {
        if (on)
            json[name] = true;
    }
    if (format.font >= 0)
        json["font"] = document.fonts[static_cast<size_t>(format.font)].name;
    json["size"] = format.half_points / 2.0;
    if (format.color)
        json["color"] = JsonTextColor(*format.color);
    if (format.background)
        json["background"] = JsonTextColor(*format.background);
    if (format.link >= 0)
        json["link"] = document.links[static_cast<size_t>(format.link)];
    return json;
}

/// All characters of a paragraph, the one that ends it included.
Json JsonParagraph(const Document& document, size_t index) {
    const Paragraph& paragraph = document.paragraphs[index];
    Json runs = Json::array();
    for (const TextRun& run : RunsOf(document, index)) {
        if (run.end > run.begin)
            runs.push_back(JsonRun(document, TextOf(document, run), run.format));
    }
    const bool isLast = index + 1 == document.paragraphs.size();
    const size_t next = isLast ? document.text.size() : document.paragraphs[index + 1].begin;
    if (next > paragraph.end) {
        runs.push_back({{"text", std::string_view(document.text).substr(paragraph.end, next - paragraph.end)}});
    }
    return {{"align", kAlignNames[static_cast<size_t>(paragraph.format.align)]}, {"runs", std::move(runs)}};
}

class TextCommand : public Command {
public:
    const char* Name() const override { return "text"; }
    const char* Help() const override { return "Shows the plain text of a rich text file"; }
    void Declare(CLI::App& app) override { app.add_option("FILE", file_, "The file")->required(); }
    ExitStatus Run(Session& session) override {
        std::string rtf;
        if (const FileResult result = ReadFile(file_, rtf); !result.Ok()) {
            session.Faults().Tell({"The file could not be read", file_, result.Reason()});
            return ExitStatus::Fault;
        }
        if (session.Json()) {
            PrintDocument(ReadRtf(rtf));
            return ExitStatus::Done;
        }
        std::string text = PlainText(rtf);
        if (!text.empty() && !text.ends_with('\n'))
            text += '\n';
        std::fwrite(text.data(), 1, text.size(), stdout);
        return ExitStatus::Done;
    }

private:
    static void PrintDocument(const Document& document) {
        Json paragraphs = Json::array();
        for (size_t i = 0; i < document.paragraphs.size(); ++i)
            paragraphs.push_back(JsonParagraph(document, i));
        PrintJson(
            {{"text", document.text}, {"paragraphs", std::move(paragraphs)}, {"pictures", document.pictures.size()}});
    }

    std::string file_;
};

}  // namespace

void AddTextCommands(Commands& commands) {
    commands.push_back(std::make_unique<TextCommand>());
}

}  // namespace lore
