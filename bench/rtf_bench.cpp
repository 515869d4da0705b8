#include <benchmark/benchmark.h>
#include <string>

#include "rtf/find.h"
#include "rtf/rtf.h"

namespace {

constexpr std::string_view kHead =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\froman\\fcharset0 Times New "
    "Roman;}}\r\n{\\colortbl ;\\red255\\green0\\blue0;}\r\n\\viewkind4\\uc1\\pard\\f0\\fs20 ";
constexpr std::string_view kPlainParagraph =
    "The keeper climbed the stairs of the tower each evening, trimmed the wicks, filled the reservoirs with oil and "
    "wrote the state of the weather into the book that lay open on the desk beneath the lens; ships passed far out "
    "and answered with their own small lights, and in the morning the lamp was put out again and the glass was "
    "cleaned with spirit and a soft cloth, as the rules of the service asked.\\par\r\n";
constexpr std::string_view kFormattedParagraph =
    "\\pard\\qj\\sa120 The \\b keeper\\b0  climbed the {\\i stairs} of the \\cf1 tower\\cf0  each evening caf\\'e9 "
    "\\u8211? trimmed the {\\f1\\fs24 wicks} and \\ul filled\\ulnone  the reservoirs.\\par\r\n";

std::string Document(std::string_view paragraph, size_t size) {
    std::string rtf(kHead);
    while (rtf.size() < size)
        rtf += paragraph;
    return rtf + "}\r\n";
}

void PlainTextOf(benchmark::State& state, std::string_view paragraph, size_t size) {
    const std::string rtf = Document(paragraph, size);
    std::string text;
    for (auto _ : state) {
        lore::PlainText(rtf, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * rtf.size()));
}

void ReadDocument(benchmark::State& state, std::string_view paragraph) {
    const std::string rtf = Document(paragraph, 1 << 20);
    for (auto _ : state)
        benchmark::DoNotOptimize(lore::ReadRtf(rtf));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * rtf.size()));
}

void WriteDocument(benchmark::State& state) {
    const lore::Document document = lore::ReadRtf(Document(kFormattedParagraph, 1 << 20));
    for (auto _ : state)
        benchmark::DoNotOptimize(lore::WriteRtf(document));
}

void Find(benchmark::State& state, std::string_view term, bool wholeWord) {
    const std::string text = lore::PlainText(Document(kPlainParagraph, 8 << 20));
    const lore::TextFinder finder(term, wholeWord);
    for (auto _ : state)
        benchmark::DoNotOptimize(finder.FindAll(text));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void Mark(benchmark::State& state) {
    const std::string rtf = Document(kFormattedParagraph, 1 << 20);
    const auto hits = lore::TextFinder("evening", false).FindAll(lore::PlainText(rtf));
    for (auto _ : state)
        benchmark::DoNotOptimize(lore::MarkRtf(rtf, hits));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * rtf.size()));
}

BENCHMARK_CAPTURE(PlainTextOf, plain_note_of_4_kB, kPlainParagraph, size_t{4} << 10);
BENCHMARK_CAPTURE(PlainTextOf, plain_1_MB, kPlainParagraph, size_t{1} << 20);
BENCHMARK_CAPTURE(PlainTextOf, formatted_1_MB, kFormattedParagraph, size_t{1} << 20);
BENCHMARK_CAPTURE(ReadDocument, plain_1_MB, kPlainParagraph);
BENCHMARK_CAPTURE(ReadDocument, formatted_1_MB, kFormattedParagraph);
BENCHMARK(WriteDocument);
BENCHMARK_CAPTURE(Find, word_that_is_missing, "heliotrope", true);
BENCHMARK_CAPTURE(Find, one_letter_that_is_missing, "\xC3\xA9", false);
BENCHMARK_CAPTURE(Find, common_word, "the", true);
BENCHMARK(Mark);

}  // namespace

BENCHMARK_MAIN();
