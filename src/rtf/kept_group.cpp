#include "rtf/kept_group.h"

#include "rtf/hex.h"

namespace lore {

std::optional<std::string> KeptForm(std::string_view rtf) {
    if (rtf.find("\\bin") != std::string_view::npos)
        return std::nullopt;
    std::string form;
    form.reserve(rtf.size());
    for (char c : rtf) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80)
            AppendHexByte(form, byte);
        else
            form += byte >= 0x20 || c == '\t' || c == '\r' ? c : '\n';  // what ends a word has to go on ending it
    }
    return form;
}

}  // namespace lore
