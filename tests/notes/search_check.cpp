#include "notes/search_check.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "notes/note_builder.h"
#include "notes/search_database.h"
#include "notes/search_prefilter.h"
#include "notes/text_cache.h"
#include "rtf/rtf.h"
#include "support/note_reading.h"

namespace lore {

namespace {

constexpr size_t kMostNotes = 8;

std::string WrongParse(std::string_view text, const NoteSearch& search, bool isValid) {
    const bool hasAnd = text.find("AND") != std::string_view::npos, hasOr = text.find("OR") != std::string_view::npos;
    if (isValid == (hasAnd && hasOr))
        return "valid with both operators, or invalid without them";
    if (!isValid)
        return search.searchTerms.empty() && search.searchText.empty() ? "" : "an invalid search that searches";
    if (search.searchOperator != (hasAnd ? kAndOperator : hasOr ? kOrOperator : kNoOperator))
        return "another operator";
    if (!hasAnd && !hasOr)
        return search.searchTerms == std::vector{std::string(text)} ? "" : "not the whole text as the one term";
    // The terms and the operators put together again are the text, but for white space.
    std::string joined, whole = ReplaceAll(ToUtf8(text), hasAnd ? "AND" : "OR", "");
    for (const std::string& term : search.searchTerms) {
        if (term.empty() || Trim(term) != term || term.find(hasAnd ? "AND" : "OR") != std::string::npos)
            return "a term that is none";
        joined += term;
    }
    const auto isBlank = [](char c) { return Trim(std::string_view(&c, 1)).empty(); };
    std::erase_if(joined, isBlank);
    // Taking an operator out may put the letters of another one together; these belong to the terms.
    std::erase_if(whole, isBlank);
    return joined == whole ? "" : "terms with other characters than the text";
}

/// The hits of one term, character by character.
std::vector<TextRange> HitsOf(const SearchTerm& term, const std::u32string& text) {
    std::vector<TextRange> hits;
    const size_t length = term.folded.size();
    if (length == 0 || term.folded.find(U'\n') != std::u32string::npos)
        return hits;
    const auto isWord = [&](size_t at) { return at < text.size() && IsWordCharacter(text[at]); };
    for (size_t at = 0; at + length <= text.size();) {
        const bool isHit = std::equal(term.folded.begin(), term.folded.end(), text.begin() + static_cast<long>(at),
                                      [](char32_t a, char32_t b) { return a == FoldCase(b); });
        if (!isHit || (term.wholeWord && ((at > 0 && isWord(at - 1)) || isWord(at + length)))) {
            ++at;
            continue;
        }
        hits.push_back({at, at + length});
        at += length;
    }
    return hits;
}

/// One character for each of the text: whether it has the colour of the marks.
std::vector<bool> MarkedCharacters(const Document& document) {
    std::vector<bool> marked(CharacterCount(document.text));
    for (const TextRun& run : document.runs) {
        const size_t begin = CharacterCount(std::string_view(document.text).substr(0, run.begin));
        const size_t end = begin + CharacterCount(TextOf(document, run));
        for (size_t i = begin; i < end; ++i)
            marked[i] = run.kind == RunKind::Text && run.format.background == kSearchMark;
    }
    return marked;
}

std::string WrongMarks(const NoteMatcher& matcher, const std::string& rtf) {
    Document wanted = ReadRtf(rtf);
    const std::vector<TextRange> hits = matcher.Hits(wanted.text);
    const Document marked = ReadRtf(matcher.MarkedRtf(rtf));
    if (marked.text != wanted.text)
        return "marks change the text";
    SetBackground(wanted, hits, kSearchMark);
    return MarkedCharacters(marked) == MarkedCharacters(wanted) ? "" : "marks stand elsewhere than the hits";
}

std::string WrongHits(const NoteMatcher& matcher, const std::string& rtf) {
    const std::string text = PlainText(rtf);
    const std::u32string characters = Utf8ToCodePoints(text);
    std::vector<TextRange> wanted;
    size_t found = 0;
    for (const SearchTerm& term : matcher.Terms()) {
        const std::vector<TextRange> hits = HitsOf(term, characters);
        found += hits.empty() ? 0 : 1;
        wanted.insert(wanted.end(), hits.begin(), hits.end());
    }
    std::sort(wanted.begin(), wanted.end(), [](const TextRange& a, const TextRange& b) {
        return std::pair(a.begin, a.end) < std::pair(b.begin, b.end);
    });
    const std::vector<TextRange> hits = matcher.Hits(text);
    if (hits != wanted)
        return "other hits than character by character";
    const bool matches = matcher.Matches(text);
    if (matches != matcher.IsEnough(found))
        return "hits and the answer differ";
    std::string folded;
    AppendFolded(folded, text);
    if (matcher.MatchesFolded(folded) != matches)
        return "the folded text differs";
    if (matches && !RtfPrefilter(matcher).MayMatch(rtf))
        return "a result is thrown out by its bytes";
    return {};
}

/// The notes of an input, one a line.
std::vector<CNote> NotesOf(std::string_view lines) {
    std::vector<CNote> notes;
    while (!lines.empty() && notes.size() < kMostNotes) {
        const std::string line = CleanText(TakeLine(lines));
        CNote& note = notes.emplace_back(DayNote(static_cast<int32_t>(notes.size() + 1)));
        note.rtfText = line.starts_with('{') ? line : "{\\rtf1\\ansi\\ansicpg1252 " + line + "}";
    }
    return notes;
}

/// The ids that the three ways of searching a note file give.
std::string WrongFile(const NoteMatcher& matcher, const std::vector<CNote>& notes,
                      const std::filesystem::path& folder) {
    const std::filesystem::path path = folder / GetNoteFileName(notes[0]);
    PutBytes(path, NoteFileBytes(notes));
    ReadWorld world;
    NotedFaults faults;
    SearchOptions options;
    options.threads = 1;
    std::vector<int32_t> cold;
    for (const SearchResult& result : SearchFiles(std::vector{path}, matcher, options, world.context, faults))
        cold.push_back(result.id);
    const std::vector<CNote> read = NotesOfFile(path, world.context);
    TextCache cache;
    cache.UpdateFile(path.string(), read);
    if (!faults.faults.empty() || read.size() != notes.size())
        return "a note file that can't be read";
    if (matcher.Terms().empty())
        return cold.empty() ? "" : "results without terms";
    if (matcher.Search().IsShowAll())
        return cold.size() == notes.size() ? "" : "not all notes";
    return cache.SearchFile(path.string(), matcher) == cold ? "" : "memory and disk give other notes";
}

}  // namespace

std::string CheckSearchHits(std::string_view input) {
    const std::string_view text = TakeLine(input);
    NoteSearch search;
    const bool isValid = ParseSearchString(text, nullptr, search);
    if (std::string wrong = WrongParse(text, search, isValid); !wrong.empty())
        return wrong;
    const NoteMatcher matcher(search);
    for (const CNote& note : NotesOf(input)) {
        if (std::string wrong = WrongHits(matcher, note.rtfText); !wrong.empty())
            return wrong;
    }
    return {};
}

std::string CheckSearch(std::string_view input, const std::filesystem::path& folder) {
    if (std::string wrong = CheckSearchHits(input); !wrong.empty())
        return wrong;
    NoteSearch search;
    ParseSearchString(TakeLine(input), nullptr, search);
    const NoteMatcher matcher(search);
    const std::vector<CNote> notes = NotesOf(input);
    for (const CNote& note : notes) {
        if (std::string wrong = WrongMarks(matcher, note.rtfText); !wrong.empty())
            return wrong;
    }
    return notes.empty() ? "" : WrongFile(matcher, notes, folder);
}

}  // namespace lore
