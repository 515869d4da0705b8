#pragma once

#include <algorithm>
#include <cstddef>
#include <exception>
#include <libxml/xmlstring.h>
#include <string_view>

namespace lore {

/// A text as the XML library hands it out; empty for none.
inline std::string_view View(const xmlChar* text) {
    return text ? std::string_view(reinterpret_cast<const char*>(text)) : std::string_view();
}

inline std::string_view View(const xmlChar* text, int length) {
    return {reinterpret_cast<const char*>(text), static_cast<size_t>(std::max(length, 0))};
}

/// A reader behind callbacks of the XML library. What it throws must not pass through frames of C: it is kept here,
/// nothing more is called, and once the parser has returned it is thrown on.
template <typename Reader>
class GuardedReader {
public:
    explicit GuardedReader(Reader& reader) : reader_(reader) {}
    template <typename Call>
    void Guard(Call call) noexcept {
        if (thrown_)
            return;
        try {
            call(reader_);
        } catch (...) {
            thrown_ = std::current_exception();
        }
    }
    bool HasThrown() const { return thrown_ != nullptr; }
    void ThrowOn() const {
        if (thrown_)
            std::rethrow_exception(thrown_);
    }

private:
    Reader& reader_;
    std::exception_ptr thrown_;
};

}  // namespace lore
