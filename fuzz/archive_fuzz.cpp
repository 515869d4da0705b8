#include "exchange/archive_check.h"
#include "fuzz_target.h"
#include "support/read_world.h"

/// The input is an archive that is to be imported.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const lore::TempFolder folder(lore::MemoryFolder());
    lore::StopAt(lore::CheckArchive(std::string(lore::InputText(data, size)), folder.Path()));
    return 0;
}
