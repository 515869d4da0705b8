#include "exchange/import_editing.h"

#include <algorithm>
#include <system_error>

#include "base/text.h"
#include "classify/category_merge.h"
#include "exchange/merged_lists.h"
#include "exchange/source_merge.h"
#include "notes/attachment_kind.h"
#include "notes/attachment_path.h"
#include "notes/file_faults.h"

namespace lore {

namespace {

constexpr char kFolder[] = "_NOTE_";

}  // namespace

ImportEditing::ImportEditing(ImportComparison& comparison, ImportArchive& archive, const EditWorld& open,
                             const IdCounters& counters, const std::filesystem::path& folder)
    : comparison_(comparison),
      archive_(archive),
      open_(open.book),
      counters_(counters),
      data_{folder},
      outside_(open) {}

/// The lists are copied when the first note is opened.
OpenNoteBook& ImportEditing::Book() {
    if (!book_) {
        book_.emplace();
        book_->paths = NoteBookPaths(data_, kFolder);
        book_->authors = open_.authors;
        book_->types = open_.types;
        book_->sources = open_.sources;
        book_->categories = open_.categories;
        book_->keyWords = open_.keyWords;
        book_->colors = open_.colors;
        world_.emplace(EditWorld{*book_, outside_.settings, outside_.prompts, outside_.progress, outside_.clock,
                                 outside_.guids, outside_.faults, nullptr, outside_.storeSettings});
    }
    return *book_;
}

EditNoteSession ImportEditing::Open(size_t position) {
    const ImportRow& row = comparison_.Rows()[position];
    ArchiveNote entry = row.entry;
    for (CAttachment& attachment : entry.note.attachments) {
        // Only what the user has attached here is a file of this machine.
        if (attachment.type != kWebLink && !row.addedFiles.contains(attachment.sourceFile))
            attachment.sourceFile.clear();
    }
    // The lists know it by the id that it has in the NoteBook.
    entry.note.id = std::max(row.existingID, 0);
    MapToBook(entry);
    Unpack(entry.note);
    EditNoteSession session = EditNoteSession::ForImportNote(*world_, entry.note);
    session.bringSource = [this](int32_t openID) { return BringSource(openID); };
    session.makeDraft = [this, guid = DraftOf(position)](CNote& note) {
        MakeDraft(note);
        note.guid = guid;
    };
    return session;
}

/// The NoteBook may have got sources since the lists were copied, under ids that mean others here.
int32_t ImportEditing::BringSource(int32_t openID) {
    const CSource* const known = open_.sources.FindSourceByID(openID);
    if (!known)
        return -1;
    ArchiveNote carrier{CNote(), {*known}};
    EmbedAuthors(carrier.sources.front(), open_.authors);
    SourceMerge merge(Book(), counters_);
    merge.AddTypes(carrier.sources);
    merge.NumberTypes();
    return merge.Merge(carrier.sources.front());
}

/// Gives the note the ids of the lists here, which take in what they lack.
void ImportEditing::MapToBook(ArchiveNote& entry) {
    SourceMerge merge(Book(), counters_);
    merge.AddTypes(entry.sources);
    merge.NumberTypes();
    merge.MergeSourcesOf(entry);
    CategoryMerger categories(Book().categories, counters_.MaxCategoryID);
    MapCategories(entry.note, categories);
}

void ImportEditing::Unpack(const CNote& note) {
    const std::filesystem::path folder = Book().paths.Attachments();
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    CreateNoteBookFolders(Book().paths);
    for (const CAttachment& attachment : note.attachments) {
        const ZipItem* const item = attachment.type == kWebLink ? nullptr : archive_.FileOf(attachment);
        const std::filesystem::path target = AttachmentPath(attachment, folder);
        if (!item || target.empty() || std::filesystem::exists(target, ignored))
            continue;
        const ArchiveResult result = HasRoom(folder, item->size)
                                         ? archive_.Extract(*item, target)
                                         : ArchiveResult::Failure("there is no room for it on the disk");
        if (!result.Ok())
            outside_.faults.Tell(
                {"The attachment \"" + attachment.title + "\" could not be unpacked", target.string(), result.reason});
    }
}

/// The record that came with the note where there is one, otherwise that of the lists.
CSource ImportEditing::RecordOf(const CSource& source, const std::vector<CSource>& brought) {
    const auto known = std::find_if(brought.begin(), brought.end(),
                                    [&](const CSource& other) { return other.SourceGUID == source.SourceGUID; });
    CSource record = known == brought.end() ? source : *known;
    if (known == brought.end())
        EmbedAuthors(record, Book().authors);
    return record;
}

void ImportEditing::Take(size_t position, const EditNoteSession& saved) {
    ImportRow& row = comparison_.Row(position);
    ArchiveNote entry{saved.note, {}};
    std::vector<NewCategory> made = saved.newCategories;
    AddUsedCategories(Book().categories, made, entry.note, counters_.MaxCategoryID);
    entry.note.id = row.entry.note.id;
    for (const int32_t id : saved.note.sources) {
        if (const CSource* const source = Book().sources.FindSourceByID(id))
            entry.sources.push_back(RecordOf(*source, row.entry.sources));
    }
    std::unordered_set<std::string> added;
    for (const CAttachment& attachment : entry.note.attachments) {
        if (attachment.type != kWebLink && attachment.storedFile.empty() && !attachment.sourceFile.empty())
            added.insert(attachment.sourceFile);
    }
    comparison_.ReplaceNote(position, std::move(entry));
    row.addedFiles = std::move(added);
    taken_.insert(position);
    WriteDraft(position);
}

void ImportEditing::Leave(size_t position) {
    if (taken_.contains(position))
        WriteDraft(position);
    else
        DraftStore(open_.paths).RemoveDraft(DraftOf(position));
}

void ImportEditing::Landed(const LongList& ids) {
    const std::vector<size_t> chosen = comparison_.Chosen();
    for (const auto& [position, guid] : drafts_) {
        // The id of a row that wasn't chosen is one of the archive.
        if (std::binary_search(chosen.begin(), chosen.end(), position) &&
            ids.Contains(comparison_.Rows()[position].entry.note.id))
            DraftStore(open_.paths).RemoveDraft(guid);
    }
}

void ImportEditing::DropDrafts() {
    for (const auto& [position, guid] : drafts_)
        DraftStore(open_.paths).RemoveDraft(guid);
}

std::string& ImportEditing::DraftOf(size_t position) {
    std::string& guid = drafts_[position];
    if (guid.empty())
        guid = outside_.guids.NewGuid();
    return guid;
}

/// What the NoteBook doesn't hold stays behind: sources of the archive, and files within it.
void ImportEditing::MakeDraft(CNote& note) const {
    note.id = -1;
    LongList known;
    for (const int32_t id : note.sources) {
        const CSource* const source = book_->sources.FindSourceByID(id);
        const CSource* const open = source ? open_.sources.FindSourceByGUID(source->SourceGUID) : nullptr;
        if (open)
            known.AddTail(open->SourceID);
    }
    note.sources = known;
    std::erase_if(note.attachments, [](const CAttachment& attachment) {
        return attachment.type != kWebLink && (!attachment.storedFile.empty() || attachment.sourceFile.empty());
    });
}

/// The folder of the import ends with it; pictures that have left a text lie there.
void ImportEditing::KeepFiles(CNote& note) const {
    const std::string folder = DraftStore(book_->paths).Folder().string() + "/";
    for (CAttachment& attachment : note.attachments) {
        std::string bytes;
        std::filesystem::path kept;
        if (attachment.type == kWebLink || !attachment.sourceFile.starts_with(folder))
            continue;
        FileResult result = ReadFile(attachment.sourceFile, bytes);
        if (result.Ok())
            result = DraftStore(open_.paths).KeepFile(note.guid, LastPathComponent(attachment.sourceFile), bytes, kept);
        TellFailedWrite(outside_.faults, "A picture of the note could not be kept with its draft",
                        attachment.sourceFile, result);
        if (result.Ok())
            attachment.sourceFile = kept.string();
    }
}

void ImportEditing::WriteDraft(size_t position) {
    Draft draft;
    draft.note = comparison_.Rows()[position].entry.note;
    MakeDraft(draft.note);
    draft.note.guid = DraftOf(position);
    KeepFiles(draft.note);
    draft.written = outside_.clock.Now();
    const DraftStore store(open_.paths);
    TellFailedWrite(outside_.faults, "The draft of the note could not be written", store.Folder(),
                    store.WriteDraft(draft));
}

CategoryAssignment ImportEditing::MakeAssignment() {
    return {Book().categories, counters_.MaxCategoryID, outside_.prompts};
}

void ImportEditing::Assign(const CategoryAssignment& assignment) {
    CNote note;
    assignment.WriteBack(note);
    std::vector<NewCategory> made = assignment.NewCategories();
    AddUsedCategories(Book().categories, made, note, counters_.MaxCategoryID);
    comparison_.AssignCategories(note.categories);
}

}  // namespace lore
