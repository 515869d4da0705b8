#include "bibliography/author_list.h"

#include <algorithm>
#include <functional>

#include "base/free_ids.h"
#include "base/text.h"
#include "bibliography/author_name.h"

namespace lore {

// Authors.dat
//
//   FixedDouble    version
//   FixedInt       number of authors
//   author *
//
// author
//   FixedInt       AuthorID
//   CountedString  first, middle, last, reserved1, reserved2

namespace {

constexpr std::string CAuthor::*kStrings[] = {&CAuthor::first, &CAuthor::middle, &CAuthor::last, &CAuthor::reserved1,
                                              &CAuthor::reserved2};

size_t NameHash(const CAuthor& author) {
    size_t hash = 0;
    for (const auto member : kStrings)
        hash = hash * 1000003u ^ std::hash<std::string>()(ToUtf8(author.*member));
    return hash;
}

bool HaveSameStrings(const CAuthor& a, const CAuthor& b) {
    return std::all_of(std::begin(kStrings), std::end(kStrings),
                       [&](std::string CAuthor::*member) { return IsSameText(a.*member, b.*member); });
}

CAuthor ReadAuthor(RecordReader* stream) {
    CAuthor author;
    ReadFixedInt(stream, author.AuthorID);
    for (const auto member : kStrings)
        ReadCountedString(stream, author.*member);
    return author;
}

void WriteAuthor(RecordWriter* stream, const CAuthor& author) {
    WriteFixedInt(stream, author.AuthorID);
    for (const auto member : kStrings)
        WriteCountedString(stream, author.*member);
}

}  // namespace

void ReadAuthorRecords(RecordReader* stream, std::vector<CAuthor>& authors) {
    authors.clear();
    ReadCounted(stream, [&] { authors.push_back(ReadAuthor(stream)); });
}

void WriteAuthorRecords(RecordWriter* stream, const std::vector<CAuthor>& authors) {
    WriteFixedInt(stream, static_cast<int32_t>(authors.size()));
    for (const CAuthor& author : authors)
        WriteAuthor(stream, author);
}

FileResult AuthorList::LoadAuthors(const std::filesystem::path& path) {
    RemoveAll();
    const FileResult result = LoadFile(path, [this](RecordReader* stream) { ReadAuthorRecords(stream, authors_); });
    Reindex();
    return result;
}

FileResult AuthorList::SaveAuthors(const std::filesystem::path& path, double version) const {
    RecordWriter stream;
    WriteFixedDouble(&stream, version);
    WriteAuthorRecords(&stream, authors_);
    return SaveRecordFile(path, stream);
}

const CAuthor* AuthorList::FindAuthorByID(int32_t id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : &authors_[found->second];
}

int32_t AuthorList::FindAuthorByName(const CAuthor& value) const {
    const auto [begin, end] = byName_.equal_range(NameHash(value));
    size_t first = authors_.size();
    for (auto entry = begin; entry != end; ++entry) {
        if (entry->second < first && HaveSameStrings(authors_[entry->second], value))
            first = entry->second;
    }
    return first < authors_.size() ? authors_[first].AuthorID : -1;
}

bool AuthorList::AddAuthor(const CAuthor& author) {
    if (FindAuthorByID(author.AuthorID) != nullptr)
        return false;
    authors_.push_back(author);
    Index(authors_.size() - 1);
    return true;
}

bool AuthorList::UpdateAuthor(CAuthor value) {
    const auto found = byId_.find(value.AuthorID);
    if (!TrimAuthorName(value) || found == byId_.end())
        return false;
    CAuthor& author = authors_[found->second];
    author.first = value.first;
    author.middle = value.middle;
    author.last = value.last;
    Reindex();
    return true;
}

void AuthorList::RemoveAuthor(int32_t id) {
    if (std::erase_if(authors_, [id](const CAuthor& author) { return author.AuthorID == id; }) > 0)
        Reindex();
    if (authors_.empty())
        authors_.shrink_to_fit();
}

void AuthorList::RemoveAll() {
    authors_ = {};
    Reindex();
}

int32_t AuthorList::NextAuthorID() const {
    return CounterAfter(largestID_);
}

void AuthorList::Index(size_t position) {
    const CAuthor& author = authors_[position];
    byId_.try_emplace(author.AuthorID, static_cast<uint32_t>(position));
    byName_.emplace(NameHash(author), static_cast<uint32_t>(position));
    largestID_ = std::max(largestID_, author.AuthorID);
}

void AuthorList::Reindex() {
    byId_.clear();
    byName_.clear();
    largestID_ = 0;
    for (size_t i = 0; i < authors_.size(); ++i)
        Index(i);
}

}  // namespace lore
