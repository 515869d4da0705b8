#include "fuzz_target.h"
#include "online/soap_reply.h"

/// Any bytes as a reply: what was read holds no more than the reply does, and nothing where it wasn't read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const lore::SoapShape shape = {.fields = {"count", "name"}, .list = "list", .item = "Item", .itemFields = {"id"}};
    const lore::SoapReply reply = lore::ReadSoapReply(lore::InputText(data, size), "Do", shape);
    if (!reply.isRead && (reply.result || reply.fault))
        lore::StopAt("a result of what wasn't read");
    if (reply.result && (reply.result->items.size() > size || reply.result->fields.size() > shape.fields.size()))
        lore::StopAt("more than the reply holds");
    return 0;
}
