#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "notes/open_notebook.h"
#include "notes/text_cache.h"
#include "ports/clock.h"
#include "ports/fault_notice.h"
#include "ports/guid_source.h"
#include "ports/progress.h"
#include "ports/prompts.h"
#include "settings/settings.h"

namespace lore {

/// What the editing of a note works on and asks of the world. All of it outlives the session.
struct EditWorld {
    OpenNoteBook& book;
    Settings& settings;
    Prompts& prompts;
    Progress& progress;
    Clock& clock;
    GuidSource& guids;
    FaultNotice& faults;
    TextCache* texts = nullptr;  ///< may be null
    /// Stores the settings at once, the last ids among them: what was given out can't be given out again.
    std::function<void()> storeSettings;
    /// May be null. Else saved notes go here instead of into their files, for whoever writes many of them at once.
    std::vector<CNote>* unwritten = nullptr;

    ReadContext Context() const { return {.now = clock.Now(), .nowUtc = clock.NowUtc(), .guids = &guids}; }
};

}  // namespace lore
