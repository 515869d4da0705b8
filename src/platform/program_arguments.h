#pragma once

#include <QCommandLineOption>
#include <filesystem>

#include "platform/companion_launcher.h"

class QCommandLineParser;

namespace lore {

/// Whether a command line asks for help or the version, which are for machines without a display too.
bool AsksForWords(int argc, char** argv);

/// The path that an argument names.
std::filesystem::path PathOfArgument(const QString& text);

/// The options --data and --settings of a companion. A data root alone comes with the settings that stand in it.
class PlaceOptions {
public:
    explicit PlaceOptions(QCommandLineParser& parser);
    /// What the parsed options name, otherwise the places of PlacesOfCompanion.
    CompanionPlaces Places() const;

private:
    QCommandLineParser& parser_;
    QCommandLineOption data_, settings_;
};

}  // namespace lore
