#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "trust/record_kinds.h"

/// The first byte picks the kind of record file, the rest is the file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static lore::RecordBench bench;
    if (size == 0)
        return -1;
    const lore::RecordKind& kind = lore::RecordKinds()[data[0] % lore::RecordKinds().size()];
    const std::string finding = bench.Check(kind, std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    if (!finding.empty()) {
        std::fprintf(stderr, "%s: %s\n", kind.name, finding.c_str());
        std::abort();
    }
    return 0;
}
