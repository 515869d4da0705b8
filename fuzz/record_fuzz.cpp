#include "fuzz_target.h"
#include "trust/record_kinds.h"

namespace {
constexpr size_t kMostGrown = 4, kSmallFile = 1000;  // times and bytes
}

/// The first byte picks the kind of record file, the rest is the file. One that reads as many more entries than it
/// holds is read once and isn't kept: the copies would take most of the time, and damaged counts are tried one by one
/// elsewhere.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static lore::RecordBench bench;
    if (size == 0)
        return -1;
    const lore::RecordKind& kind = lore::RecordKinds()[data[0] % lore::RecordKinds().size()];
    const std::string bytes(lore::InputText(data + 1, size - 1));
    const auto stopAt = [&](const std::string& finding) {
        lore::StopAt(finding.empty() ? finding : kind.name + (": " + finding));
    };
    stopAt(bench.CheckReading(kind, bytes));
    if (bench.Saved().size() > kMostGrown * (bytes.size() + kSmallFile))
        return -1;
    if (lore::GetsSlowChecks(bytes))
        stopAt(bench.CheckCopies(kind));
    return 0;
}
