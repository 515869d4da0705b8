// How long it takes to save one note in a NoteBook of 20,000, beside the plain writing of a file of the same size: the
// whole transaction of the editor, with the lists of the picture.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "app/lorebinder_app.h"
#include "bench/bench_folder.h"
#include "bench/notebook_generator.h"
#include "bench/quiet_world.h"
#include "bench/saved_note.h"
#include "platform/ini_store.h"
#include "platform/system_sources.h"
#include "ports/silent_progress.h"

namespace lore {
namespace {

constexpr int32_t kNotes = 20000;

/// The application on a data folder of its own, which goes with the process.
class OpenApplication {
public:
    OpenApplication() {
        GeneratorOptions options;
        options.count = kNotes;
        GenerateNoteBook(Top(), options);
        app_.LoadOptions();
        app_.SelectStartNoteBook();
        app_.FinishStartup();
    }
    static OpenApplication& Get() {
        static OpenApplication application;
        return application;
    }
    const std::filesystem::path& Top() const { return folder_.Path(); }
    CLorebinderApp& App() { return app_; }

private:
    BenchFolder folder_;
    QuietPrompts prompts_;
    SilentProgress progress_;
    SystemClock clock_;
    SystemGuids guids_;
    IniStore store_{Top() / "settings.ini"};
    NoFaults faults_;
    CLorebinderApp app_{Top(), AppPorts{prompts_, progress_, clock_, guids_, store_, faults_}};
};

void SaveOneNote(benchmark::State& state) {
    CLorebinderApp& app = OpenApplication::Get().App();
    WritingCommands writing(app);
    const int32_t id = MiddleNote(app.NoteBook());
    int turn = 0;
    for (auto _ : state)
        if (!SaveAnew(writing, id, ++turn))
            state.SkipWithError("the note was not saved");
}
BENCHMARK(SaveOneNote)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What a safe write of 64 kB costs at least: the file beside, its flush, the rename, the flush of the folder.
void PlainWrite(benchmark::State& state) {
    const std::filesystem::path folder = OpenApplication::Get().Top();
    const std::string bytes(65536, 'x');
    const int directory = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (auto _ : state) {
        const int file = open((folder / "plain.tmp").c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        const bool written = write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        if (!written || fsync(file) != 0 || close(file) != 0 ||
            rename((folder / "plain.tmp").c_str(), (folder / "plain.dat").c_str()) != 0 || fsync(directory) != 0)
            state.SkipWithError("the file was not written");
    }
    close(directory);
}
BENCHMARK(PlainWrite)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
