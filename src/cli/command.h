#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date_time.h"
#include "cli/session.h"

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace lore {

/// One command of the command line.
class Command {
public:
    virtual ~Command() = default;
    virtual const char* Name() const = 0;
    virtual const char* Help() const = 0;
    /// Declares its options and arguments, which land in members.
    virtual void Declare(CLI::App& app) = 0;
    virtual ExitStatus Run(Session& session) = 0;
};

using Commands = std::vector<std::unique_ptr<Command>>;

// The commands, a group for each unit.
void AddNoteCommands(Commands& commands);
void AddEditCommands(Commands& commands);
void AddSourceCommands(Commands& commands);
void AddSearchCommands(Commands& commands);
void AddTextCommands(Commands& commands);
void AddBibliographyCommands(Commands& commands);
void AddCiteCommands(Commands& commands);
void AddBibliographyOutputCommands(Commands& commands);
void AddClassifyCommands(Commands& commands);
void AddCalendarCommands(Commands& commands);
void AddEventCommands(Commands& commands);
void AddDumpCommands(Commands& commands);
void AddDataCommands(Commands& commands);
void AddCheckCommands(Commands& commands);
void AddNoteBookCommands(Commands& commands);
void AddCopyCommands(Commands& commands);
void AddExchangeCommands(Commands& commands);

/// Runs a whole command line and gives its exit status.
int RunCommandLine(int argc, char** argv);

/// A whole number of 32 bits in decimal digits, with or without a sign; nothing if the text is anything else.
std::optional<int32_t> ParseNumber(std::string_view text);
/// The form of each option and argument that is a number, for its transform: the library would take "010" for eight and
/// an empty text for nought.
CLI::Validator DecimalNumber();
/// "a, b" as its pieces, trimmed.
std::vector<std::string> SplitAtCommas(const std::string& text);
/// The option --ids, "3,7,12", as numbers, each once; none if it isn't given. False, told, if it holds anything else.
bool ParseIdsOption(const std::optional<std::string>& text, LongList& ids);
/// The option as ParseDate reads it; none if it isn't given. False, told, if it is there and is no date.
bool ParseDateOption(const std::optional<std::string>& text, std::optional<DateArgument>& date);

}  // namespace lore
