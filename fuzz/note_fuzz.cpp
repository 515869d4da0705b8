#include "fuzz_target.h"
#include "trust/note_check.h"

/// The input is a note file of any version.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(lore::InputText(data, size));
    lore::StopAt(lore::GetsSlowChecks(bytes) ? lore::CheckNoteFile(bytes) : lore::CheckNoteReading(bytes));
    return 0;
}
