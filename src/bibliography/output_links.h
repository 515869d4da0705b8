#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace lore {

/// A web address in a text; `end` stands behind its last character.
struct LinkRange {
    size_t begin = 0;
    size_t end = 0;
};

/// The web addresses (http, https, ftp) of a text, ascending. They end at a blank, a quote or a pointed bracket, and
/// leave out the punctuation of the sentence: "(see https://a.b/c)." holds "https://a.b/c".
std::vector<LinkRange> FindLinks(std::u32string_view text);

}  // namespace lore
