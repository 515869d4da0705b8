#include "rtf/html_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <libxml/HTMLparser.h>
#include <optional>
#include <unicode/ucnv.h>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/text.h"
#include "rtf/encoding.h"
#include "rtf/hex.h"

namespace lore {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f", kTagEnds = " \t\r\n\f/>";

/// Where the first element or text stands: behind end tags that end nothing, comments and declarations.
size_t FrontOf(std::string_view page) {
    constexpr std::string_view kPasses[][2] = {{"<!--", "-->"}, {"</", ">"}, {"<!", ">"}, {"<?", ">"}};
    for (size_t front = 0;;) {
        front = std::min(page.find_first_not_of(kBlanks, front), page.size());
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

/// The place behind the next attribute of a tag, or that of the tag's bracket.
size_t BehindAttribute(std::string_view page, size_t at) {
    const auto next = [&](size_t found) { return std::min(found, page.size()); };
    at = next(page.find_first_not_of(" \t\r\n\f/", at));
    if (page.substr(at).starts_with('>'))
        return at;
    at = next(page.find_first_of(" \t\r\n\f/>=", std::min(at + 1, page.size())));
    const size_t sign = next(page.find_first_not_of(kBlanks, at));
    if (!page.substr(sign).starts_with('='))
        return at;
    const size_t value = next(page.find_first_not_of(kBlanks, sign + 1));
    const std::string_view rest = page.substr(value);
    if (rest.starts_with('"') || rest.starts_with('\''))
        return next(next(page.find(rest.front(), value + 1)) + 1);
    return next(page.find_first_of(" \t\r\n\f>", value));
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

/// Those that the parser ends too early.
constexpr std::string_view kGoingOn[] = {"a", "b", "big", "font", "i", "s", "small", "strike", "tt", "u"};
constexpr std::string_view kOfHead[] = {"head", "title", "meta", "link", "base", "style", "script"};

/// The place of a name in a list; nothing if it isn't there.
template <size_t Count>
std::optional<size_t> PlaceOf(const std::string_view (&names)[Count], std::string_view name) {
    const auto* const found = std::find(std::begin(names), std::end(names), name);
    return found == std::end(names) ? std::nullopt : std::optional(static_cast<size_t>(found - names));
}

/// Writes what the parser would show, or takes in another way than browsers do, as it reads it: declarations within the
/// page, comments that end at once, the line end in front of a preformatted text, "</br>", quotes,
/// elements that go on, and scripts and styles, in which it looks for tags.
class PageMender {
public:
    explicit PageMender(std::string_view page) : page_(page) { mended_.reserve(page.size()); }

    std::string Mended() {
        for (size_t at = page_.find('<'); at < page_.size(); at = page_.find('<', at)) {
            const std::string_view rest = page_.substr(at, 2);
            at = rest == "<!" || rest == "<?" ? BehindDeclaration(at)
                 : rest == "</"               ? BehindEndTag(at)
                                              : BehindStartTag(at);
        }
        Replace(page_.size(), page_.size(), {});
        return std::move(mended_);
    }

private:
    enum class Place { InFront, InHead, InBody };

    size_t BehindDeclaration(size_t at) {
        constexpr std::string_view kOpen = "<!--", kClose = "-->", kEmpty = "<!---->";
        const std::string_view rest = page_.substr(at, kEmpty.size());
        const bool isComment = rest.starts_with(kOpen) && !rest.starts_with("<!-->") && !rest.starts_with("<!--->");
        const std::string_view close = isComment ? kClose : kClose.substr(2);
        size_t end = page_.find(close, isComment ? at + kOpen.size() : at);
        if (end == std::string_view::npos)
            return end;
        end += close.size();
        if (!isComment)
            Replace(at, end, kEmpty);
        return end;
    }
    size_t BehindEndTag(size_t at) {
        const std::string name = NameAt(at + 2);
        if (name == "q" && quotes_ > 0)
            Replace(at, at, --quotes_ % 2 == 0 ? "\u201D" : "\u2019");
        if (name == "head")
            place_ = Place::InBody;
        const bool isCut = name == "p" && isCut_;
        if (!isCut && name != "br") {
            EndGoingOn(name, at + 2 + name.size());
            return at + 2;
        }
        const size_t end = page_.find('>', at);
        if (end == std::string_view::npos)
            return end;
        isCut_ = isCut_ && !isCut;
        Replace(at, end + 1, isCut ? "<div></div>" : "<br>");
        return end + 1;
    }
    size_t BehindStartTag(size_t at) {
        if (at + 1 >= page_.size() || !IsLetter(page_[at + 1]))
            return at + 1;
        const std::string name = NameAt(at + 1);
        BeginGoingOn(name, at);
        at += 1 + name.size();
        while (at < page_.size() && page_[at] != '>')
            at = BehindAttribute(page_, at);
        at = std::min(at + 1, page_.size());
        if (name == "q")
            Replace(at, at, quotes_++ % 2 == 0 ? "\u201C" : "\u2018");
        const std::string_view rest = page_.substr(at, 2);
        if (name == "pre" && (rest == "\r\n" || rest.starts_with('\n')))
            Replace(at, page_.find('\n', at) + 1, {});
        const bool isCode = name == "script" || name == "style", isEmpty = page_.substr(0, at).ends_with("/>");
        if (isEmpty || (!isCode && name != "textarea" && name != "title"))
            return at;
        const size_t end = BehindText(at, name);
        if (isCode)
            Replace(at, std::min(end, page_.size()), {});
        return end;
    }
    /// The place of the end tag of an element whose text stands as it is.
    size_t BehindText(size_t at, std::string_view name) const {
        at = page_.find("</", at);
        while (at != std::string_view::npos && NameAt(at + 2) != name)
            at = page_.find("</", at + 2);
        return at;
    }
    /// The head ends before them, which the parser would know by their own names.
    void BeginGoingOn(std::string_view name, size_t at) {
        const std::optional<size_t> known = PlaceOf(kGoingOn, name);
        ++tags_;
        if (name == "p") {
            paragraph_ = tags_;
            isCut_ = false;
        }
        if (PlaceOf(kOfHead, name))
            place_ = place_ == Place::InFront ? Place::InHead : place_;
        else if (name != "html" && std::exchange(place_, Place::InBody) == Place::InHead && known)
            Replace(at, at, "</head>");
        if (!known)
            return;
        Replace(at + 1 + name.size(), at + 1 + name.size(), std::string_view(&kGoesOn, 1));
        open_[*known].push_back(tags_);
    }
    /// The parser then ends a paragraph that has begun within the element too: its own end, which it would pass over,
    /// has to part it from what follows.
    void EndGoingOn(std::string_view name, size_t at) {
        const std::optional<size_t> known = PlaceOf(kGoingOn, name);
        if (!known)
            return;
        Replace(at, at, std::string_view(&kGoesOn, 1));
        std::vector<size_t>& begun = open_[*known];
        if (begun.empty())
            return;
        isCut_ = isCut_ || paragraph_ > begun.back();
        begun.pop_back();
    }
    std::string NameAt(size_t at) const {
        return ToLower(page_.substr(at, std::min(page_.find_first_of(kTagEnds, at), page_.size()) - at));
    }
    void Replace(size_t at, size_t end, std::string_view by) {
        mended_.append(page_.substr(done_, at - done_)).append(by);
        done_ = end;
    }

    std::string_view page_;
    size_t done_ = 0;  // up to here the page is written
    std::string mended_;
    size_t quotes_ = 0;  // that are open
    Place place_ = Place::InFront;
    size_t tags_ = 0;                                            // that have begun so far
    size_t paragraph_ = 0;                                       // the number of the one of the last paragraph
    bool isCut_ = false;                                         // that paragraph was ended before its own end
    std::array<std::vector<size_t>, std::size(kGoingOn)> open_;  // the numbers of those that go on
};

/// The name of the encoding that the page gives itself; empty for none.
std::string NamedEncoding(std::string_view bytes) {
    constexpr size_t kHead = 1024;
    constexpr std::string_view kElements[][2] = {{"<meta", "charset="}, {"<?xml", "encoding="}};
    const std::string head = ToLower(bytes.substr(0, kHead));
    for (const auto& [begin, key] : kElements) {
        for (size_t at = head.find(begin); at != std::string::npos; at = head.find(begin, at + 1)) {
            const std::string_view element = std::string_view(head).substr(at, head.find('>', at) - at);
            const size_t found = element.find(key);
            if (found == std::string_view::npos)
                continue;
            std::string_view name = element.substr(found + key.size());
            name.remove_prefix(std::min(name.find_first_not_of(" \t\r\n\f\"'"), name.size()));
            return std::string(name.substr(0, name.find_first_of(" \t\r\n\f\"';/?")));
        }
    }
    return {};
}

/// The name that mail and pages have for an encoding; empty for none.
std::string_view StandardName(const std::string& encoding) {
    UErrorCode status = U_ZERO_ERROR;
    const char* const name = ucnv_getStandardName(encoding.c_str(), "MIME", &status);
    return name == nullptr ? std::string_view() : name;
}

/// Whether the bytes may be of an encoding that writes all letters as ASCII between marks: they would pass for UTF-8.
bool IsSevenBit(std::string_view bytes, const std::string& encoding) {
    const std::string_view name = StandardName(encoding);
    return (name.starts_with("ISO-2022-") || name.starts_with("HZ-")) &&
           std::none_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

/// Pages that name a set hold what stands in the larger one of Windows.
std::string AsWrittenOnWindows(const std::string& encoding) {
    constexpr std::pair<std::string_view, const char*> kLarger[] = {{"US-ASCII", "windows-1252"},
                                                                    {"ISO-8859-1", "windows-1252"},
                                                                    {"ISO-8859-9", "windows-1254"},
                                                                    {"GB2312", "GBK"},
                                                                    {"EUC-KR", "windows-949"}};
    const std::string_view standard = StandardName(encoding);
    for (const auto& [name, larger] : kLarger) {
        if (name == standard)
            return larger;
    }
    return encoding;
}

std::string DecodedPage(std::string_view bytes) {
    std::string encoding = NamedEncoding(bytes);
    if (encoding.empty() || (IsValidUtf8(bytes) && !IsSevenBit(bytes, encoding)))
        return ToUtf8(bytes);
    encoding = AsWrittenOnWindows(encoding);
    // A name that could be read is wrong if it stands for an encoding in which it couldn't.
    constexpr std::string_view kAscii = "<+>";
    std::optional<std::string> page;
    if (DecodedFrom(encoding, kAscii) == kAscii)
        page = DecodedFrom(encoding, bytes);
    return page ? std::move(*page) : ToUtf8(bytes);
}

/// A character reference that the parser would read in another way than browsers do; of length 0 if there is none.
struct Reference {
    size_t length = 0;
    char32_t character = 0;
};

/// Numbers that mean control characters stand for bytes of Windows-1252.
Reference NumberAt(std::string_view page) {
    constexpr uint32_t kFirst = 0x80, kLast = 0x9F;
    const bool isHex = page.size() > 2 && (page[2] == 'x' || page[2] == 'X');
    const uint32_t base = isHex ? 16 : 10;
    uint32_t number = 0;
    const size_t first = isHex ? 3 : 2;
    size_t end = first;
    for (; end < page.size(); ++end) {
        const int digit = HexValue(static_cast<unsigned char>(page[end]));
        if (digit < 0 || static_cast<uint32_t>(digit) >= base)
            break;
        number = std::min(number * base + static_cast<uint32_t>(digit), kLast + 1);
    }
    if (end == first)
        return {1, '&'};  // the parser would drop it
    if (number < kFirst || number > kLast)
        return {};
    end += page.substr(end).starts_with(';') ? 1 : 0;
    return {end, FromWindows1252(static_cast<unsigned char>(number))};
}

struct NewName {
    std::string_view name;
    char32_t character;
};
/// Names that the parser doesn't know yet: of them those that writers of pages use.
constexpr NewName kNewNames[] = {
    {"AMP", '&'},      {"COPY", 0xA9},    {"GT", '>'},        {"Hat", '^'},          {"LT", '<'},
    {"NewLine", '\n'}, {"QUOT", '"'},     {"REG", 0xAE},      {"TRADE", 0x2122},     {"Tab", '\t'},
    {"ast", '*'},      {"bsol", '\\'},    {"check", 0x2713},  {"checkmark", 0x2713}, {"colon", ':'},
    {"comma", ','},    {"commat", '@'},   {"cross", 0x2717},  {"dash", 0x2010},      {"dollar", '$'},
    {"equals", '='},   {"excl", '!'},     {"female", 0x2640}, {"grave", '`'},        {"hyphen", 0x2010},
    {"lbrace", '{'},   {"lbrack", '['},   {"lcub", '{'},      {"lowbar", '_'},       {"lpar", '('},
    {"lsqb", '['},     {"male", 0x2642},  {"num", '#'},       {"percnt", '%'},       {"period", '.'},
    {"phone", 0x260E}, {"plus", '+'},     {"quest", '?'},     {"rbrace", '}'},       {"rbrack", ']'},
    {"rcub", '}'},     {"rpar", ')'},     {"rsqb", ']'},      {"semi", ';'},         {"sol", '/'},
    {"star", 0x2606},  {"starf", 0x2605}, {"verbar", '|'},    {"vert", '|'},
};
static_assert(std::is_sorted(std::begin(kNewNames), std::end(kNewNames),
                             [](const NewName& a, const NewName& b) { return a.name < b.name; }));

Reference NewNameAt(std::string_view name) {
    const auto* const found = std::lower_bound(std::begin(kNewNames), std::end(kNewNames), name,
                                               [](const NewName& entry, std::string_view n) { return entry.name < n; });
    return found == std::end(kNewNames) || found->name != name ? Reference{}
                                                               : Reference{name.size() + 2, found->character};
}

bool IsOfName(char c) {
    return IsDigit(c) || IsLetter(c);
}

/// The names of the characters up to U+00FF count without ";" too: in text whatever follows, within a tag only where no
/// part of an address can be meant.
Reference NameAt(std::string_view page, bool inTag) {
    constexpr size_t kShortest = 2, kLongest = 6;
    constexpr unsigned kLastCharacter = 0xFF;
    const auto end = static_cast<size_t>(std::find_if_not(page.begin() + 1, page.end(), IsOfName) - page.begin());
    const char next = end < page.size() ? page[end] : ' ';
    if (next == ';')
        return NewNameAt(page.substr(1, end - 1));
    if (inTag && next == '=')
        return {};
    const size_t shortest = inTag ? std::max(end - 1, kShortest) : kShortest;
    for (size_t length = std::min(end - 1, kLongest); length >= shortest; --length) {
        const std::string name(page.substr(1, length));
        const htmlEntityDesc* const entity = htmlEntityLookup(reinterpret_cast<const xmlChar*>(name.c_str()));
        if (entity != nullptr && entity->value <= kLastCharacter && entity->value != '\'')
            return {length + 1, entity->value};
    }
    return {};
}

std::string WithWholeReferences(std::string_view page) {
    std::string whole;
    whole.reserve(page.size());
    bool inTag = false;
    while (!page.empty()) {
        const std::string_view before = page.substr(0, page.find('&'));
        if (const size_t bracket = before.find_last_of("<>"); bracket != std::string_view::npos)
            inTag = before[bracket] == '<';
        whole.append(before);
        page.remove_prefix(before.size());
        if (page.empty())
            break;
        const Reference reference = page.substr(1).starts_with('#') ? NumberAt(page) : NameAt(page, inTag);
        if (reference.length > 0)
            whole.append("&#").append(std::to_string(static_cast<uint32_t>(reference.character))).append(";");
        else
            whole += '&';
        page.remove_prefix(std::max<size_t>(reference.length, 1));
    }
    return whole;
}

}  // namespace

std::string PageForParser(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    const std::string page = WithoutEnds(DecodedPage(bytes));
    return WithWholeReferences(WithFewAttributes(PageMender(page).Mended()));
}

}  // namespace lore
