#include "notes/search_check.h"
#include "stop_at.h"
#include "support/read_world.h"

/// The first line is what was typed, the others are notes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const lore::TempFolder folder(lore::MemoryFolder());
    lore::StopAt(lore::CheckSearch(lore::InputText(data, size), folder.Path()));
    return 0;
}
