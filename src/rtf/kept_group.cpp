#include "rtf/kept_group.h"

#include "rtf/hex.h"
#include "rtf/rtf_output.h"

namespace lore {

namespace {

constexpr std::string_view kHidden = "v", kDeleted = "deleted";

/// ASCII that may stand in what is written.
bool IsPlain(char c) {
    return (c >= 0x20 && c < 0x7F) || c == '\t' || c == '\r';
}

/// A group of what `add` writes into it, which no reader shows.
template <typename Add>
std::string Unshown(bool deleted, Add add) {
    RtfOutput group;
    group.Open();
    group.Word(deleted ? kDeleted : kHidden);
    add(group);
    group.Close();
    return group.Take();
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

std::string UnshownText(std::string_view utf8, bool deleted) {
    return Unshown(deleted, [&](RtfOutput& group) { group.Text(utf8); });
}

std::string UnshownGroup(std::string_view form, bool deleted) {
    return Unshown(deleted, [&](RtfOutput& group) { group.Raw(form); });
}

bool IsUnshownText(std::string_view kept) {
    // No other group that is kept begins with these words, but for one around a group.
    for (const std::string_view begin : {"{\\v", "{\\deleted"}) {
        if (kept.starts_with(begin))
            return !kept.substr(begin.size()).starts_with('{');
    }
    return false;
}

}  // namespace lore
