#pragma once

#include <string>

#include "base/record_file.h"
#include "bibliography/author_list.h"

namespace lore {

// A file of each kind, of 1 to 4 kB, that uses every field.

std::string AuthorSample();
std::string SourceSample();
std::string TextDateSourceSample();
std::string OldestSourceSample();
std::string TypeSample();
std::string CategorySample();
std::string OldCategorySample();
std::string NoteBookSample();
std::string LastListSample();
std::string SyncSample();
std::string EventSample();
std::string ReminderSample();
std::string ShownSample();
std::string BibliographySample();
std::string PreviewSample();
std::string ArchiveSample();
std::string NoteSample();
std::string OldNoteSample();
std::string FirstNoteSample();

/// The authors that the sources of the samples name, and one more.
AuthorList SampleAuthors();

/// A file of so many records that `write(stream)` writes behind its version and count.
template <typename Write>
std::string WithHead(int32_t count, Write write) {
    RecordWriter stream;
    WriteFixedDouble(&stream, kDataVersion);
    WriteFixedInt(&stream, count);
    write(stream);
    return stream.DiskBytes();
}

}  // namespace lore
