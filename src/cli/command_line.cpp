#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <new>
#include <utility>

#include "base/ascii.h"
#include "base/program_version.h"
#include "base/text.h"
#include "cli/command.h"

namespace lore {

namespace {

Commands AllCommands() {
    Commands commands;
    AddNoteCommands(commands);
    AddEditCommands(commands);
    AddSourceCommands(commands);
    AddSearchCommands(commands);
    AddTextCommands(commands);
    AddBibliographyCommands(commands);
    AddCiteCommands(commands);
    AddBibliographyOutputCommands(commands);
    AddClassifyCommands(commands);
    AddCalendarCommands(commands);
    AddEventCommands(commands);
    AddDumpCommands(commands);
    AddDataCommands(commands);
    AddCheckCommands(commands);
    AddNoteBookCommands(commands);
    AddCopyCommands(commands);
    AddExchangeCommands(commands);
    return commands;
}

void DeclareGlobals(CLI::App& app, GlobalOptions& options) {
    app.add_option("--data", options.data, "The data root, the folder that holds \"Data Files\"")->type_name("DIR");
    app.add_option("--settings", options.settings, "The settings store as an INI file")->type_name("FILE");
    app.add_option("--notebook", options.noteBook, "A NoteBook by name, folder name or GUID")->type_name("NOTEBOOK");
    app.add_flag("--json", options.json, "Print one JSON document");
    app.fallthrough();
    app.require_subcommand(1);
}

/// Tells an option that was given without a text. An empty one names nothing, not what stands for it when it is left
/// out.
ExitStatus CheckGiven(const CLI::App& app, const GlobalOptions& options) {
    const auto isEmpty = [&app](const char* name, const std::string& text) {
        return text.empty() && app.count(name) > 0;
    };
    if (isEmpty("--data", options.data)) {
        PrintError("--data needs the name of a folder");
        return ExitStatus::WrongUsage;
    }
    if (isEmpty("--settings", options.settings)) {
        PrintError("--settings needs the name of a file");
        return ExitStatus::WrongUsage;
    }
    if (isEmpty("--notebook", options.noteBook)) {
        PrintNoNoteBook(options.noteBook);
        return ExitStatus::NothingFound;
    }
    return ExitStatus::Done;
}

/// Also prints the help, if that is what was asked for.
ExitStatus TellWrongArguments(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> words = app.remaining();
    if (app.get_subcommands().empty() && !words.empty() && !words.front().starts_with('-') &&
        error.get_exit_code() != 0) {
        PrintError("there is no command \"" + words.front() + "\"; lorebinder-cli --help lists them all");
        return ExitStatus::WrongUsage;
    }
    return app.exit(error) == 0 ? ExitStatus::Done : ExitStatus::WrongUsage;
}

int Finish(ExitStatus status, const PrintedFaults& faults) {
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        PrintError("standard output could not be written");
        status = ExitStatus::Fault;
    }
    // What could not be read may be what was not found.
    if ((status == ExitStatus::Done || status == ExitStatus::NothingFound) && faults.Any())
        status = ExitStatus::Fault;
    return NumberOf(status);
}

/// The words after the program's name, the last one first, as the parser takes them. An empty value, as in
/// "--keywords=", is a word of its own: the parser would take the next option for it.
std::vector<std::string> WordsOf(int argc, char** argv) {
    std::vector<std::string> words;
    bool hasOptions = true;
    for (int i = 1; i < argc; ++i) {
        std::string_view word = argv[i];
        hasOptions = hasOptions && word != "--";
        const bool isEmptied =
            hasOptions && word.size() > 3 && word.starts_with("--") && word.find('=') == word.size() - 1;
        words.emplace_back(word.substr(0, word.size() - (isEmptied ? 1 : 0)));
        if (isEmptied)
            words.emplace_back();
    }
    std::reverse(words.begin(), words.end());
    return words;
}

}  // namespace

std::optional<int32_t> ParseNumber(std::string_view text) {
    const bool hasSign = text.starts_with('+') || text.starts_with('-');
    const std::string_view digits = text.substr(hasSign ? 1 : 0);
    int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.starts_with('-'))
        return std::nullopt;
    number = text.starts_with('-') ? -number : number;
    return std::in_range<int32_t>(number) ? std::optional(static_cast<int32_t>(number)) : std::nullopt;
}

CLI::Validator DecimalNumber() {
    const auto toDecimal = [](std::string& text) -> std::string {
        const std::optional<int32_t> number = ParseNumber(text);
        if (!number)
            return "takes a whole number in decimal digits, of 32 bits, not \"" + text + "\"";
        text = std::to_string(*number);
        return {};
    };
    return CLI::Validator(toDecimal, "");
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> pieces;
    for (size_t from = 0; from <= text.size();) {
        const size_t comma = std::min(text.find(',', from), text.size());
        pieces.emplace_back(Trim(std::string_view(text).substr(from, comma - from)));
        from = comma + 1;
    }
    return pieces;
}

bool ParseIdsOption(const std::optional<std::string>& text, LongList& ids) {
    if (!text)
        return true;
    for (const std::string& piece : SplitAtCommas(*text)) {
        const std::optional<int32_t> id = ParseNumber(piece);
        if (!id) {
            PrintError("--ids takes numbers separated by commas, not \"" + *text + "\"");
            return false;
        }
        ids.AddUnique(*id);
    }
    return true;
}

bool ParseDateOption(const std::optional<std::string>& text, std::optional<DateArgument>& date) {
    if (!text)
        return true;
    date = ParseDate(*text);
    if (!date)
        PrintError("a date is written YYYY-MM-DD or YYYY-MM-DDTHH:MM:SS");
    return date.has_value();
}

int RunCommandLine(int argc, char** argv) try {
    CLI::App app("Lorebinder on the command line: research notes, their sources, categories and calendar");
    app.name("lorebinder-cli");
    app.set_version_flag("--version",
                         std::string("Lorebinder ") + ProgramVersion() + ", data version " + kDataVersionText);
    GlobalOptions options;
    DeclareGlobals(app, options);
    const Commands commands = AllCommands();
    for (const auto& command : commands)
        command->Declare(*app.add_subcommand(command->Name(), command->Help()));
    try {
        app.parse(WordsOf(argc, argv));
    } catch (const CLI::ParseError& error) {
        return Finish(TellWrongArguments(app, error), PrintedFaults("lorebinder-cli"));
    }
    if (const ExitStatus given = CheckGiven(app, options); given != ExitStatus::Done)
        return NumberOf(given);
    const std::string name = app.get_subcommands().front()->get_name();
    const auto chosen =
        std::find_if(commands.begin(), commands.end(), [&](const auto& command) { return command->Name() == name; });
    Session session(options);
    ExitStatus status = ExitStatus::Done;
    if (!options.noteBook.empty() && !session.NoteBook(status))
        return Finish(status, session.Faults());
    status = (*chosen)->Run(session);
    session.TellDataElsewhere();
    return Finish(status, session.Faults());
} catch (const std::bad_alloc&) {
    PrintError("there is not enough memory for this command");
    return NumberOf(ExitStatus::Fault);
} catch (const std::exception& error) {
    PrintError("the command could not be done: " + std::string(error.what()));
    return NumberOf(ExitStatus::Fault);
}

}  // namespace lore
