#include "platform/program_arguments.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>

#include "platform/exit_status.h"
#include "platform/places.h"

namespace lore {

namespace {

[[noreturn]] void EndForWrongUsage(const QString& wrong) {
    std::fprintf(stderr, "%s: %s\n", qPrintable(QCoreApplication::applicationName()), qPrintable(wrong));
    std::exit(NumberOf(ExitStatus::WrongUsage));
}

}  // namespace

bool AsksForWords(int argc, char** argv) {
    constexpr std::string_view kOptions[] = {"-h", "-?", "--help", "--help-all", "-v", "--version"};
    return std::any_of(argv + 1, argv + std::max(argc, 1), [&](std::string_view argument) {
        return std::find(std::begin(kOptions), std::end(kOptions), argument) != std::end(kOptions);
    });
}

void ParseArguments(QCommandLineParser& parser, int mostArguments) {
    const QStringList arguments = QCoreApplication::arguments();
    QString wrong;
    if (!parser.parse(arguments))
        wrong = parser.errorText();
    else if (parser.positionalArguments().size() > mostArguments)
        wrong = "too many arguments: " + parser.positionalArguments()[mostArguments];
    if (!wrong.isEmpty())
        EndForWrongUsage(wrong);
    parser.process(arguments);
}

std::filesystem::path PathOfArgument(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

PlaceOptions::PlaceOptions(QCommandLineParser& parser, DefaultPlaces defaults)
    : parser_(parser),
      defaults_(defaults),
      data_("data",
            defaults == DefaultPlaces::User ? "The data root, the folder that holds \"Data Files\"."
                                            : "The data root. Default: LOREBINDER_DATA, otherwise the user's own.",
            "DIR"),
      settings_("settings", "The settings store as an INI file.", "FILE") {
    parser.addOptions({data_, settings_});
}

CompanionPlaces PlaceOptions::Places() const {
    CompanionPlaces places =
        defaults_ == DefaultPlaces::User ? CompanionPlaces{UserDataRoot(), UserSettingsFile()} : PlacesOfCompanion();
    if (parser_.isSet(data_) && parser_.value(data_).isEmpty())
        EndForWrongUsage("--data needs the name of a folder");
    if (parser_.isSet(data_)) {
        places.dataRoot = PathOfArgument(parser_.value(data_));
        places.settingsFile = SettingsFileIn(places.dataRoot);
    }
    if (!parser_.value(settings_).isEmpty())
        places.settingsFile = PathOfArgument(parser_.value(settings_));
    return places;
}

}  // namespace lore
