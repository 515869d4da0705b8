#include <algorithm>

#include "base/text.h"
#include "soak/soak_world.h"
#include "sources/source_browser.h"
#include "sources/source_editor.h"

namespace lore {

namespace {

// Imports and copies bring more; what is above goes first, so that the data, and the memory, stay of one size.
constexpr size_t kMostSources = 40, kMostAuthors = 40;

int32_t IdOf(Soak& soak, const std::string& guid) {
    const CSource* const source = soak.App().NoteBook().sources.FindSourceByGUID(guid);
    soak.Require(source, "source " + guid + " isn't there");
    return source->SourceID;
}

void AddAuthors(Soak& soak, SourceEditor& editor, ModelSource& wanted) {
    for (size_t count = soak.Below(3); count > 0; --count) {
        const std::vector<AuthorLine> available = editor.Authors().Available();
        int32_t id = -1;
        std::string last = soak.Unique("Keeper");
        if (!available.empty() && (available.size() >= kMostAuthors || soak.Chance(60))) {
            id = available[soak.Below(available.size())].id;
            last = editor.Authors().Find(id)->last;
        } else {
            CAuthor author;
            author.first = "Ann";
            author.last = last;
            id = editor.Authors().AddNew(author).value_or(-1);
        }
        editor.Authors().Append(id);
        wanted.authors.push_back(last);
    }
}

bool MakeSource(Soak& soak) {
    if (soak.Open().sources.size() >= kMostSources)
        return false;
    ModelSource wanted;
    SourceEditor editor = SourceEditor::ForNew(soak.Commands().Sources());
    const size_t type = soak.Below(editor.Types().size());
    editor.ChangeType(type);
    wanted.type = editor.Types()[type].number;
    wanted.title = soak.Unique("Lights of the ");
    editor.SetField(0, wanted.title);
    AddAuthors(soak, editor, wanted);
    soak.Require(editor.Save(), "a source wasn't saved");
    soak.Open().sources[editor.Working().SourceGUID] = wanted;
    soak.Commands().ShowSourceChanges();
    return true;
}

/// Another type makes it another source: its notes follow.
void Rename(Soak& soak, const std::string& from, const std::string& to) {
    ModelBook& book = soak.Open();
    book.sources[to] = book.sources[from];
    book.sources.erase(from);
    for (auto& [guid, note] : book.notes) {
        if (std::count(note.sources.begin(), note.sources.end(), from) == 0)
            continue;
        std::replace(note.sources.begin(), note.sources.end(), from, to);
        if (const auto remark = note.remarks.find(from); remark != note.remarks.end()) {
            note.remarks[to] = remark->second;
            note.remarks.erase(from);
        }
        note.edited = soak.Now().Seconds();
        note.version = soak.NewVersion();
    }
}

bool ChangeSource(Soak& soak) {
    ModelBook& book = soak.Open();
    if (book.sources.empty())
        return false;
    const std::string guid = soak.AnyOf(book.sources).first;
    ModelSource wanted = book.sources[guid];
    SourceStore& store = soak.Commands().Sources();
    SourceEditor editor =
        SourceEditor::ForSource(store, *soak.App().NoteBook().sources.FindSourceByID(IdOf(soak, guid)));
    if (soak.Chance(60))
        editor.SetField(0, wanted.title = soak.Unique("Reefs of the "));
    if (soak.Chance(30))
        AddAuthors(soak, editor, wanted);
    if (soak.Chance(30) && !wanted.authors.empty()) {
        const size_t position = soak.Below(wanted.authors.size());
        editor.Authors().Remove(editor.Authors().OfSource()[position].id);
        wanted.authors.erase(wanted.authors.begin() + static_cast<std::ptrdiff_t>(position));
    }
    if (soak.Chance(30)) {
        const size_t type = soak.Below(editor.Types().size());
        editor.ChangeType(type);
        wanted.type = editor.Types()[type].number;
    }
    const bool isRenamed = wanted.type != book.sources[guid].type;
    soak.Note("  source " + guid + (isRenamed ? " of another type" : ""));
    soak.Require(editor.Save(), "a source wasn't saved");
    const std::string now = editor.Working().SourceGUID;
    soak.Require((now != guid) == isRenamed, "GUID of a changed source");
    if (isRenamed)
        Rename(soak, guid, now);
    book.sources[now] = wanted;
    soak.Commands().ShowSourceChanges();
    for (const auto& [name, note] : book.notes)
        if (std::count(note.sources.begin(), note.sources.end(), now) > 0) {
            soak.CheckNote(name);
            break;
        }
    return true;
}

bool ChangeOneAuthor(Soak& soak) {
    ModelBook& book = soak.Open();
    const AuthorList& authors = soak.App().NoteBook().authors;
    if (authors.Count() == 0 || book.sources.empty())
        return false;
    CAuthor author = authors[soak.Below(authors.Count())];
    const std::string before = author.last;
    SourceEditor editor = SourceEditor::ForSource(soak.Commands().Sources(), soak.App().NoteBook().sources[0]);
    const bool goes = authors.Count() > kMostAuthors || soak.Chance(30);
    soak.Note((goes ? "  delete " : "  rename ") + before);
    if (goes) {
        soak.SayYes();
        soak.Require(editor.Authors().Delete(author.AuthorID), "an author wasn't deleted");
    } else {
        author.last = soak.Unique("Warden");
        soak.Require(editor.Authors().Update(author), "an author wasn't changed");
    }
    for (auto& [guid, source] : book.sources) {
        if (goes)
            std::erase(source.authors, before);
        else
            std::replace(source.authors.begin(), source.authors.end(), before, author.last);
    }
    soak.Commands().ShowSourceChanges();
    return true;
}

bool ChangeAuthor(Soak& soak) {
    while (soak.App().NoteBook().authors.Count() > kMostAuthors + 1 && ChangeOneAuthor(soak))
        continue;
    return ChangeOneAuthor(soak);
}

bool DeleteOneSource(Soak& soak) {
    ModelBook& book = soak.Open();
    if (book.sources.empty())
        return false;
    const std::string guid = soak.AnyOf(book.sources).first;
    bool isUsed = false;
    for (const auto& [name, note] : book.notes)
        isUsed = isUsed || std::count(note.sources.begin(), note.sources.end(), guid) > 0;
    SourceBrowser browser(soak.Commands().Sources(), false);
    soak.Require(browser.CountOfAll() == book.sources.size(), "sources of the browser");
    browser.Select(browser.RowOf(IdOf(soak, guid)));
    soak.SayYes();
    soak.Require(browser.Delete() == !isUsed, "a source was deleted that has notes, or one that has none wasn't");
    if (!isUsed)
        book.sources.erase(guid);
    soak.Commands().ShowSourceChanges();
    return true;
}

bool DeleteSource(Soak& soak) {
    for (size_t more = soak.Open().sources.size() / kMostSources * 10; more > 0; --more)
        DeleteOneSource(soak);
    return DeleteOneSource(soak);
}

}  // namespace

std::span<const SoakAction> SourceActions() {
    static constexpr SoakAction actions[] = {{"make a source", 30, MakeSource},
                                             {"change a source", 25, ChangeSource},
                                             {"change an author", 8, ChangeAuthor},
                                             {"delete a source", 25, DeleteSource}};
    return actions;
}

}  // namespace lore
