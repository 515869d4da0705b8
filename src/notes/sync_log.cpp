#include "notes/sync_log.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <memory>
#include <string>

#include "base/record_file.h"
#include "base/text.h"
#include "base/utf8.h"

namespace lore {

// "Sync.dat" is lines of text, their fields separated and ended by commas:
//
//   Linked, OnlineNoteBookID, OnlineName, DesktopName, LastSync, NoteBookGuid,
//   NoteId, SyncState, Changed (2112 or -1), OnlineNoteId, NoteKey, NoteFile,
//       Change1, Change2, SourcesChanged, KeyWordsChanged, CategoriesChanged,

namespace {

constexpr int32_t kStoredFalse = -1;
constexpr std::array kRecordDates = {&CSyncInfo::Change1, &CSyncInfo::Change2, &CSyncInfo::SourcesChanged,
                                     &CSyncInfo::KeyWordsChanged, &CSyncInfo::CategoriesChanged};

/// Hands out the trimmed fields of a line one after the other.
class LineFields {
public:
    explicit LineFields(std::string_view line) : rest_(line) {}

    void Take(int32_t& value) {
        if (std::string_view text; Next(text))
            value = ParseInt(text);
    }
    void Take(std::string& value) {
        if (std::string_view text; Next(text))
            value = text;
    }
    void Take(DateTime& value) {
        if (std::string_view text; Next(text))
            value = ParseSyncDate(text);
    }

private:
    bool Next(std::string_view& field) {
        if (rest_.empty())
            return false;
        const size_t comma = rest_.find(',');
        field = Trim(rest_.substr(0, comma));
        rest_ = comma == std::string_view::npos ? std::string_view{} : rest_.substr(comma + 1);
        return true;
    }

    std::string_view rest_;
};

/// What of a text has room in a line, which is read up to 1,999 bytes: three texts, six numbers and dates.
std::string_view Fitting(std::string_view text) {
    constexpr size_t kMost = 590;
    if (text.size() <= kMost)
        return text;
    size_t end = kMost;
    while (end > kMost - 3 && IsContinuation(text[end]))
        --end;  // within a character of UTF-8
    return Trim(text.substr(0, end));
}

bool EndsField(char c) {
    return c == ',' || c == '\n' || c == '\r';
}

/// Builds a line of fields. What would end one within a text becomes a blank.
class LineText {
public:
    LineText& Add(std::string_view text) {
        if (!line_.empty())
            line_ += ' ';
        const auto start = static_cast<std::ptrdiff_t>(line_.size());
        line_.append(Fitting(text));
        std::replace_if(line_.begin() + start, line_.end(), EndsField, ' ');
        line_ += ',';
        return *this;
    }
    LineText& Add(int32_t value) { return Add(std::to_string(value)); }
    LineText& Add(const DateTime& date) { return Add(SyncDateText(date)); }
    std::string Ended() const { return line_ + '\n'; }

private:
    std::string line_;
};

SyncLink ReadLink(std::string_view line) {
    SyncLink link;
    LineFields fields(line);
    fields.Take(link.Linked);
    fields.Take(link.OnlineNoteBookID);
    fields.Take(link.OnlineName);
    fields.Take(link.DesktopName);
    fields.Take(link.LastSync);
    fields.Take(link.NoteBookGuid);
    return link;
}

CSyncInfo ReadInfo(std::string_view line) {
    CSyncInfo info;
    LineFields fields(line);
    fields.Take(info.NoteId);
    fields.Take(info.SyncState);
    int32_t changed = kStoredFalse;
    fields.Take(changed);
    info.Changed = changed == kStoredTrue;
    fields.Take(info.OnlineNoteId);
    fields.Take(info.NoteKey);
    fields.Take(info.NoteFile);
    for (const auto date : kRecordDates)
        fields.Take(info.*date);
    return info;
}

std::string LinkLine(const SyncLink& link) {
    return LineText()
        .Add(link.Linked)
        .Add(link.OnlineNoteBookID)
        .Add(link.OnlineName)
        .Add(link.DesktopName)
        .Add(link.LastSync)
        .Add(link.NoteBookGuid)
        .Ended();
}

std::string InfoLine(const CSyncInfo& info) {
    LineText line;
    line.Add(info.NoteId).Add(info.SyncState).Add(info.Changed ? kStoredTrue : kStoredFalse).Add(info.OnlineNoteId);
    line.Add(info.NoteKey).Add(info.NoteFile);
    for (const auto date : kRecordDates)
        line.Add(info.*date);
    return line.Ended();
}

/// Takes a number and the mark behind it from the front of a text.
bool TakeNumber(std::string_view& text, int& number, char mark) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<size_t>(end - text.data());
    if (error != std::errc() || number < 0 || length >= text.size() || text[length] != mark)
        return false;
    text.remove_prefix(length + 1);
    return true;
}

}  // namespace

bool SyncLink::IsLinked() const {
    return Linked == kStoredTrue;
}

void SyncLog::Add(CSyncInfo info) {
    byKey_.emplace(info.NoteKey, records_.size());
    records_.push_back(std::move(info));
}

const CSyncInfo* SyncLog::FindSyncInfo(std::string_view key) const {
    const auto hit = byKey_.find(std::string(key));
    return hit == byKey_.end() ? nullptr : &records_[hit->second];
}

void SyncLog::ReplaceSyncInfo(const CSyncInfo& info) {
    if (const auto hit = byKey_.find(info.NoteKey); hit != byKey_.end())
        records_[hit->second] = info;
    else
        Add(info);
}

void SyncLog::ResetLink() {
    link = {};
    records_.clear();
    byKey_.clear();
}

FileResult LoadSyncLogFrom(const std::filesystem::path& path, SyncLog& log, bool* hasHead) {
    log.ResetLink();
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(path, stream);
    const bool endsWithLine = stream && (stream->AtEnd() || stream->Rest().ends_with('\n'));
    std::string line;
    const bool head = ReadTextLine(stream.get(), line);
    if (hasHead)
        *hasHead = head;
    if (head)
        log.link = ReadLink(line);
    while (ReadTextLine(stream.get(), line)) {
        if (!line.empty())
            log.Add(ReadInfo(line));
    }
    log.MarkWhole(stream ? stream->ReadWhole() && endsWithLine : result.Missing());
    return result;
}

FileResult SaveSyncLogTo(const std::filesystem::path& path, const SyncLog& log) {
    RecordWriter writer;
    writer.Append(LinkLine(log.link));
    for (const CSyncInfo& info : log.Records())
        writer.Append(InfoLine(info));
    return SaveRecordFile(path, writer);
}

std::string SyncDateText(const DateTime& date) {
    return date.Format("%m/%d/%Y %I:%M:%S %p");
}

DateTime ParseSyncDate(std::string_view text) {
    int month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
    std::string_view rest = Trim(text);
    const bool numbers = TakeNumber(rest, month, '/') && TakeNumber(rest, day, '/') && TakeNumber(rest, year, ' ') &&
                         TakeNumber(rest, hour, ':') && TakeNumber(rest, minute, ':') && TakeNumber(rest, second, ' ');
    const bool afternoon = EqualNoCase(rest, "PM");
    if (!numbers || (!afternoon && !EqualNoCase(rest, "AM")) || hour < 1 || hour > 12)
        return {};
    const DateTime date(year, month, day, hour % 12 + (afternoon ? 12 : 0), minute, second);
    return date.IsValid() ? date : DateTime{};
}

}  // namespace lore
