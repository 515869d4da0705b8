#include "app/sample_note.h"

#include "base/text.h"

namespace lore {
namespace {

constexpr std::string_view kTitleMark = "== ";

/// The parts of a value between "|", trimmed; those that are missing are empty.
std::array<std::string, 3> Parts(std::string_view value) {
    std::array<std::string, 3> parts;
    for (std::string& part : parts) {
        const size_t end = value.find('|');
        part = Trim(value.substr(0, end));
        value.remove_prefix(end == std::string_view::npos ? value.size() : end + 1);
    }
    return parts;
}

DateTime ReadDate(std::string_view value) {
    DateTime date = DateTime::Invalid();
    ParseDateFieldText(ReplaceAll(ReplaceAll(value, " ", "-"), ":", "-") + "-00", date);
    return date;
}

void AddAttachment(SampleNote& note, SampleAttachment::Kind kind, std::string_view value) {
    const auto [target, title, zoom] = Parts(value);
    note.attachments.push_back({kind, target, title, zoom.empty() ? 1.0 : ParseDouble(zoom)});
}

void AddSource(SampleNote& note, std::string_view value) {
    const auto [key, info, none] = Parts(value);
    note.sources.push_back({key, info});
}

struct HeadLine {
    std::string_view word;
    void (*take)(SampleNote& note, std::string_view value);
};

constexpr HeadLine kHeadLines[] = {
    {"created", [](SampleNote& note, std::string_view value) { note.created = ReadDate(value); }},
    {"edited", [](SampleNote& note, std::string_view value) { note.edited = ReadDate(value); }},
    {"keywords", [](SampleNote& note, std::string_view value) { note.keyWords = value; }},
    {"color", [](SampleNote& note, std::string_view value) { note.color = value; }},
    {"source", AddSource},
    {"set1", [](SampleNote& note, std::string_view value) { note.categories[0] = value; }},
    {"set2", [](SampleNote& note, std::string_view value) { note.categories[1] = value; }},
    {"set3", [](SampleNote& note, std::string_view value) { note.categories[2] = value; }},
    {"picture",
     [](SampleNote& note, std::string_view value) { AddAttachment(note, SampleAttachment::Kind::Picture, value); }},
    {"attach",
     [](SampleNote& note, std::string_view value) { AddAttachment(note, SampleAttachment::Kind::File, value); }},
    {"link",
     [](SampleNote& note, std::string_view value) { AddAttachment(note, SampleAttachment::Kind::Link, value); }},
};

void TakeHeadLine(SampleNote& note, std::string_view line) {
    const size_t colon = line.find(':');
    if (colon == std::string_view::npos)
        return;
    for (const HeadLine& head : kHeadLines)
        if (head.word == line.substr(0, colon))
            head.take(note, Trim(line.substr(colon + 1)));
}

}  // namespace

std::vector<SampleNote> ParseSampleNotes(std::string_view file) {
    std::vector<SampleNote> notes;
    bool inHead = false;
    while (!file.empty()) {
        const std::string_view line = TakeLine(file);
        if (line.starts_with(kTitleMark)) {
            notes.emplace_back().title = line.substr(kTitleMark.size());
            inHead = true;
        } else if (notes.empty()) {
            continue;
        } else if (!inHead) {
            notes.back().text.append(line) += '\n';
        } else if (line.empty()) {
            inHead = false;
        } else {
            TakeHeadLine(notes.back(), line);
        }
    }
    return notes;
}

}  // namespace lore
