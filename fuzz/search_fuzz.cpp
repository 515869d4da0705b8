#include "fuzz_target.h"
#include "notes/search_check.h"
#include "support/read_world.h"

/// The first line is what was typed, the others are notes.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const lore::TempFolder folder(lore::MemoryFolder());
    const std::string_view input = lore::InputText(data, size);
    lore::StopAt(lore::GetsSlowChecks(input) ? lore::CheckSearch(input, folder.Path()) : lore::CheckSearchHits(input));
    return 0;
}
