#include "stop_at.h"
#include "trust/note_check.h"

/// The input is a note file of any version.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lore::StopAt(lore::CheckNoteFile(std::string(lore::InputText(data, size))));
    return 0;
}
