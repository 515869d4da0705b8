#include "rtf/kept_group.h"

#include "rtf/hex.h"

namespace lore {

namespace {

/// ASCII that may stand in what is written.
bool IsPlain(char c) {
    return (c >= 0x20 && c < 0x7F) || c == '\t' || c == '\r';
}

}  // namespace

std::optional<std::string> KeptForm(std::string_view rtf) {
    if (rtf.find("\\bin") != std::string_view::npos)
        return std::nullopt;
    std::string form;
    form.reserve(rtf.size());
    // What ends a word has to go on ending it, so that a line end stands for what means nothing.
    for (size_t i = 0; i < rtf.size(); ++i) {
        const char c = rtf[i];
        if (c == '\\' && i + 1 < rtf.size()) {
            const char next = rtf[++i];
            if (IsPlain(next) || next == '\n')
                form.append({c, next});
            else
                form += '\n';
        } else if (static_cast<unsigned char>(c) >= 0x80) {
            AppendHexByte(form, static_cast<unsigned char>(c));
        } else {
            form += IsPlain(c) ? c : '\n';
        }
    }
    return form;
}

}  // namespace lore
