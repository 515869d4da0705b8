#include "fuzz_target.h"
#include "online/http_reminder_server.h"

/// Any bytes as the answer of a reminder server: what is read is a number of a record or none, and a moment or none.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto answer = lore::ReadReminderAnswer(lore::InputText(data, size));
    if (answer && (answer->result < 0 || answer->time.IsNull()))
        lore::StopAt("an answer without a number or a moment");
    return 0;
}
