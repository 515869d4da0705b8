#include <algorithm>

#include "app/exchange_commands.h"
#include "notes/note_list_add.h"
#include "soak/soak_world.h"

namespace lore {

namespace {

constexpr size_t kMostBooks = 4, kMostArchives = 4, kMostCopied = 12;

// Archives.

bool ExportList(Soak& soak) {
    const std::filesystem::path file = ArchivePlace(soak);
    const std::set<int32_t> listed = soak.Open().listed;
    if (listed.empty())
        return false;
    soak.prompts.savePaths = {file.string()};
    ExportCurrentNotes(soak.App());
    ArchiveInModel(soak, listed, file, false);
    return true;
}

bool BackUp(Soak& soak) {
    if (soak.Open().notes.empty())
        return false;
    const std::filesystem::path file = ArchivePlace(soak);
    soak.prompts.savePaths = {file.string()};
    BackupCurrentNoteBook(soak.App());
    std::set<int32_t> ids;
    for (const auto& [guid, note] : soak.Open().notes)
        ids.insert(note.id);
    ArchiveInModel(soak, ids, file, true);
    return true;
}

bool BackUpAll(Soak& soak) {
    const std::filesystem::path folder = soak.Scratch() / "all";
    std::filesystem::create_directories(folder);
    soak.prompts.savePaths = {(folder / "all.lbe").string()};
    BackupAllNoteBooks(soak.App());
    size_t files = 0, wanted = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files += entry.path().extension() == ".lbe";
    for (const ModelBook& book : soak.books)
        wanted += !book.notes.empty();
    std::filesystem::remove_all(folder);
    soak.Require(files == wanted, std::to_string(files) + " backups instead of " + std::to_string(wanted));
    return true;
}

/// Ticks rows at random, and notes what the list said of them.
class RandomChooser : public ImportChooser {
public:
    RandomChooser(Soak& soak, const ModelArchive& archive) : soak_(soak), archive_(archive) {}

    bool ChooseNotes(ImportComparison& comparison, ImportArchive&) override {
        soak_.Require(comparison.Rows().size() == archive_.notes.size(), "notes of an archive");
        for (const ImportRow& row : comparison.Rows())
            soak_.Require(row.status == StatusOf(row.entry.note.guid), "status of an archive's note");
        comparison.SetShowSame(soak_.Chance(30));
        const size_t share = 20 + soak_.Below(80);
        for (const size_t position : comparison.Shown())
            comparison.Row(position).ticked = soak_.Chance(share);
        for (const size_t position : comparison.Chosen())
            chosen.push_back(comparison.Rows()[position].entry.note.guid);
        comparison.displayAfter = displayAfter = soak_.Chance(30);
        return !soak_.Chance(5) || (chosen.clear(), false);
    }

    std::vector<std::string> chosen;
    bool displayAfter = false;

private:
    ImportStatus StatusOf(const std::string& guid) const {
        const ModelNotes& notes = soak_.Open().notes;
        const auto existing = notes.find(guid);
        if (existing == notes.end())
            return ImportStatus::New;
        const int64_t mine = existing->second.edited, its = archive_.notes.at(guid).edited;
        return mine == its ? ImportStatus::Same : its < mine ? ImportStatus::Older : ImportStatus::Newer;
    }

    Soak& soak_;
    const ModelArchive& archive_;
};

bool Import(Soak& soak) {
    if (soak.archives.empty() || soak.NoteCount() > 600)
        return false;
    const ModelArchive archive = soak.AnyOf(soak.archives);
    RandomChooser chooser(soak, archive);
    ModelBook& book = soak.Open();
    ModelUndo undo;
    undo.isImport = true;
    undo.listed = book.listed;
    soak.SayYes();
    const bool isDone = ImportArchiveFile(soak.App(), archive.file, chooser, soak.Commands());
    soak.Require(isDone == !chooser.chosen.empty(), "an import");
    soak.Note("  " + std::to_string(chooser.chosen.size()) + " notes of " + archive.file.filename().string());
    if (!isDone)
        return true;
    if (archive.hasAllSources)
        for (const auto& [guid, source] : archive.sources)
            book.sources.try_emplace(guid, source);
    for (const std::string& guid : chooser.chosen) {
        ModelNote note = archive.notes.at(guid);
        const auto existing = book.notes.find(guid);
        note.id = existing == book.notes.end() ? -1 : existing->second.id;
        note.version = soak.NewVersion();
        if (existing != book.notes.end())
            undo.notes.emplace(guid, existing->second);
        undo.sources = book.SourcesOf(undo.notes);
        BringIn(book, std::move(note), archive.sources);
    }
    soak.CheckOpenBook();
    std::set<int32_t> imported;
    for (const std::string& guid : chooser.chosen) {
        const ModelNote& note = book.notes.at(guid);
        undo.landed.emplace(note.id, note.version);
        imported.insert(note.id);
    }
    undo.isShown = chooser.displayAfter;
    book.undoables.push_back(std::move(undo));
    if (chooser.displayAfter)
        book.listed = imported;
    return true;
}

// NoteBooks.

ModelBook* OtherBook(Soak& soak) {
    if (soak.books.size() < 2)
        return nullptr;
    ModelBook* other = &soak.Open();
    while (other == &soak.Open())
        other = &soak.AnyOf(soak.books);
    return other;
}

bool Copy(Soak& soak) {
    ModelBook* const target = OtherBook(soak);
    if (!target || soak.Open().notes.empty() || soak.NoteCount() > 600)
        return false;
    std::vector<ModelNote> copied;
    LongList ids;
    for (size_t count = 1 + soak.Below(kMostCopied); count > 0; --count) {
        const ModelNote& note = soak.AnyOf(soak.Open().notes).second;
        if (ids.AddUnique(note.id))
            copied.push_back(note);
    }
    soak.Note("  " + std::to_string(copied.size()) + " notes to " + target->record.name);
    if (copied.size() == 1) {
        CopyNoteToNoteBook(soak.App(), ids[0], target->record.id);
    } else {
        const CNoteList notes = LoadListedNotes(soak.App().NoteBook(), ids, soak.App().Context(), soak.faults);
        CopyNotesOfNoteBook(soak.App(), notes, target->record);
    }
    CopyInModel(soak, copied, *target);
    return true;
}

/// After a change of the NoteBook that is open.
void Opened(Soak& soak) {
    ModelBook& book = soak.Open();
    soak.CheckOpenBook();
    if (!std::exchange(book.listIsStored, true)) {
        const LongList listed = soak.App().List().GetNoteIDs();
        book.listed = {listed.begin(), listed.end()};
    }
    std::erase_if(book.listed, [&](int32_t id) { return !book.FindByID(id); });
}

bool Switch(Soak& soak) {
    const ModelBook* const other = OtherBook(soak);
    if (!other)
        return false;
    soak.Note("  to " + other->record.name);
    soak.App().SwitchNoteBook(other->record);
    Opened(soak);
    return true;
}

bool Create(Soak& soak) {
    if (soak.books.size() >= kMostBooks)
        return false;
    NoteBookManagement management(soak.App(), soak.Trash());
    const std::string name = soak.Unique("NoteBook ");
    soak.SayYes();
    soak.Require(management.Model().Create(name), "a NoteBook wasn't made");
    soak.books.emplace_back().record = management.Model().Chosen();
    const bool changesTo = soak.Chance(50);
    management.Finish(changesTo);
    Opened(soak);
    return true;
}

bool Rename(Soak& soak) {
    NoteBookManagement management(soak.App(), soak.Trash());
    if (soak.books.size() < 2)
        return false;
    const size_t row = 1 + soak.Below(soak.books.size() - 1);
    management.Model().Select(row);
    const std::string name = soak.Unique("Renamed ");
    soak.Require(management.Model().ChangeName(name), "a NoteBook wasn't renamed");
    soak.books[row].record.name = name;
    management.Finish(false);
    return true;
}

bool Delete(Soak& soak) {
    if (soak.books.size() < 2)
        return false;
    NoteBookManagement management(soak.App(), soak.Trash());
    const size_t row = 1 + soak.Below(soak.books.size() - 1);
    const bool isOpen = &soak.Open() == &soak.books[row];
    management.Model().Select(row);
    soak.Note("  " + soak.books[row].record.name);
    const std::string count = "# Notes:  " + std::to_string(soak.books[row].notes.size());
    soak.Require(management.Model().Details().notes == count, management.Model().Details().notes + " not " + count);
    soak.SayYes();
    soak.Require(management.Model().Delete(), "a NoteBook wasn't deleted");
    soak.deletedBooks.emplace_back(row, soak.books[row]);
    if (isOpen)
        soak.deletedBooks.back().second.listIsStored = false;
    soak.books.erase(soak.books.begin() + static_cast<std::ptrdiff_t>(row));
    management.Finish(isOpen);  // the dialog goes on to the main NoteBook
    Opened(soak);
    return true;
}

bool Restore(Soak& soak) {
    if (soak.deletedBooks.empty() || soak.books.size() >= kMostBooks)
        return false;
    NoteBookManagement management(soak.App(), soak.Trash());
    soak.Require(management.Model().CanRestore() && management.Model().Restore(), "a NoteBook didn't come back");
    const auto [row, book] = soak.deletedBooks.back();
    soak.deletedBooks.pop_back();
    soak.books.insert(soak.books.begin() + static_cast<std::ptrdiff_t>(std::min(row, soak.books.size())), book);
    management.Finish(false);
    return true;
}

}  // namespace

void BringIn(ModelBook& book, ModelNote note, const ModelSources& sources) {
    for (const std::string& guid : note.sources)
        book.sources.try_emplace(guid, sources.at(guid));
    book.AddCategoriesOf(note);
    if (const auto existing = book.notes.find(note.guid); existing != book.notes.end())
        for (const auto& [guid, remark] : existing->second.remarks)
            if (std::count(note.sources.begin(), note.sources.end(), guid) > 0)
                note.remarks.try_emplace(guid, remark);
    const std::string guid = note.guid;
    book.notes[guid] = std::move(note);
}

void CopyInModel(Soak& soak, const std::vector<ModelNote>& notes, ModelBook& target) {
    const ModelSources sources = soak.Open().sources;
    for (ModelNote note : notes) {
        const auto existing = target.notes.find(note.guid);
        if (existing != target.notes.end() && existing->second.edited > note.edited)
            continue;
        note.id = -1;
        note.version = soak.NewVersion();
        BringIn(target, std::move(note), sources);
    }
}

std::filesystem::path ArchivePlace(Soak& soak) {
    return soak.Scratch() / ("archive" + std::to_string(soak.Below(kMostArchives)) + ".lbe");
}

void ArchiveInModel(Soak& soak, const std::set<int32_t>& ids, const std::filesystem::path& file, bool all) {
    ModelBook& book = soak.Open();
    ModelArchive archive{file, {}, book.sources, all};
    for (const int32_t id : ids) {
        const ModelNote& note = *book.FindByID(id);
        archive.notes.emplace(note.guid, note);
    }
    std::erase_if(soak.archives, [&](const ModelArchive& other) { return other.file == file; });
    soak.archives.push_back(std::move(archive));
    soak.Require(std::filesystem::exists(file), "no archive was made");
}

std::span<const SoakAction> BookActions() {
    static constexpr SoakAction actions[] = {{"export the list", 8, ExportList}, {"back up", 4, BackUp},
                                             {"back up all", 1, BackUpAll},      {"import", 12, Import},
                                             {"copy notes", 20, Copy},           {"change the NoteBook", 30, Switch},
                                             {"make a NoteBook", 8, Create},     {"rename a NoteBook", 3, Rename},
                                             {"delete a NoteBook", 3, Delete},   {"restore a NoteBook", 3, Restore}};
    return actions;
}

}  // namespace lore
