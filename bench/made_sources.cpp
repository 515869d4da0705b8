#include "bench/made_sources.h"

#include <string>

#include "bibliography/source_types.h"

namespace lore {

namespace {

constexpr int kAuthors = 5000;

}  // namespace

AuthorList MakeAuthors() {
    AuthorList authors;
    for (int i = 1; i <= kAuthors; ++i) {
        CAuthor author;
        author.AuthorID = i;
        author.first = "Margaret" + std::to_string(i);
        author.middle = i % 3 == 0 ? "Q" : "";
        author.last = "Thornbury" + std::to_string(i * 7919 % kAuthors);
        authors.AddAuthor(author);
    }
    return authors;
}

SourceList MakeSources(int64_t count) {
    SourceList sources;
    for (int64_t i = 0; i < count; ++i) {
        CSource source;
        const auto number = static_cast<int32_t>(i);
        source.SourceID = 1011 + number;
        source.SourceGUID = "{SOURCE-" + std::to_string(i) + "}";
        source.SourceType = 1 + number % kTypeCount;
        source.FormatStyle = number / kTypeCount % kStyleCount;
        for (int32_t author = 0; author <= number % 4; ++author)
            source.AuthorIDs.AddTail(1 + (number * 31 + author) % kAuthors);
        source.FieldTexts[0] = "The Keeping of Lights on the Northern Shore " + std::to_string(i * 7919 % 100003);
        for (size_t slot = 1; slot <= 8; ++slot)
            source.FieldTexts[slot] = "Text of slot " + std::to_string(slot);
        source.HasDate = true;
        source.SourceDate = DateTime(1900 + number % 120, 1 + number % 12, 1 + number % 28);
        sources.AddTail(std::move(source));
    }
    return sources;
}

}  // namespace lore
