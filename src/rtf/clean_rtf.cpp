#include "base/text.h"
#include "rtf/hex.h"
#include "rtf/rtf.h"
#include "rtf/tokenizer.h"

namespace lore {

std::string CleanRtf(std::string_view bytes) {
    if (bytes.find("\\bin") == std::string_view::npos)
        return CleanText(bytes);
    std::string rtf;
    size_t taken = 0;
    Tokenizer tokens(bytes);
    for (const Token* token = &tokens.Next(); token->kind != TokenKind::End; token = &tokens.Next()) {
        if (token->kind != TokenKind::Binary || token->text.empty())
            continue;
        rtf += bytes.substr(taken, token->begin - taken);
        rtf += ' ';  // the number of a control word before it ends here
        for (const char byte : token->text)
            AppendHex(rtf, static_cast<unsigned char>(byte));
        taken = token->end;
    }
    rtf += bytes.substr(taken);
    return CleanText(rtf);
}

}  // namespace lore
