#include "rtf/html_mender.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/text.h"
#include "rtf/html_tag_text.h"

namespace lore {

namespace {

/// Elements that the parser would end too early.
constexpr std::string_view kKeptOpen[] = {"a", "b", "big", "font", "i", "s", "small", "strike", "tt", "u"};
constexpr std::string_view kOfHead[] = {"head", "title", "meta", "link", "base", "style", "script"};

/// The place of a name in a list; nothing if it isn't there.
template <size_t Count>
std::optional<size_t> PlaceOf(const std::string_view (&names)[Count], std::string_view name) {
    const auto* const found = std::find(std::begin(names), std::end(names), name);
    return found == std::end(names) ? std::nullopt : std::optional(static_cast<size_t>(found - names));
}

/// Writes what the parser would show, or takes in another way than browsers do, as it reads it: declarations within the
/// page, comments that end at once, the line end in front of a preformatted text, "</br>", quotes,
/// elements that it would end too early, and scripts and styles, in which it looks for tags.
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
        if (name == "br")
            return ReplaceTag(at, "<br>");
        if (name == "p" && std::exchange(paragraphEnded_, false))
            return ReplaceTag(at, "<div></div>");
        CloseKept(name, at + 2 + name.size());
        return at + 2;
    }
    size_t BehindStartTag(size_t at) {
        if (at + 1 >= page_.size() || !IsLetter(page_[at + 1]))
            return at + 1;
        const std::string name = NameAt(at + 1);
        const size_t behindName = at + 1 + name.size();
        Enter(name, at);
        OpenKept(name, behindName);
        const size_t end = BehindAttributes(behindName);
        PutOpening(name, end);
        const bool isEmpty = page_.substr(0, end).ends_with("/>");
        return isEmpty ? end : BehindText(name, end);
    }
    size_t BehindAttributes(size_t at) const {
        while (at < page_.size() && page_[at] != '>')
            at = BehindAttribute(page_, at);
        return std::min(at + 1, page_.size());
    }
    /// What stands at the begin of an element, behind its tag.
    void PutOpening(std::string_view name, size_t at) {
        if (name == "q")
            Replace(at, at, quotes_++ % 2 == 0 ? "\u201C" : "\u2018");
        const std::string_view rest = page_.substr(at, 2);
        if (name == "pre" && (rest == "\r\n" || rest.starts_with('\n')))
            Replace(at, page_.find('\n', at) + 1, {});
    }
    /// Goes on behind what stands in an element as it is; scripts and styles are left out.
    size_t BehindText(std::string_view name, size_t at) {
        const bool isCode = name == "script" || name == "style";
        if (!isCode && name != "textarea" && name != "title")
            return at;
        const size_t end = EndTagOf(name, at);
        if (isCode)
            Replace(at, std::min(end, page_.size()), {});
        return end;
    }
    /// The place of the end tag of an element whose text stands as it is.
    size_t EndTagOf(std::string_view name, size_t at) const {
        at = page_.find("</", at);
        while (at != std::string_view::npos && NameAt(at + 2) != name)
            at = page_.find("</", at + 2);
        return at;
    }
    /// A tag begins: perhaps a paragraph, or the body. The head ends before elements that are kept open,
    /// which the parser would know by their own names.
    void Enter(std::string_view name, size_t at) {
        ++tags_;
        if (name == "p") {
            paragraph_ = tags_;
            paragraphEnded_ = false;
        }
        if (PlaceOf(kOfHead, name))
            place_ = place_ == Place::InFront ? Place::InHead : place_;
        else if (name != "html" && std::exchange(place_, Place::InBody) == Place::InHead && PlaceOf(kKeptOpen, name))
            Replace(at, at, "</head>");
    }
    void OpenKept(std::string_view name, size_t behindName) {
        const std::optional<size_t> known = PlaceOf(kKeptOpen, name);
        if (!known)
            return;
        Replace(behindName, behindName, std::string_view(&kKeptMark, 1));
        kept_[*known].push_back(tags_);
    }
    /// The parser then ends a paragraph that has begun within the element too: its own end, which it would pass over,
    /// has to part it from what follows.
    void CloseKept(std::string_view name, size_t behindName) {
        const std::optional<size_t> known = PlaceOf(kKeptOpen, name);
        if (!known)
            return;
        Replace(behindName, behindName, std::string_view(&kKeptMark, 1));
        std::vector<size_t>& begun = kept_[*known];
        if (begun.empty())
            return;
        paragraphEnded_ = paragraphEnded_ || paragraph_ > begun.back();
        begun.pop_back();
    }
    std::string NameAt(size_t at) const {
        return ToLower(page_.substr(at, std::min(page_.find_first_of(kTagEnds, at), page_.size()) - at));
    }
    size_t ReplaceTag(size_t at, std::string_view by) {
        const size_t end = page_.find('>', at);
        if (end == std::string_view::npos)
            return end;
        Replace(at, end + 1, by);
        return end + 1;
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
    size_t tags_ = 0;                                             // that have begun so far
    size_t paragraph_ = 0;                                        // the number of the one of the last paragraph
    bool paragraphEnded_ = false;                                 // that paragraph, before its own end
    std::array<std::vector<size_t>, std::size(kKeptOpen)> kept_;  // the numbers of those that are kept open
};

}  // namespace

std::string MendedPage(std::string_view page) {
    return PageMender(page).Mended();
}

}  // namespace lore
