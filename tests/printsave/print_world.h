#pragma once

#include <cstdio>
#include <gtest/gtest.h>

#include "app/print_commands.h"
#include "app/sample_notebook.h"
#include "platform/companion_launcher.h"
#include "platform/ini_store.h"
#include "platform/places.h"
#include "platform/run_program.h"
#include "platform/system_sources.h"
#include "support/read_world.h"
#include "support/scripted_ports.h"

namespace lore {

/// What a program wrote to its standard output and error, and how it ended.
struct ProgramOutput {
    int status = -1;
    std::string text;
};

inline ProgramOutput OutputOf(const std::string& command) {
    ProgramOutput output;
    FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
    for (int c = pipe ? fgetc(pipe) : EOF; c != EOF; c = fgetc(pipe))
        output.text += static_cast<char>(c);
    output.status = pipe ? WEXITSTATUS(pclose(pipe)) : -1;
    return output;
}

inline bool HasTool(const std::string& name) {
    return OutputOf("command -v " + name).status == 0;
}

/// The sample NoteBook with all its notes in the list, in a program that starts its companions for real.
class PrintWorld : public testing::Test {
protected:
    PrintWorld() {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        IdCounters counters{1000, 1, 3};
        store.Set("Options", "LocalGUID", guids.NewGuid());
        EXPECT_TRUE(MakeSampleNoteBook({folder.Path()}, *store.Get("Options", "LocalGUID"), counters,
                                       MakeReadContext(clock, guids), faults)
                        .made);
        app.LoadOptions();
        app.SelectStartNoteBook();
        app.FinishStartup();
        app.Search("*", SearchScope::Database);
    }

    std::filesystem::path Program() const { return ProgramFolder() / kPrintProgram; }
    /// Runs the program without a window on this data folder.
    ProgramOutput Run(const std::string& arguments) const {
        return OutputOf("'" + Program().string() + "' --data '" + folder.Path().string() + "' " + arguments);
    }
    /// Saves what was handed over, and gives the file's bytes.
    std::string Saved(const std::string& name, const std::string& file = "") {
        const ProgramOutput run = Run(file + " --save '" + (folder / name).string() + "'");
        EXPECT_EQ(run.status, 0) << run.text;
        EXPECT_EQ(run.text, "");
        // To be looked at.
        if (const char* const shots = std::getenv("LORE_SHOTS_DIR")) {
            std::error_code error;
            std::filesystem::copy_file(folder / name, std::filesystem::path(shots) / name,
                                       std::filesystem::copy_options::overwrite_existing, error);
        }
        return BytesOf(folder / name);
    }
    /// Writes both hand-over files as the program does, without starting anything.
    void HandOver() {
        const AppPorts& ports = app.Ports();
        CLorebinderApp quiet(folder.Path(),
                             {ports.prompts, ports.progress, ports.clock, ports.guids, ports.store, ports.faults});
        quiet.LoadOptions();
        quiet.SelectStartNoteBook();
        quiet.FinishStartup();
        PrintNotes(quiet, app.List().GetNoteIDs());
        CreateBibliography(quiet, quiet.NoteBook().sources);
    }

    TempFolder folder;
    IniStore store{folder / "settings.ini"};
    ScriptedPrompts prompts;
    ScriptedProgress progress;
    FixedClock clock;
    SystemGuids guids;
    NotedFaults faults;
    CompanionLauncher companions{folder.Path(), folder / "settings.ini"};
    CLorebinderApp app{
        folder.Path(),
        {prompts, progress, clock, guids, store, faults, nullptr, [](int) {}, [](int) { return 0; }, &companions}};
};

}  // namespace lore
