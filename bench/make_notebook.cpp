// make_notebook DIR COUNT [--seed N] [--listed N] [--texts FOLDER]
//
// Writes a data folder with a NoteBook of COUNT notes, the same for the same numbers; --listed says how many notes the
// note list shows when the NoteBook is opened, --texts where the texts of the notes are written as plain files too.

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "bench/notebook_generator.h"

namespace {

constexpr int32_t kMostNotes = 1000000;

template <typename Number>
bool ReadNumber(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

bool ReadArguments(int argc, char** argv, lore::GeneratorOptions& options, std::filesystem::path& texts) {
    if (argc < 3 || argc % 2 == 0 || !ReadNumber(argv[2], options.count))
        return false;
    for (int i = 3; i < argc; i += 2) {
        const std::string_view name = argv[i];
        if (name == "--texts") {
            texts = argv[i + 1];
            continue;
        }
        const bool ok = name == "--seed"     ? ReadNumber(argv[i + 1], options.seed)
                        : name == "--listed" ? ReadNumber(argv[i + 1], options.listed)
                                             : false;
        if (!ok)
            return false;
    }
    return options.count >= 1 && options.count <= kMostNotes && options.listed >= 0;
}

}  // namespace

int main(int argc, char** argv) {
    lore::GeneratorOptions options;
    std::filesystem::path texts;
    if (!ReadArguments(argc, argv, options, texts)) {
        std::fprintf(stderr,
                     "usage: make_notebook DIR COUNT [--seed N] [--listed N] [--texts FOLDER]   (COUNT from 1 to %d)\n",
                     kMostNotes);
        return 2;
    }
    const lore::GeneratedBook book = lore::GenerateNoteBook(argv[1], options);
    if (!book.written.Ok()) {
        std::fprintf(stderr, "make_notebook: %s: %s\n", argv[1], book.written.Reason().c_str());
        return 1;
    }
    if (!texts.empty() && !lore::WriteTexts(texts, options)) {
        std::fprintf(stderr, "make_notebook: the texts could not be written to %s\n", texts.c_str());
        return 1;
    }
    std::printf("%d notes, %llu bytes of text, in %s\n", options.count, static_cast<unsigned long long>(book.textBytes),
                book.notes.c_str());
    return 0;
}
