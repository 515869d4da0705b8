#include <QApplication>
#include <QCommandLineParser>
#include <cstdio>
#include <unistd.h>

#include "agent/agent_program.h"
#include "base/program_version.h"
#include "platform/companion_launcher.h"
#include "platform/data_lock.h"
#include "platform/exit_status.h"
#include "platform/ini_store.h"
#include "platform/instance/agent_process.h"
#include "platform/places.h"
#include "platform/printed_faults.h"
#include "platform/program_arguments.h"
#include "platform/standard_streams.h"
#include "platform/system_sources.h"
#include "ui/look/theme.h"

// LBAgent [Lorebinder]: shows popup reminders at their time until it is told to close. Ends with 0, with 2
// for wrong arguments, with 3 if it can't listen to the main program.

namespace {

struct Arguments {
    lore::CompanionPlaces places;
    bool readyLine = false;
};

Arguments ReadArguments() {
    QCommandLineParser parser;
    parser.setApplicationDescription("Shows the popup reminders of Lorebinder's calendar at their time.");
    parser.addHelpOption();
    parser.addVersionOption();
    const lore::PlaceOptions places(parser);
    const QCommandLineOption ready("ready-line", "Print a line on standard error once messages are taken.");
    parser.addOption(ready);
    parser.addPositionalArgument("Lorebinder", "The product whose reminders are shown.", "[Lorebinder]");
    lore::ParseArguments(parser, 1);
    return {places.Places(), parser.isSet(ready)};
}

/// The popups of the agent that runs come to the front.
int LeaveToTheOther(lore::LocalChannel& channel) {
    channel.SendToInstance({}, true);
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    lore::PrepareStandardStreams();
    QCoreApplication::setApplicationName("LBAgent");
    QCoreApplication::setApplicationVersion(lore::ProgramVersion());
    if (lore::AsksForWords(argc, argv)) {
        const QCoreApplication application(argc, argv);
        ReadArguments();
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("Lorebinder Agent");
    QApplication::setDesktopFileName("lorebinder");
    QApplication::setWindowIcon(QIcon(":/icons/lorebinder.svg"));
    QApplication::setQuitOnLastWindowClosed(false);
    const Arguments arguments = ReadArguments();
    const lore::CompanionPlaces& places = arguments.places;

    lore::LocalChannel channel(lore::kAgentRole, places.dataRoot);
    const auto attempt = lore::DataLock::Take(places.dataRoot, "agent-" + std::to_string(::getuid()) + ".lock");
    if (attempt.IsHeldByOther() || channel.FindInstance())
        return LeaveToTheOther(channel);

    lore::SystemClock clock;
    lore::PrintedFaults faults("LBAgent");
    lore::CompanionLauncher companions(places.dataRoot, places.settingsFile);
    lore::AgentProcess self(lore::ProgramFolder() / lore::kAgentProgram, lore::AgentAutostart(places), places.dataRoot,
                            companions, lore::PlaceArguments(places));
    lore::Theme theme(application);
    lore::AgentProgram program({places, clock, faults, companions, self, theme});
    QObject::connect(&program, &lore::AgentProgram::Closed, &application, &QCoreApplication::quit);
    if (!channel.Listen([&](const lore::InstanceMessage& message) { return program.Receive(message); })) {
        std::fprintf(stderr, "LBAgent: no messages can be taken at %s\n", channel.Name().c_str());
        return lore::NumberOf(lore::ExitStatus::Fault);
    }
    program.Start();
    if (arguments.readyLine)
        std::fprintf(stderr, "ready\n");
    return QApplication::exec();
}
