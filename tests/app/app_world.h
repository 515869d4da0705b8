#pragma once

#include <gtest/gtest.h>

#include "app/lorebinder_app.h"
#include "notes/note_builder.h"
#include "support/memory_store.h"
#include "support/scripted_ports.h"

namespace lore {

/// What stands around an application that a test drives: the folder of the main NoteBook, and ports in memory.
class AppWorld : public testing::Test {
protected:
    AppPorts Ports() { return {prompts, progress, clock, guids, store, faults}; }

    NoteBookFolder folder;
    MemoryStore store;
    ScriptedPrompts prompts;
    ScriptedProgress progress;
    FixedClock clock;
    NumberedGuids guids;
    NotedFaults faults;
};

}  // namespace lore
