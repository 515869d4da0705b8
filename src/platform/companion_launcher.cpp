#include "platform/companion_launcher.h"

#include <QCryptographicHash>
#include <QFile>
#include <QProcess>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/places.h"

namespace lore {

namespace {

QString ToQString(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

/// A relative path means another place once the child stands in another folder.
std::filesystem::path Absolute(const std::filesystem::path& path) {
    std::error_code error;
    const auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute;
}

std::filesystem::path Named(const char* variable) {
    const char* const set = std::getenv(variable);
    return set ? set : "";
}

/// True if somebody may wait for the end of what is written to standard error. The desktop's journal doesn't.
bool IsStandardErrorWaitedFor() {
    struct stat status {};
    return ::fstat(STDERR_FILENO, &status) == 0 &&
           (S_ISFIFO(status.st_mode) || (S_ISSOCK(status.st_mode) && !std::getenv("JOURNAL_STREAM")));
}

/// The process outlives this one, so it keeps nothing open whose end somebody waits for. Its faults still go to a
/// terminal, a file or the journal.
void LeaveStreams(QProcess& process) {
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    if (IsStandardErrorWaitedFor())
        process.setStandardErrorFile(QProcess::nullDevice());
}

}  // namespace

CompanionLauncher::CompanionLauncher(const std::filesystem::path& dataRoot, const std::filesystem::path& settingsFile)
    : dataRoot_(Absolute(dataRoot)), settingsFile_(Absolute(settingsFile)) {}

std::optional<std::string> CompanionLauncher::StartCompanion(const std::string& name,
                                                             const std::vector<std::string>& arguments) {
    const std::filesystem::path program = ProgramFolder() / name;
    if (std::error_code error; !std::filesystem::exists(program, error) && !error)
        return kNotInstalled;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(kDataVariable, ToQString(dataRoot_));
    environment.insert(kSettingsVariable, ToQString(settingsFile_));
    process.setProcessEnvironment(environment);
    process.setProgram(ToQString(program));
    QStringList texts;
    for (const std::string& argument : arguments)
        texts.append(QFile::decodeName(QByteArray::fromStdString(argument)));
    process.setArguments(texts);
    LeaveStreams(process);
    if (process.startDetached())
        return std::nullopt;
    return process.errorString().toStdString();
}

CompanionPlaces PlacesOfCompanion() {
    CompanionPlaces places{Named(kDataVariable), Named(kSettingsVariable)};
    if (places.settingsFile.empty())
        places.settingsFile = places.dataRoot.empty() ? UserSettingsFile() : SettingsFileIn(places.dataRoot);
    if (places.dataRoot.empty())
        places.dataRoot = UserDataRoot();
    return places;
}

std::filesystem::path AgentAutostart(const CompanionPlaces& places) {
    if (PlaceArguments(places).empty())
        return AutostartFolder() / "LBAgent.desktop";
    const QByteArray root = QByteArray::fromStdString(Absolute(places.dataRoot).string());
    const QByteArray mark = QCryptographicHash::hash(root, QCryptographicHash::Sha256).toHex().left(16);
    return AutostartFolder() / ("LBAgent-" + mark.toStdString() + ".desktop");
}

std::vector<std::string> PlaceArguments(const CompanionPlaces& places) {
    if (places.dataRoot == UserDataRoot() && places.settingsFile == UserSettingsFile())
        return {};
    return {"--data", Absolute(places.dataRoot).string(), "--settings", Absolute(places.settingsFile).string()};
}

}  // namespace lore
