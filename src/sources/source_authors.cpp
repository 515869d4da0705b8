#include "sources/source_authors.h"

#include <algorithm>
#include <unordered_set>

#include "base/free_ids.h"
#include "base/text.h"
#include "bibliography/author_name.h"
#include "bibliography/new_author.h"
#include "notes/notebook_lists.h"

namespace lore {

namespace {

AuthorLine LineOf(const CAuthor& author) {
    return {author.AuthorID, FormatAuthorInverted(author, kListNameForm)};
}

void CleanName(CAuthor& author) {
    for (std::string* const part : {&author.first, &author.middle, &author.last})
        *part = CleanText(*part);
}

}  // namespace

std::vector<AuthorLine> SourceAuthors::Available() const {
    const std::unordered_set<int32_t> taken(ids_.begin(), ids_.end());
    std::vector<std::pair<std::string, AuthorLine>> keyed;
    for (const CAuthor& author : store_.World().book.authors) {
        if (taken.contains(author.AuthorID))
            continue;
        AuthorLine line = LineOf(author);
        std::string key = ToLower(line.name);
        keyed.emplace_back(std::move(key), std::move(line));
    }
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<AuthorLine> lines;
    lines.reserve(keyed.size());
    for (auto& [key, line] : keyed)
        lines.push_back(std::move(line));
    return lines;
}

std::vector<AuthorLine> SourceAuthors::OfSource() const {
    std::vector<AuthorLine> lines;
    for (const int32_t id : ids_) {
        if (const CAuthor* const author = Find(id))
            lines.push_back(LineOf(*author));
    }
    return lines;
}

const CAuthor* SourceAuthors::Find(int32_t id) const {
    return store_.World().book.authors.FindAuthorByID(id);
}

std::optional<int32_t> SourceAuthors::AddNew(CAuthor name) {
    EditWorld& world = store_.World();
    CleanName(name);
    if (!TrimAuthorName(name))
        return std::nullopt;
    int last = world.settings.Int(Option::MaxAuthorID);
    name.AuthorID = AuthorIDs(world.book.sources).Take(world.book.authors, last);
    if (name.AuthorID == 0) {
        world.faults.Tell({"The author could not be added", world.book.paths.Authors().string(), kNoFreeID});
        return std::nullopt;
    }
    world.settings.Set(Option::MaxAuthorID, last);
    world.storeSettings();
    const AuthorList before = world.book.authors;
    world.book.authors.AddAuthor(name);
    return Write(before) ? std::optional(name.AuthorID) : std::nullopt;
}

bool SourceAuthors::Update(CAuthor value) {
    CleanName(value);
    const AuthorList before = store_.World().book.authors;
    if (!store_.World().book.authors.UpdateAuthor(std::move(value)) || !Write(before))
        return false;
    store_.Changes().authors = true;
    return true;
}

bool SourceAuthors::Delete(int32_t id) {
    EditWorld& world = store_.World();
    const CAuthor* const author = Find(id);
    if (!author || world.prompts.Ask("Deleting *" + LineOf(*author).name +
                                         "* will remove it from any sources that contain it.  Do you wish to continue?",
                                     "Delete Author?") != PromptAnswer::Yes)
        return false;
    const AuthorList before = world.book.authors;
    world.book.authors.RemoveAuthor(id);
    if (!Write(before))
        return false;
    store_.Changes().authors = true;
    return true;
}

bool SourceAuthors::Write(const AuthorList& before) {
    EditWorld& world = store_.World();
    const bool written = WriteAuthors(world.book, world.faults);
    if (!written)
        world.book.authors = before;
    return written;
}

void SourceAuthors::Append(int32_t id) {
    if (Find(id))
        ids_.AddUnique(id);
}

void SourceAuthors::Remove(int32_t id) {
    ids_.RemoveValue(id);
}

void SourceAuthors::Reorder(const std::vector<int32_t>& order) {
    LongList ids;
    for (const int32_t id : order) {
        if (ids_.Contains(id))
            ids.AddUnique(id);
    }
    // An id without an author has no line.
    ids.Merge(ids_);
    ids_ = std::move(ids);
}

}  // namespace lore
