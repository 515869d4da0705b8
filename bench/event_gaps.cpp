// event_gaps DATA [NAME]
//
// Opens the main window on a data folder, does what takes time (or only what has NAME in its name), and prints the
// longest gap of the event loop in milliseconds for each: how long a key that is typed meanwhile waits at most. In
// brackets the longest time that the thread itself worked between two events, which other work on the machine doesn't
// lengthen.

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <string_view>

#include "app/exchange_commands.h"
#include "bench/quiet_world.h"
#include "bench/saved_note.h"
#include "notes/sort_order.h"
#include "platform/ini_store.h"
#include "platform/system_sources.h"
#include "ui/look/theme.h"
#include "ui/main/main_window.h"
#include "ui/main/tool_bar.h"
#include "ui/note_editor/note_actions.h"
#include "ui/ports/qt_progress.h"

namespace lore {
namespace {

/// Runs from one event to the next, and keeps the longest time that lay between two.
class GapClock {
public:
    GapClock() {
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Tick(); });
        timer_.start(1);
    }
    struct Gap {
        double clock = 0, processor = 0;  ///< milliseconds
    };
    Gap LongestOf(const std::function<void()>& work) {
        Rest(300);
        longest_ = {};
        Begin();
        work();
        Rest(300);
        return longest_;
    }
    /// Lets the window do what it has to do, such as painting.
    static void Rest(int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }

private:
    static double ProcessorTime() {
        timespec spent{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
        return static_cast<double>(spent.tv_sec) * 1e3 + static_cast<double>(spent.tv_nsec) / 1e6;
    }
    void Begin() {
        since_.start();
        processorSince_ = ProcessorTime();
    }
    void Tick() {
        longest_.clock = std::max(longest_.clock, static_cast<double>(since_.nsecsElapsed()) / 1e6);
        longest_.processor = std::max(longest_.processor, ProcessorTime() - processorSince_);
        Begin();
    }
    QTimer timer_;
    QElapsedTimer since_;
    double processorSince_ = 0;
    Gap longest_;
};

void Measure(CLorebinderApp& app, MainWindow& window, QuietPrompts& prompts, std::string_view wanted) {
    GapClock clock;
    const auto print = [&](const char* name, const std::function<void()>& work) {
        if (std::string_view(name).find(wanted) == std::string_view::npos)
            return;
        const GapClock::Gap gap = clock.LongestOf(work);
        std::printf("%s: %.1f (%.1f)\n", name, gap.clock, gap.processor);
    };
    auto& tools = *window.findChild<MainToolBar*>();
    const auto search = [&](const char* text) { emit tools.SearchRequested(text, SearchScope::Database); };
    print("search with few results", [&] { search("heliotrope"); });
    print("search with all notes as results", [&] { search("e"); });
    const auto save = [&](int32_t id, int turn) {
        WritingCommands& writing = window.Notes()->Commands();
        if (const std::optional<CNote> note = SaveAnew(writing, id, turn)) {
            writing.NoteSaved(*note);
            emit window.Notes()->NoteSaved(note->id);
        }
        GapClock::Rest(20);
    };
    const LongList ids = app.NoteBook().index.AllIDs();
    print("sorting by source", [&] { emit tools.SortChosen(kSourceUp); });
    print("a save in a list by source", [&] { save(ids[ids.Count() / 2], 0); });
    print("sorting by category", [&] { emit tools.SortChosen(kCategoryUp); });
    print("a save in a list by category", [&] { save(ids[ids.Count() / 2], 1); });
    print("sorting by date", [&] { emit tools.SortChosen(kDateAddedUp); });
    print("saves of notes elsewhere in the list", [&] {
        for (size_t part = 1; part < 6; ++part)
            save(ids[ids.Count() * part / 6], 0);
    });
    print("saves of the note in sight", [&] {
        for (int turn = 0; turn < 20; ++turn)
            save(ids[ids.Count() * 5 / 6], turn);
    });
    prompts.path = (app.Data().root / "gaps.lbe").string();
    print("export of the whole list", [&] { ExportCurrentNotes(app); });
}

}  // namespace
}  // namespace lore

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: event_gaps DATA [NAME]\n");
        return 2;
    }
    const std::filesystem::path data = argv[1];
    lore::Theme theme(application, lore::Appearance::Light);
    lore::QuietPrompts prompts;
    lore::QtProgress progress(theme);
    lore::SystemClock clock;
    lore::SystemGuids guids;
    lore::IniStore store(data / "settings.ini");
    lore::NoFaults faults;
    lore::CLorebinderApp app(data, lore::AppPorts{prompts, progress, clock, guids, store, faults, &progress});
    app.LoadOptions();
    app.SelectStartNoteBook();
    lore::MainWindow window(app, theme);
    progress.SetParent(&window);
    window.resize(1280, 900);
    window.show();
    app.FinishStartup();
    window.ShowNoteBook();
    lore::Measure(app, window, prompts, argc == 3 ? argv[2] : "");
    return 0;
}
