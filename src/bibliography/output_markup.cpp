#include "bibliography/output_markup.h"

namespace lore {

void AppendEscaped(std::string& markup, std::string_view text) {
    for (const char c : text) {
        switch (c) {
            case '&':
                markup += "&amp;";
                break;
            case '<':
                markup += "&lt;";
                break;
            case '>':
                markup += "&gt;";
                break;
            case '"':
                markup += "&quot;";
                break;
            default:
                markup += c;
        }
    }
}

}  // namespace lore
