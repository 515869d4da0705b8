#include "base/text.h"
#include "rtf/rtf.h"
#include "rtf/tokenizer.h"

namespace lore {

namespace {

void AppendHex(std::string_view bytes, std::string& text) {
    constexpr char kDigits[] = "0123456789abcdef";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte / 16];
        text += kDigits[byte % 16];
    }
}

}  // namespace

std::string CleanRtf(std::string_view bytes) {
    if (bytes.find("\\bin") == std::string_view::npos)
        return CleanText(bytes);
    std::string rtf;
    size_t taken = 0;
    Tokenizer tokens(bytes);
    for (const Token* token = &tokens.Next(); token->kind != TokenKind::kEnd; token = &tokens.Next()) {
        if (token->kind != TokenKind::kBinary || token->text.empty())
            continue;
        rtf += bytes.substr(taken, token->begin - taken);
        rtf += ' ';  // the number of a control word before it ends here
        AppendHex(token->text, rtf);
        taken = token->end;
    }
    rtf += bytes.substr(taken);
    return CleanText(rtf);
}

}  // namespace lore
