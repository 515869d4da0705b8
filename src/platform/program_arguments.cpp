#include "platform/program_arguments.h"

#include <QCommandLineParser>
#include <QFile>
#include <algorithm>
#include <iterator>
#include <string_view>

namespace lore {

bool AsksForWords(int argc, char** argv) {
    constexpr std::string_view kOptions[] = {"-h", "-?", "--help", "--help-all", "-v", "--version"};
    return std::any_of(argv + 1, argv + std::max(argc, 1), [&](std::string_view argument) {
        return std::find(std::begin(kOptions), std::end(kOptions), argument) != std::end(kOptions);
    });
}

std::filesystem::path PathOfArgument(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

PlaceOptions::PlaceOptions(QCommandLineParser& parser)
    : parser_(parser),
      data_("data", "The data root. Default: LOREBINDER_DATA, otherwise the user's own.", "DIR"),
      settings_("settings", "The settings store as an INI file.", "FILE") {
    parser.addOptions({data_, settings_});
}

CompanionPlaces PlaceOptions::Places() const {
    CompanionPlaces places = PlacesOfCompanion();
    if (parser_.isSet(data_)) {
        places.dataRoot = PathOfArgument(parser_.value(data_));
        places.settingsFile = places.dataRoot / "settings.ini";
    }
    if (parser_.isSet(settings_))
        places.settingsFile = PathOfArgument(parser_.value(settings_));
    return places;
}

}  // namespace lore
