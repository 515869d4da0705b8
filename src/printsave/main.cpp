#include <QApplication>
#include <QCommandLineParser>
#include <QMessageBox>
#include <cstdio>
#include <cstring>
#include <memory>

#include "base/program_version.h"
#include "notes/notebook_list.h"
#include "platform/companion_launcher.h"
#include "platform/exit_status.h"
#include "platform/ini_store.h"
#include "platform/program_arguments.h"
#include "platform/standard_streams.h"
#include "platform/system_sources.h"
#include "printsave/content_source.h"
#include "printsave/preview_window.h"
#include "ui/look/theme.h"

// PrintSave [FILE]: shows what was handed over for printing. Ends with 0, with 2 for wrong arguments, with 3 if a file
// can't be read or written.

namespace {

struct Arguments {
    std::filesystem::path file;  ///< empty for the notes at their known place
    QString out;
    size_t font = 0;
    lore::CompanionPlaces places;
};

/// By any part of its name that only one font has, such as "courier".
std::optional<size_t> FindFont(const QString& name) {
    for (size_t i = 0; i < std::size(lore::kBibliographyFonts); ++i) {
        const std::string_view known = lore::kBibliographyFonts[i].name;
        if (QString::fromUtf8(known.data(), static_cast<qsizetype>(known.size())).contains(name, Qt::CaseInsensitive))
            return i;
    }
    return std::nullopt;
}

int Refuse(const char* what) {
    std::fprintf(stderr, "PrintSave: %s\n", what);
    return lore::NumberOf(lore::ExitStatus::WrongUsage);
}

/// Gives the exit status for wrong arguments, otherwise nothing.
std::optional<int> ReadArguments(Arguments& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows a bibliography, or the notes that Lorebinder has handed over, page by page; prints them and saves them "
        "as PDF, HTML, RTF, ODT or plain text.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption save("save", "Save in the form that the ending says, and open no window.", "OUT");
    const QCommandLineOption font("font", "The typeface of a bibliography: times, arial or courier.", "NAME");
    parser.addOptions({save, font});
    const lore::PlaceOptions places(parser);
    parser.addPositionalArgument("FILE", "A hand-over file. Default: the notes in \"Data Files/PrintPreview.nbf\".",
                                 "[FILE]");
    lore::ParseArguments(parser, 1);
    arguments.file = lore::PathOfArgument(parser.positionalArguments().value(0));
    arguments.out = parser.value(save);
    if (parser.isSet(save) && !lore::FindSavedForm(arguments.out.toStdString()))
        return Refuse("the file to save must end in .pdf, .html, .rtf, .odt or .txt");
    const std::optional<size_t> chosen = FindFont(parser.isSet(font) ? parser.value(font) : "Times");
    if (!chosen)
        return Refuse("the font must be times, arial or courier");
    arguments.font = *chosen;
    arguments.places = places.Places();
    return std::nullopt;
}

/// The NoteBook that the notes come from: the one that the settings name.
lore::NoteBookPaths PathsOfNoteBook(const lore::DataPaths& data, const lore::Settings& settings,
                                    const lore::ReadContext& context) {
    std::vector<lore::CDatabase> noteBooks;
    lore::LoadDatabases(data.DatabasesFile(), context, noteBooks);
    const lore::CDatabase open =
        lore::StartNoteBook(noteBooks, {settings.Text(lore::Option::LocalGUID), settings.Text(lore::Option::Database)});
    return {data, open.folder};
}

lore::ContentSource ContentOf(std::shared_ptr<const lore::HandOver> read, const lore::DataPaths& data,
                              const lore::IniStore& store, const lore::ReadContext& context) {
    if (read->isBibliography)
        return lore::SourceOfBibliography(std::move(read));
    lore::Settings settings;
    settings.LoadOptions(store);
    return lore::SourceOfNotes(std::move(read), PathsOfNoteBook(data, settings, context),
                               lore::BoardOptionsOf(settings, store));
}

int Fail(const QString& problem, bool windowed) {
    std::fprintf(stderr, "PrintSave: %s\n", qPrintable(problem));
    if (windowed)
        QMessageBox::warning(nullptr, QObject::tr("Print or Save"), problem);
    return lore::NumberOf(lore::ExitStatus::Fault);
}

/// Saving needs no display, and neither do words about the program.
bool IsHeadless(int argc, char** argv) {
    if (lore::AsksForWords(argc, argv))
        return true;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--save") == 0 || std::strncmp(argv[i], "--save=", 7) == 0)
            return true;
    }
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    lore::PrepareStandardStreams();
    const bool headless = IsHeadless(argc, argv);
    if (headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("QT_LOGGING_RULES", "*.warning=false");  // no words about a desktop session that isn't needed
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName("PrintSave");
    QApplication::setApplicationVersion(lore::ProgramVersion());
    QApplication::setDesktopFileName("lorebinder");
    QApplication::setWindowIcon(QIcon(":/icons/lorebinder.svg"));
    Arguments arguments;
    if (const std::optional<int> status = ReadArguments(arguments))
        return *status;

    lore::IniStore store(arguments.places.settingsFile);
    if (const auto& unread = store.Unread())
        return Fail(QObject::tr("The settings could not be read: %1: %2")
                        .arg(QString::fromStdString(unread->path), QString::fromStdString(unread->reason)),
                    !headless);
    lore::Settings settings;
    settings.LoadOptions(store);
    std::optional<lore::Theme> theme;
    if (!headless)
        theme.emplace(application, static_cast<lore::Appearance>(settings.Int(lore::Option::Appearance)));
    const lore::DataPaths data{arguments.places.dataRoot};
    lore::SystemClock clock;
    lore::SystemGuids guids;
    const lore::ReadContext context = lore::MakeReadContext(clock, guids);
    const auto read = std::make_shared<const lore::HandOver>(
        lore::ReadHandOver(arguments.file.empty() ? data.PrintPreview() : arguments.file, context));
    if (!read->problem.empty())
        return Fail(QString::fromStdString(read->problem), !headless);
    if (!headless) {
        lore::PreviewWindow window(ContentOf(read, data, store, context), *theme, store);
        window.show();
        return QApplication::exec();
    }
    lore::PrintContent content = ContentOf(read, data, store, context).Whole();
    content.SetFont(arguments.font);
    const QString failed = lore::SaveContent(content, *lore::FindSavedForm(arguments.out.toStdString()),
                                             lore::StandardPaper(), arguments.out);
    return failed.isEmpty() ? 0 : Fail(failed, false);
}
