#pragma once

#include <gtest/gtest.h>

#include "app/lorebinder_app.h"
#include "notes/note_builder.h"
#include "support/memory_store.h"
#include "support/scripted_ports.h"

namespace lore {

/// Brings an application to where its window would open.
inline void Start(CLorebinderApp& app) {
    app.LoadOptions();
    app.SelectStartNoteBook();
    app.FinishStartup();
}

/// The ports, in memory, of an application that a test drives.
class PortsWorld : public testing::Test, protected ScriptedPorts {
protected:
    AppPorts Ports() { return {prompts, progress, clock, guids, store, faults}; }

    MemoryStore store;
};

/// The same, and the folder of the main NoteBook.
class AppWorld : public PortsWorld {
protected:
    NoteBookFolder folder;
};

}  // namespace lore
