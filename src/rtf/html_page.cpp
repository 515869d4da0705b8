#include "rtf/html_page.h"

#include <algorithm>
#include <iterator>

#include "base/ascii.h"
#include "base/text.h"
#include "rtf/html_encoding.h"
#include "rtf/html_mender.h"
#include "rtf/html_references.h"
#include "rtf/html_tag_text.h"

namespace lore {

namespace {

/// Where the first element or text stands: behind end tags that end nothing, comments and declarations.
size_t FrontOf(std::string_view page) {
    constexpr std::string_view kPasses[][2] = {{"<!--", "-->"}, {"</", ">"}, {"<!", ">"}, {"<?", ">"}};
    for (size_t front = 0;;) {
        front = std::min(page.find_first_not_of(kTagBlanks, front), page.size());
        const auto* const pass = std::find_if(std::begin(kPasses), std::end(kPasses), [&](const auto& entry) {
            return page.substr(front).starts_with(entry[0]);
        });
        const size_t end = pass == std::end(kPasses) ? std::string_view::npos : page.find((*pass)[1], front);
        if (end == std::string_view::npos)
            return front;
        front = end + (*pass)[1].size();
    }
}

/// The parser takes nothing behind the end of the page or behind an end tag at its front. What is found there belongs
/// to the page as it is shown.
std::string WithoutEnds(std::string page) {
    page.erase(0, FrontOf(page));
    for (size_t at = page.find("</"); at != std::string::npos; at = page.find("</", at + 1)) {
        const std::string_view rest = std::string_view(page).substr(at);
        const size_t end = std::min(rest.find_first_of(kTagEnds, 2), rest.size());
        if (end != 6 || (!EqualNoCase(rest.substr(0, end), "</body") && !EqualNoCase(rest.substr(0, end), "</html")))
            continue;
        const size_t length = rest.find('>') + 1;
        if (length == 0)
            break;
        page.replace(at, length, length, ' ');
    }
    return page;
}

/// The parser compares each attribute of a tag with all those in front of it, so that many of them would take for ever.
std::string WithFewAttributes(std::string page) {
    constexpr int kMost = 200;
    for (size_t at = page.find('<'); at != std::string::npos; at = page.find('<', at)) {
        if (page.compare(at, 4, "<!--") == 0)
            at = page.find("-->", at);
        if (at == std::string::npos)
            break;
        const char first = ++at < page.size() ? page[at] : ' ';
        if (!IsLetter(first))
            continue;
        at = std::min(page.find_first_of(kTagEnds, at), page.size());
        for (int count = 1; at < page.size() && page[at] != '>'; ++count) {
            const size_t begin = at;
            at = BehindAttribute(page, at);
            if (count > kMost)
                page.replace(begin, at - begin, at - begin, ' ');
        }
    }
    return page;
}

}  // namespace

std::string PageForParser(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    const std::string page = WithoutEnds(DecodedPage(bytes));
    return WithWholeReferences(WithFewAttributes(MendedPage(page)));
}

}  // namespace lore
