#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <unistd.h>

#include "agent/agent_program.h"
#include "platform/companion_launcher.h"
#include "platform/data_lock.h"
#include "platform/ini_store.h"
#include "platform/instance/agent_process.h"
#include "platform/places.h"
#include "platform/system_sources.h"
#include "ui/theme.h"

// LBAgent [Lorebinder]: shows popup reminders at their time until it is told to close. Ends with 0, with 3 if it can't
// listen to the main program.

namespace {

constexpr int kFault = 3;

class PrintedFaults : public lore::FaultNotice {
public:
    void Tell(const lore::Fault& fault) override {
        std::fprintf(stderr, "LBAgent: %s: %s: %s\n", fault.what.c_str(), fault.path.c_str(), fault.reason.c_str());
    }
};

/// Help and version are for machines without a display too.
bool AsksForWords(int argc, char** argv) {
    constexpr std::string_view kOptions[] = {"-h", "-?", "--help", "--help-all", "-v", "--version"};
    return std::any_of(argv + 1, argv + std::max(argc, 1), [&](std::string_view argument) {
        return std::find(std::begin(kOptions), std::end(kOptions), argument) != std::end(kOptions);
    });
}

std::filesystem::path PathOf(const QString& text) {
    return QFile::encodeName(text).toStdString();
}

struct Arguments {
    lore::CompanionPlaces places;
    bool readyLine = false;
};

Arguments ReadArguments(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows the popup reminders of Lorebinder's calendar at their time.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption data("data", "The data root. Default: LOREBINDER_DATA, otherwise the user's own.", "DIR");
    const QCommandLineOption settings("settings", "The settings store as an INI file.", "FILE");
    const QCommandLineOption ready("ready-line", "Print a line on standard error once messages are taken.");
    parser.addOptions({data, settings, ready});
    parser.addPositionalArgument("Lorebinder", "The product whose reminders are shown.", "[Lorebinder]");
    parser.process(application);
    Arguments arguments{lore::PlacesOfCompanion(), parser.isSet(ready)};
    if (parser.isSet(data)) {
        arguments.places.dataRoot = PathOf(parser.value(data));
        arguments.places.settingsFile = arguments.places.dataRoot / "settings.ini";
    }
    if (parser.isSet(settings))
        arguments.places.settingsFile = PathOf(parser.value(settings));
    return arguments;
}

/// The popups of the agent that runs come to the front.
int LeaveToTheOther(lore::LocalChannel& channel) {
    channel.SendToInstance({}, true);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName("LBAgent");
    QCoreApplication::setApplicationVersion("1.56");
    if (AsksForWords(argc, argv)) {
        ReadArguments(QCoreApplication(argc, argv));
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Lorebinder Agent");
    QApplication::setDesktopFileName("lorebinder");
    QApplication::setWindowIcon(QIcon(":/icons/lorebinder.svg"));
    QApplication::setQuitOnLastWindowClosed(false);
    const Arguments arguments = ReadArguments(application);
    const lore::CompanionPlaces& places = arguments.places;

    lore::LocalChannel channel(lore::kAgentRole, places.dataRoot);
    int error = 0;
    const auto lock = lore::DataLock::Take(places.dataRoot, "agent-" + std::to_string(::getuid()) + ".lock", error);
    if ((!lock && error == 0) || channel.FindInstance())
        return LeaveToTheOther(channel);

    lore::SystemClock clock;
    PrintedFaults faults;
    lore::CompanionLauncher companions(places.dataRoot, places.settingsFile);
    lore::AgentProcess self(lore::ProgramFolder() / lore::kAgentProgram, lore::AgentAutostart(places), places.dataRoot,
                            companions, lore::PlaceArguments(places));
    lore::Theme theme(application);
    lore::AgentProgram program({places, clock, faults, companions, self, theme});
    QObject::connect(&program, &lore::AgentProgram::Closed, &application, &QCoreApplication::quit);
    if (!channel.Listen([&](const lore::InstanceMessage& message) { return program.Receive(message); })) {
        std::fprintf(stderr, "LBAgent: no messages can be taken at %s\n", channel.Name().c_str());
        return kFault;
    }
    program.Start();
    if (arguments.readyLine)
        std::fprintf(stderr, "ready\n");
    return QApplication::exec();
}
