#pragma once

#include <QCommandLineOption>
#include <filesystem>

#include "platform/companion_launcher.h"

class QCommandLineParser;

namespace lore {

/// Whether a command line asks for help or the version, which are for machines without a display too.
bool AsksForWords(int argc, char** argv);

/// Parses the command line of the program. Asked for help or the version, prints it and ends the process; tells wrong
/// arguments, or more than so many besides the options, and ends it with ExitStatus::WrongUsage.
void ParseArguments(QCommandLineParser& parser, int mostArguments);

/// The path that an argument names.
std::filesystem::path PathOfArgument(const QString& text);

/// Where a program looks if its command line names no place.
enum class DefaultPlaces {
    Companion,  ///< what PlacesOfCompanion finds
    User,       ///< the user's own, whatever the environment says
};

/// The options --data and --settings. A data root alone comes with the settings that stand in it.
class PlaceOptions {
public:
    explicit PlaceOptions(QCommandLineParser& parser, DefaultPlaces defaults = DefaultPlaces::Companion);
    /// What the parsed options name, otherwise the default places. An empty --data is told and ends the process with
    /// ExitStatus::WrongUsage.
    CompanionPlaces Places() const;

private:
    QCommandLineParser& parser_;
    DefaultPlaces defaults_;
    QCommandLineOption data_, settings_;
};

}  // namespace lore
