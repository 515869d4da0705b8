#include "exchange/import_comparison.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

#include "bibliography/citation_field.h"
#include "notes/attachment_kind.h"

namespace lore {

namespace {

constexpr size_t kTitleSlot = 0;

const char* StatusFormat(ImportStatus status) {
    if (status == ImportStatus::New)
        return " %zu. - <NEW NOTE>    ";
    if (status == ImportStatus::Same)
        return " %zu. - EXISTS (same)  ";
    return status == ImportStatus::Older ? " %zu. - EXISTS (older)  " : " %zu. - EXISTS (newer)  ";
}

ImportStatus StatusOf(const CNote& note, const CNote& existing) {
    if (note.dateEdited == existing.dateEdited)
        return ImportStatus::Same;
    return note.dateEdited.IsEarlierOrEqual(existing.dateEdited) ? ImportStatus::Older : ImportStatus::Newer;
}

}  // namespace

ImportComparison::ImportComparison(std::vector<ArchiveNote> notes, NoteHeads existing, GuidSource& guids,
                                   LoadExisting loadExisting)
    : existing_(std::move(existing)), loadExisting_(std::move(loadExisting)) {
    std::unordered_set<std::string> met;
    rows_.reserve(notes.size());
    for (ArchiveNote& entry : notes) {
        if (!met.insert(entry.note.guid).second)
            entry.note.guid = guids.NewGuid();
        ImportRow row;
        row.number = rows_.size() + 1;
        row.entry = std::move(entry);
        if (const auto found = existing_.find(row.entry.note.guid); found != existing_.end()) {
            row.status = StatusOf(row.entry.note, found->second);
            row.existingID = found->second.id;
        }
        rows_.push_back(std::move(row));
    }
    Refill();
}

void ImportComparison::Refill() {
    shown_.clear();
    for (size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].status != ImportStatus::Same || showSame_)
            shown_.push_back(i);
    }
    TickAll(true);
}

void ImportComparison::SetShowSame(bool show) {
    showSame_ = show;
    Refill();
}

void ImportComparison::TickAll(bool ticked) {
    for (const size_t position : shown_)
        rows_[position].ticked = ticked;
}

void ImportComparison::ReplaceNote(size_t position, ArchiveNote entry) {
    ImportRow& row = rows_[position];
    entry.note.guid = row.entry.note.guid;
    row.entry = std::move(entry);
    if (row.status == ImportStatus::Older || row.status == ImportStatus::Same)
        row.status = ImportStatus::Newer;
}

void ImportComparison::AssignCategories(const std::array<CProCategoryTree, kSetCount>& paths) {
    for (const size_t position : Chosen()) {
        for (size_t set = 0; set < kSetCount; ++set) {
            if (!paths[set].IsEmptyPath())
                rows_[position].entry.note.categories[set] = paths[set];
        }
    }
}

std::optional<ArchiveNote> ImportComparison::Existing(size_t position) const {
    const int32_t id = rows_[position].existingID;
    return id > 0 ? loadExisting_(id) : std::nullopt;
}

const CNote* ImportComparison::ExistingHead(size_t position) const {
    if (rows_[position].existingID <= 0)
        return nullptr;
    const auto found = existing_.find(rows_[position].entry.note.guid);
    return found == existing_.end() ? nullptr : &found->second;
}

std::vector<size_t> ImportComparison::Chosen() const {
    std::vector<size_t> chosen;
    std::copy_if(shown_.begin(), shown_.end(), std::back_inserter(chosen),
                 [&](size_t position) { return rows_[position].ticked; });
    return chosen;
}

bool ImportComparison::Accept(Prompts& prompts) const {
    if (!Chosen().empty())
        return true;
    prompts.Message("There are no notes selected to import.", "Invalid Notes", PromptIcon::Warning);
    return false;
}

std::string ImportComparison::StatusText(const ImportRow& row) {
    char text[64];
    std::snprintf(text, sizeof text, StatusFormat(row.status), row.number);
    return text;
}

std::string ImportComparison::MainSourceTitle(const ImportRow& row) {
    return row.entry.sources.empty() ? std::string() : std::string(FieldText(row.entry.sources.front(), kTitleSlot));
}

std::string ImportComparison::CategoryName(const ImportRow& row, int level) {
    return PathName(row.entry.note.categories[0], level);
}

std::string ImportComparison::AttachmentText(const ImportRow& row) {
    std::string text;
    for (const CAttachment& attachment : row.entry.note.attachments) {
        text += text.empty() ? "" : "; ";
        text += attachment.title.empty() && attachment.type == kWebLink ? attachment.sourceFile : attachment.title;
    }
    return text;
}

std::string PathName(const CProCategoryTree& path, int level) {
    const CProCategoryTree* node = &path;
    for (; level > 0 && node; --level)
        node = node->children.empty() ? nullptr : &node->children.front();
    return node ? node->name : std::string();
}

}  // namespace lore
