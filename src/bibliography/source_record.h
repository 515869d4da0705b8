#pragma once

#include "base/record_file.h"
#include "bibliography/author_list.h"
#include "bibliography/source.h"
#include "ports/read_context.h"

namespace lore {

// A source record has three forms: the main form of "Sources.dat", the export form of archives, and the bibliography
// form of the hand-over files for printing. Readers replace the whole record; `version` is what the file opened with.

/// A source with every default: dates now, fifteen empty slots, the default fields of a type. Id -1 and no GUID.
CSource MakeSource(const ReadContext& context);

/// An empty SourceGUID gets a new one, and what an older file lacks gets its default. The caller drops ids of 0 or
/// less.
void ReadSource(RecordReader* stream, double version, const ReadContext& context, CSource& source);
/// True if files of this version hold the date of a source as the text of slot 2.
bool HasTextDates(double version);
void WriteSource(RecordWriter* stream, const CSource& source);

void ReadExportSource(RecordReader* stream, double version, const ReadContext& context, CSource& source);
/// Writes a copy that is formatted first and carries the records of its authors.
void WriteExportSource(RecordWriter* stream, const CSource& source, const AuthorList& authors);

void ReadBibliographySource(RecordReader* stream, const ReadContext& context, CSource& source);
/// Writes the citation as it stands in the source: the caller formats it before.
void WriteBibliographySource(RecordWriter* stream, const CSource& source);

}  // namespace lore
