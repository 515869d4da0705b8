#include "rtf/mark.h"

#include <algorithm>
#include <array>

#include "base/utf8.h"
#include "rtf/body_reader.h"
#include "rtf/rtf.h"

namespace lore {

namespace {

/// In order, without empty ones, those that touch joined to one.
std::vector<TextRange> Normalized(std::vector<TextRange> ranges) {
    std::erase_if(ranges, [](const TextRange& range) { return range.begin >= range.end; });
    std::sort(ranges.begin(), ranges.end(), [](const TextRange& a, const TextRange& b) { return a.begin < b.begin; });
    std::vector<TextRange> joined;
    for (const TextRange& range : ranges) {
        if (!joined.empty() && range.begin <= joined.back().end)
            joined.back().end = std::max(joined.back().end, range.end);
        else
            joined.push_back(range);
    }
    return joined;
}

/// Normalized ranges of characters as ranges of bytes.
std::vector<TextRange> ToBytes(std::string_view text, const std::vector<TextRange>& ranges) {
    std::vector<TextRange> bytes;
    size_t at = 0;
    size_t character = 0;
    const auto goTo = [&](size_t wanted) {
        while (at < text.size() && (character < wanted || IsContinuation(text[at])))
            character += IsContinuation(text[at++]) ? 0 : 1;
        return at;
    };
    for (const TextRange& range : ranges) {
        const size_t begin = goTo(range.begin);
        bytes.push_back({begin, goTo(range.end)});
    }
    return bytes;
}

/// The words behind \rtf that come before all tables.
bool IsHeadWord(std::string_view name) {
    constexpr std::array<std::string_view, 11> kWords = {"ansi",  "mac",     "pc",        "pca", "ansicpg", "deff",
                                                         "adeff", "deflang", "deflangfe", "uc",  "deftab"};
    return std::find(kWords.begin(), kWords.end(), name) != kWords.end();
}

/// Finds the source of marked characters, and where the file keeps its colours.
class MarkReader : public BodyReader {
public:
    MarkReader(std::string_view rtf, const std::vector<TextRange>& ranges) : BodyReader(rtf), ranges_(ranges) {}

    bool HasMarks() const { return !marks_.empty(); }
    /// The bytes from the document's brace on.
    std::string_view Head() const { return Source(); }
    /// The RTF with the marks, or nothing if the file's colours can't be added to.
    std::string Marked(TextColor color) const;

protected:
    void OnText(std::string_view utf8, size_t begin, size_t end) override;
    void OnBreak(TextBreak) override { ++position_; }
    void OnEnd(bool) override {}
    bool OnEnter(Destination destination) override;
    void OnOther(Destination destination, std::string_view utf8) override;
    void OnWord(const ControlWord& word, const Token& token) override;
    void OnClose(const Group& closed, size_t end) override;
    void OnPassedOver() override;
    void OnFallback(size_t begin, size_t end) override;

private:
    void Mark(size_t begin, size_t end);
    bool CanAddColor() const;

    const std::vector<TextRange>& ranges_;
    size_t nextRange_ = 0;
    size_t position_ = 0;                    ///< characters so far
    size_t lastEnd_ = 0;                     ///< source end of the last character
    std::vector<TextRange> marks_;           ///< in source bytes
    size_t putAt_ = std::string_view::npos;  ///< where the last characters were put that the file doesn't hold
    bool takesNoGroup_ = false;              ///< a mark is on such characters, or right behind them
    size_t colorTables_ = 0;
    size_t colors_ = 0;
    size_t highestUsed_ = 0;  ///< number of a colour, which the table need not hold
    bool colorOpen_ = false;  ///< the last colour of the table isn't ended
    size_t tableEnd_ = 0;
    size_t headEnd_ = 0;  ///< where a table can be put if there is none
};

void MarkReader::OnText(std::string_view utf8, size_t begin, size_t end) {
    lastEnd_ = end;
    if (nextRange_ == ranges_.size())
        return;
    const size_t first = position_;
    position_ += CountCharacters(utf8);
    // A group for the mark would take along what is put in front of its text.
    const bool isPut = begin == end, isBehind = !isPut && begin == putAt_;
    putAt_ = isPut ? begin : std::string_view::npos;
    const bool byteEach = end - begin == position_ - first;
    for (; nextRange_ < ranges_.size() && ranges_[nextRange_].begin < position_; ++nextRange_) {
        const TextRange& range = ranges_[nextRange_];
        if (range.end > first) {
            const size_t from = std::max(range.begin, first) - first;
            const size_t to = std::min(range.end, position_) - first;
            takesNoGroup_ = takesNoGroup_ || isPut || (isBehind && from == 0);
            Mark(byteEach ? begin + from : begin, byteEach ? begin + to : end);
        }
        if (range.end > position_)
            break;
    }
}

void MarkReader::Mark(size_t begin, size_t end) {
    if (!marks_.empty() && marks_.back().end == begin)
        marks_.back().end = end;
    else
        marks_.push_back({begin, end});
}

void MarkReader::OnFallback(size_t begin, size_t end) {
    if (begin != lastEnd_)
        return;
    if (!marks_.empty() && marks_.back().end == lastEnd_)
        marks_.back().end = end;
    lastEnd_ = end;
}

bool MarkReader::OnEnter(Destination destination) {
    if (destination != Destination::ColorTable)
        return false;
    ++colorTables_;
    return true;
}

void MarkReader::OnOther(Destination destination, std::string_view utf8) {
    if (destination != Destination::ColorTable)
        return;
    const auto ended = std::count(utf8.begin(), utf8.end(), ';');
    colors_ += static_cast<size_t>(ended);
    colorOpen_ = colorOpen_ && ended == 0;
}

void MarkReader::OnPassedOver() {
    // Of a table that breaks off like this nothing more is read.
    colorOpen_ = colorOpen_ || Current().destination == Destination::ColorTable;
}

void MarkReader::OnWord(const ControlWord& word, const Token& token) {
    if (word.word == Word::Color || word.word == Word::Highlight || word.word == Word::Shading ||
        word.word == Word::CellShading)
        highestUsed_ = std::max(highestUsed_, static_cast<size_t>(std::max(token.parameter, 0)));
    if (Current().destination == Destination::ColorTable)
        colorOpen_ = true;
    else if (Current().destination != Destination::Body)
        return;
    else if (headEnd_ == 0 ? word.name == "rtf" : token.begin == headEnd_ && IsHeadWord(word.name))
        headEnd_ = token.end;
}

void MarkReader::OnClose(const Group& closed, size_t end) {
    if (closed.destination == Current().destination)
        return;
    if (closed.destination == Destination::ColorTable)
        tableEnd_ = end - 1;
    else if (closed.destination == Destination::FontTable && marks_.empty() && !Current().inShape)
        headEnd_ = end;
}

bool MarkReader::CanAddColor() const {
    constexpr size_t kMostAdded = 256;
    if (colorTables_ > 1 || colorOpen_ || highestUsed_ > colors_ + kMostAdded)
        return false;
    return colorTables_ == 0 ? headEnd_ <= marks_[0].begin : tableEnd_ != 0 && tableEnd_ < marks_[0].begin;
}

std::string MarkReader::Marked(TextColor color) const {
    if (takesNoGroup_ || !CanAddColor())
        return {};
    const auto part = [](std::string_view name, unsigned value) { return std::string(name) + std::to_string(value); };
    const std::string entry =
        part("\\red", color.red) + part("\\green", color.green) + part("\\blue", color.blue) + ';';
    const bool hasTable = colorTables_ != 0;
    // Where the text uses colours that the table doesn't have, these stay what they are.
    const size_t inTable = hasTable ? colors_ : 1;
    const size_t index = std::max(inTable, highestUsed_ + 1);
    const std::string number = std::to_string(index);
    const std::string open = "{\\chcbpat" + number + "\\cb" + number + "\\highlight" + number + ' ';
    const size_t entryAt = hasTable ? tableEnd_ : headEnd_;
    std::string marked(Source().substr(0, entryAt));
    marked += hasTable ? "" : "{\\colortbl ;";
    marked.append(index - inTable, ';').append(entry);
    marked += hasTable ? "" : "}";
    size_t at = entryAt;
    for (const TextRange& mark : marks_) {
        marked += Source().substr(at, mark.begin - at);
        marked += open;
        marked += Source().substr(mark.begin, mark.end - mark.begin);
        marked += '}';
        at = mark.end;
    }
    marked += Source().substr(at);
    return marked;
}

/// Adds a stretch of the run, joined to the run before when that looks the same.
void AddPart(std::vector<TextRun>& runs, size_t first, TextRun run, size_t begin, size_t end) {
    if (begin == end)
        return;
    run.begin = static_cast<uint32_t>(begin);
    run.end = static_cast<uint32_t>(end);
    if (runs.size() > first && run.kind == RunKind::Text && runs.back().kind == run.kind &&
        runs.back().format == run.format)
        runs.back().end = run.end;
    else
        runs.push_back(run);
}

}  // namespace

void SetBackground(Document& document, std::vector<TextRange> ranges, TextColor color) {
    const std::vector<TextRange> bytes = ToBytes(document.text, Normalized(std::move(ranges)));
    std::vector<TextRun> runs;
    auto range = bytes.begin();
    for (size_t i = 0; i < document.paragraphs.size(); ++i) {
        const size_t first = runs.size();
        for (const TextRun& run : RunsOf(document, i)) {
            if (run.kind != RunKind::Text) {
                runs.push_back(run);
                continue;
            }
            TextRun marked = run;
            marked.format.background = color;
            size_t at = run.begin;
            for (; range != bytes.end() && range->begin < run.end; ++range) {
                const size_t begin = std::max<size_t>(range->begin, at);
                const size_t end = std::clamp<size_t>(range->end, begin, run.end);
                AddPart(runs, first, run, at, begin);
                AddPart(runs, first, marked, begin, end);
                at = end;
                if (range->end > run.end)
                    break;
            }
            AddPart(runs, first, run, at, run.end);
        }
        document.paragraphs[i].firstRun = static_cast<uint32_t>(first);
    }
    document.runs = std::move(runs);
}

std::string MarkRtf(std::string_view rtf, std::vector<TextRange> ranges, TextColor color) {
    ranges = Normalized(std::move(ranges));
    MarkReader reader(rtf, ranges);
    reader.Read();
    if (!reader.HasMarks())
        return std::string(rtf);
    std::string marked = reader.Marked(color);
    // Damaged files may read otherwise with groups in them; the text decides whether the marks may stay.
    const auto head = static_cast<size_t>(reader.Head().data() - rtf.data());
    if (!marked.empty())
        marked.insert(0, rtf.substr(0, head));
    if (!marked.empty() && PlainText(marked) == PlainText(rtf))
        return marked;
    Document document = ReadRtf(rtf);
    SetBackground(document, std::move(ranges), color);
    return WriteRtf(document);
}

}  // namespace lore
