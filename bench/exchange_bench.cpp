// Export and import of 20,000 notes with 500 attachments, beside the common tools on the same texts and files: the
// export against "zip -qr" of the texts as files, the import against "unzip -tq" of the archive. All of one run.

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

#include "bench/bench_folder.h"
#include "bench/notebook_generator.h"
#include "bench/quiet_world.h"
#include "edit/attachment_store.h"
#include "exchange/export_notes.h"
#include "exchange/import_notes.h"
#include "notes/note_finder.h"
#include "notes/note_store.h"
#include "ports/silent_progress.h"

namespace lore {
namespace {

constexpr int32_t kNotes = 20000;
constexpr int kAttachments = 500;

class TakeAll : public ImportChooser {
public:
    bool ChooseNotes(ImportComparison&, ImportArchive&) override { return true; }
};

/// A data folder with notes and attachments, and the same texts and files as a person would pack them.
class Material {
public:
    Material() {
        GeneratorOptions options;
        options.count = kNotes;
        GenerateNoteBook(Data(), options);
        book.paths = NoteBookPaths(DataPaths{Data()}, kMainNoteBookFolder);
        LoadNoteBook(book, counters, world.context, world.faults, {});
        AddAttachments();
        WriteTexts(Top() / "txt", options);
    }
    std::filesystem::path Data() const { return Top() / "data"; }
    std::filesystem::path Archive() const { return Top() / "notes.lbe"; }
    const std::filesystem::path& Top() const { return folder_.Path(); }

    QuietWorld world;
    IdCounters counters;
    OpenNoteBook book;

private:
    void AddAttachments() {
        std::mt19937 random(5);
        std::vector<CNote> notes = FindNotes(book.index, book.index.AllIDs(), world.context, world.faults);
        notes.resize(kAttachments);
        for (size_t i = 0; i < notes.size(); ++i) {
            std::string bytes(20'000 + random() % 360'000, '\0');
            for (char& c : bytes)
                c = static_cast<char>(random());
            const std::string name = StoredAttachmentName(static_cast<int>(i) + 1, "jpg");
            std::ofstream(book.paths.Attachments() / name, std::ios::binary) << bytes;
            notes[i].attachments.push_back({0, 1.0, name, name, "", 1, true});
        }
        NoteStore(book, world.context, world.faults, nullptr).SaveNotes(std::move(notes));
    }
    BenchFolder folder_;
};

Material& Made() {
    static Material material;
    return material;
}

void RunTool(benchmark::State& state, const std::string& command) {
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError(command.c_str());
    }
}

void MakeArchive() {
    Material& made = Made();
    QuietPrompts prompts;
    SilentProgress progress;
    ExportNotes(NotesOfNoteBook(made.book, made.world.context, made.world.faults), made.Archive(),
                ExportedSources::OfNotes,
                {made.book, DataPaths{made.Data()}, made.world.context, {prompts, progress, made.world.faults}});
}

void Export(benchmark::State& state) {
    for (auto _ : state)
        MakeArchive();
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(Made().Archive()));
}
BENCHMARK(Export)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void ZipOfTheTexts(benchmark::State& state) {
    const std::string top = Made().Top().string();
    const std::string files = "'" + Made().book.paths.Attachments().string() + "'";
    RunTool(state, "cd " + top + " && rm -f z.zip && zip -qr z.zip txt " + files);
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(top + "/z.zip"));
}
BENCHMARK(ZipOfTheTexts)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

/// Size only: what "zip -6" makes of the same record file and attachments.
void ZipOfTheSameFolder(benchmark::State& state) {
    MakeArchive();
    const std::string top = Made().Top().string();
    RunTool(state, "cd " + top + " && rm -rf same s.zip && unzip -qd same notes.lbe && zip -6 -qr s.zip same");
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(top + "/s.zip"));
}
BENCHMARK(ZipOfTheSameFolder)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void Import(benchmark::State& state) {
    MakeArchive();
    QuietPrompts prompts;
    SilentProgress progress;
    for (auto _ : state) {
        state.PauseTiming();
        const DataPaths data{Made().Top() / "import"};
        std::filesystem::remove_all(data.root);
        QuietWorld world;
        OpenNoteBook book;
        IdCounters counters;
        book.paths = NoteBookPaths(data, kMainNoteBookFolder);
        CreateNoteBookFolders(book.paths);
        state.ResumeTiming();
        LoadNoteBook(book, counters, world.context, world.faults, {});
        TakeAll chooser;
        const ImportOutcome outcome = ImportNotes(
            Made().Archive(), chooser, {book, data, counters, world.context, {prompts, progress, world.faults}, 0, [&] {
                                            LoadNoteBook(book, counters, world.context, world.faults, {});
                                        }});
        if (outcome.result != kNotes)
            state.SkipWithError("not all notes were imported");
    }
}
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void UnzipTest(benchmark::State& state) {
    MakeArchive();
    RunTool(state, "unzip -tq '" + Made().Archive().string() + "' >/dev/null");
}
BENCHMARK(UnzipTest)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
