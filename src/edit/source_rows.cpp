#include "edit/source_rows.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"
#include "bibliography/citation.h"
#include "bibliography/source_info.h"
#include "edit/info_by_key.h"

namespace lore {

namespace {

constexpr char kEmptyLine[] = "Click Here to Add Note Specific Info...";
constexpr char kDisabledLine[] = "Note Specific Info Disabled";

}  // namespace

CSource SourceRows::Formatted(const CSource& source) const {
    CSource copy = source;
    FormatSource(copy, authors_);
    return copy;
}

void SourceRows::Fill(const CNote& note, bool infoEnabled) {
    rows_.clear();
    infoEnabled_ = infoEnabled;
    unknown_ = FindUnknownSources(note, sources_);
    const auto infos = InfoByKey(note.sourceInfo);
    std::unordered_set<int32_t> seen;
    for (const int32_t id : note.sources) {
        const CSource* const source = seen.insert(id).second ? sources_.FindSourceByID(id) : nullptr;
        if (!source)
            continue;
        SourceRow row;
        row.source = Formatted(*source);
        if (const auto info = infos.find(ToLower(source->SourceGUID)); info != infos.end()) {
            row.key = info->second->key;
            row.text = info->second->text;
        }
        rows_.push_back(std::move(row));
    }
}

void SourceRows::WriteBack(CNote& note) const {
    note.sources.RemoveAll();
    std::vector<CNoteSourceInfo> infos;
    for (const SourceRow& row : rows_) {
        note.sources.AddTail(row.source.SourceID);
        infos.push_back({row.key, CleanText(row.text)});
    }
    note.sourceInfo = CollectSourceInfo(infos);
    unknown_.PutBack(note);
}

std::optional<size_t> SourceRows::SelectedRow() const {
    const auto found = std::find_if(rows_.begin(), rows_.end(), [](const SourceRow& row) { return row.selected; });
    return found == rows_.end() ? std::nullopt : std::optional(static_cast<size_t>(found - rows_.begin()));
}

std::optional<size_t> SourceRows::RowOf(int32_t sourceId) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [sourceId](const SourceRow& row) { return row.source.SourceID == sourceId; });
    return found == rows_.end() ? std::nullopt : std::optional(static_cast<size_t>(found - rows_.begin()));
}

std::optional<size_t> SourceRows::AddSource(int32_t sourceId) {
    const CSource* const source = sources_.FindSourceByID(sourceId);
    if (!source)
        return std::nullopt;
    if (!RowOf(sourceId)) {
        SourceRow row;
        row.source = *source;
        rows_.push_back(std::move(row));
    }
    Refresh();
    return RowOf(sourceId);
}

void SourceRows::RemoveSource(size_t row) {
    rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
}

std::optional<size_t> SourceRows::SelectRow(int32_t sourceId) {
    for (SourceRow& row : rows_)
        row.selected = row.source.SourceID == sourceId;
    return RowOf(sourceId);
}

void SourceRows::Refresh() {
    std::erase_if(rows_, [this](const SourceRow& row) { return !sources_.FindSourceByID(row.source.SourceID); });
    for (SourceRow& row : rows_) {
        const CSource& source = *sources_.FindSourceByID(row.source.SourceID);
        if (EqualNoCase(row.key, row.source.SourceGUID))
            row.key = source.SourceGUID;
        row.source = Formatted(source);
    }
}

bool SourceRows::OpenLine(size_t row) {
    if (!infoEnabled_)
        return false;
    SourceRow& opened = rows_[row];
    if (opened.key.empty())
        opened.key = opened.source.SourceGUID;
    opened.lineOpen = true;
    return true;
}

void SourceRows::SetText(size_t row, std::string text) {
    if (!rows_[row].key.empty())
        rows_[row].text = std::move(text);
}

std::string SourceRows::LineText(size_t row) const {
    if (!infoEnabled_)
        return kDisabledLine;
    return Trim(rows_[row].text).empty() ? kEmptyLine : rows_[row].text;
}

}  // namespace lore
