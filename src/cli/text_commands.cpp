#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/file_io.h"
#include "cli/command.h"
#include "cli/json_records.h"
#include "notes/file_faults.h"
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
    json["size"] = format.halfPoints / 2.0;
    if (format.color)
        json["color"] = JsonTextColor(*format.color);
    if (format.background)
        json["background"] = JsonTextColor(*format.background);
    if (format.link >= 0)
        json["link"] = document.links[static_cast<size_t>(format.link)];
    return json;
}

/// All characters of a paragraph, the one that ends it included. Each run goes as it is made: of an object for each of
/// its runs, or paragraphs, a text would take a hundred times its size.
void PrintParagraph(JsonPrinter& printer, const Document& document, size_t index) {
    const Paragraph& paragraph = document.paragraphs[index];
    const char* parting = "";
    const auto put = [&](const Json& run) {
        printer.Put(parting);
        printer.PutJson(run);
        parting = ",";
    };
    printer.Put(R"({"align":")");
    printer.Put(kAlignNames[static_cast<size_t>(paragraph.format.align)]);
    printer.Put(R"(","runs":[)");
    for (const TextRun& run : RunsOf(document, index)) {
        if (run.end > run.begin)
            put(JsonRun(document, TextOf(document, run), run.format));
    }
    const bool isLast = index + 1 == document.paragraphs.size();
    const size_t next = isLast ? document.text.size() : document.paragraphs[index + 1].begin;
    if (next > paragraph.end)
        put({{"text", std::string_view(document.text).substr(paragraph.end, next - paragraph.end)}});
    printer.Put("]}");
}

class TextCommand : public Command {
public:
    const char* Name() const override { return "text"; }
    const char* Help() const override { return "Shows the plain text of a rich text file"; }
    void Declare(CLI::App& app) override { app.add_option("FILE", file_, "The file")->required(); }
    ExitStatus Run(Session& session) override {
        std::string rtf;
        if (const FileResult result = ReadFileOrStream(file_, rtf); !result.Ok()) {
            session.Faults().Tell({kFileUnread, file_, result.Reason()});
            return ExitStatus::Fault;
        }
        if (session.Json()) {
            const Document document = ReadRtf(rtf);
            rtf = std::string();
            PrintDocument(document);
            return ExitStatus::Done;
        }
        std::string text = PlainText(rtf);
        if (!text.empty())
            text += '\n';  // after the last paragraph, which has none
        std::fwrite(text.data(), 1, text.size(), stdout);
        return ExitStatus::Done;
    }

private:
    static void PrintDocument(const Document& document) {
        JsonPrinter printer;
        printer.Put(R"({"text":)");
        printer.PutJson(document.text);
        printer.Put(R"(,"paragraphs":[)");
        for (size_t i = 0; i < document.paragraphs.size(); ++i) {
            printer.Put(i > 0 ? "," : "");
            PrintParagraph(printer, document, i);
        }
        printer.Put(R"(],"pictures":)");
        printer.PutJson(document.pictures.size());
        printer.Put("}");
        printer.End();
    }

    std::string file_;
};

}  // namespace

void AddTextCommands(Commands& commands) {
    commands.push_back(std::make_unique<TextCommand>());
}

}  // namespace lore
