#pragma once

#include <string>
#include <string_view>

#include "base/record_file.h"
#include "notes/note.h"
#include "ports/read_context.h"

namespace lore {

/// The two texts of a note as they stand in the stream that it was read from; they live as long as the reader.
struct NoteTexts {
    std::string_view plainText;
    std::string_view rtfText;
};

/// Resets the note and reads one record in the shape of the file's version. Dates that can't be read are `context.now`,
/// an empty guid gets a new one. Anything can be read; a short stream gives zeros and empty texts.
void ReadNote(RecordReader* stream, double version, const ReadContext& context, CNote& note);

/// How much of a head is kept: all of it, or only the note's id, its attachments and what GetNoteFileName asks for. For
/// who looks through many notes for a few.
enum class HeadParts { All, Place };

/// The same without copying the texts: plainText and rtfText of the note stay empty. With HeadParts::Place fields
/// beyond these parts hold anything.
void ReadNoteHead(RecordReader* stream, double version, const ReadContext& context, CNote& note, NoteTexts& texts,
                  HeadParts parts = HeadParts::All);

/// Writes one record in the current shape. A source id that stands twice is written once.
void WriteNote(RecordWriter* stream, const CNote& note);

/// "SRC0000000042.dat" after the first source, "DAY07122011.dat" after the creation day of a note without source,
/// "DAYInvalid DateTime.dat" if that day is invalid.
std::string GetNoteFileName(const CNote& note);

}  // namespace lore
