#pragma once

#include <string>
#include <vector>

#include "bibliography/author_list.h"
#include "bibliography/source_list.h"
#include "bibliography/source_record.h"
#include "support/each.h"
#include "support/read_world.h"

namespace lore {

inline CAuthor Author(int32_t id, std::string first, std::string middle, std::string last) {
    return {id, std::move(first), std::move(middle), std::move(last), "", ""};
}

/// 1 John Q. Smith, 2 Mary Jones, 3 Carl West.
inline AuthorList ThreeAuthors() {
    AuthorList authors;
    authors.AddAuthor(Author(1, "John", "Q", "Smith"));
    authors.AddAuthor(Author(2, "Mary", "", "Jones"));
    authors.AddAuthor(Author(3, "Carl", "", "West"));
    return authors;
}

/// A source of a standard type, by default a book, with nothing but a title.
inline CSource TitledSource(int32_t id, const std::string& title, int32_t type = 1) {
    CSource source;
    source.SourceID = id;
    source.SourceGUID = "{Source-" + std::to_string(id) + "}";
    source.SourceType = type;
    source.FieldTexts[0] = title;
    return source;
}

/// A source whose every stored field differs from its default.
inline CSource FullSource(int32_t id) {
    CSource source;
    source.SourceID = id;
    source.SourceGUID = "{SOURCE " + std::to_string(id) + "}";
    source.FormatStyle = 9;
    source.SourceType = 1101;
    source.IndentSpaces = 5;
    source.AuthorsBeforeEtAl = 2;
    source.AuthorIDs = {2, 1};
    source.FieldTexts = {
        "The Light\nof 1811", "Harbor Press", "old", "3", "4-5", "2", "Dover", "Lenses", "Ed", "", "x"};
    source.YearOnly = 1;
    source.HasDate = true;
    source.SourceDate = DateTime(1998, 5, 7, 1, 2, 3);
    source.ModifiedDate = DateTime(2011, 7, 12, 14, 20, 24);
    source.UseDateText = 1;
    source.DateText = "Spring 1998";
    source.CustomTypeCopy.GUID = "{TYPE}";
    source.CustomTypeCopy.name = "Letter";
    source.CustomTypeCopy.date = DateTime(2010, 1, 2, 3, 4, 5);
    source.CustomTypeCopy.fields = {
        {CCustomSourceField::Authors, CCustomSourceField::Semicolon, "[A]", "", false, true, false},
        {CCustomSourceField::User, CCustomSourceField::None, "Box", "17", true, false, true}};
    return source;
}

/// The bytes of a source in the main form, to compare sources whole.
inline std::string RecordOf(const CSource& source) {
    RecordWriter writer;
    WriteSource(&writer, source);
    return writer.Logical();
}

inline std::vector<int32_t> IdsOf(const SourceList& list) {
    return Each(list, &CSource::SourceID);
}

/// A citation that stands as given: a source type of neither kind keeps its text.
inline CSource CitationOnly(int32_t id, std::string text) {
    CSource source;
    source.SourceID = id;
    source.SourceType = 9;
    source.FormattedText = std::move(text);
    return source;
}

/// The order of an ever repeated selection of the minimum, step by step, which takes as long as it looks.
inline std::vector<size_t> SlowSelection(const std::vector<std::string>& lowered, const std::string& ceiling,
                                         bool orEqual) {
    std::vector<size_t> left, order;
    for (size_t i = 0; i < lowered.size(); ++i)
        left.push_back(i);
    while (!left.empty()) {
        std::string least = ceiling;
        size_t chosen = left.size();
        for (size_t i = 0; i < left.size(); ++i) {
            if (lowered[left[i]] < least || (orEqual && lowered[left[i]] == least)) {
                least = lowered[left[i]];
                chosen = i;
            }
        }
        if (chosen == left.size()) {
            order.insert(order.end(), left.begin(), left.end());
            break;
        }
        order.push_back(left[chosen]);
        left.erase(left.begin() + static_cast<ptrdiff_t>(chosen));
    }
    return order;
}

}  // namespace lore
