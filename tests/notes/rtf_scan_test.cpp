#include "notes/rtf_scan.h"

#include <random>
#include <string>
#include <vector>

#include "base/wide_blocks.h"
#include "gtest/gtest.h"

namespace lore {
namespace {

struct Scan {
    bool (*terms)(std::string_view rtf, size_t& at, std::string_view term, PlaceTest test);
    bool (*escapes)(std::string_view rtf, size_t& at, PlaceTest test);
};

/// The one that is chosen for this processor, and each that it can run.
std::vector<Scan> Scans() {
    std::vector<Scan> scans = {{AnyTermStart, AnyAsciiEscape}};
#if defined(__x86_64__)
#if !defined(__AVX2__)
    scans.push_back({sse2::AnyTermStart, sse2::AnyAsciiEscape});
#endif
    if (HasWideBlocks())
        scans.push_back({avx2::AnyTermStart, avx2::AnyAsciiEscape});
#endif
    return scans;
}

std::vector<size_t> asked;

bool Ask(std::string_view, size_t at, std::string_view) {
    asked.push_back(at);
    return false;
}

bool AskUpToFive(std::string_view rtf, size_t at, std::string_view term) {
    Ask(rtf, at, term);
    return asked.size() == 5;
}

TEST(RtfScan, AsksAboutEachPlaceOnceAndInOrder) {
    std::mt19937 random(5);
    const std::string pieces = "LlIi\\{} \nafulcb'x9";
    for (int round = 0; round < 3000; ++round) {
        std::string rtf(random() % 150, ' ');
        for (char& c : rtf)
            c = pieces[random() % pieces.size()];
        const auto next = [&](size_t at, size_t further) {
            return at + further < rtf.size() ? rtf[at + further] : '\0';
        };
        for (const Scan& scan : Scans()) {
            for (const std::string_view term : {"li", "l", "9x"}) {
                asked.clear();
                size_t end = 0;
                ASSERT_FALSE(scan.terms(rtf, end, term, Ask));
                ASSERT_LT(rtf.size() - end, 33U);
                std::vector<size_t> wanted;
                for (size_t at = 0; at < end; ++at) {
                    const char c = rtf[at], second = next(at, 1);
                    const bool goesOn = term.size() == 1 || (second | (term[1] > '9' ? 0x20 : 0)) == term[1] ||
                                        std::string_view("\\{}\n").find(second) != std::string_view::npos;
                    if ((c == term[0] || (term[0] == 'l' && c == 'L')) && goesOn)
                        wanted.push_back(at);
                }
                ASSERT_EQ(asked, wanted) << rtf << ": " << term;
                asked.clear();
                size_t place = 0;
                ASSERT_EQ(scan.terms(rtf, place, term, AskUpToFive), wanted.size() >= 5);
            }
            asked.clear();
            size_t end = 0;
            ASSERT_FALSE(scan.escapes(rtf, end, Ask));
            std::vector<size_t> wanted;
            for (size_t at = 0; at < end; ++at) {
                const std::string pair{next(at, 1), next(at, 2)};
                if (rtf[at] == '\\' &&
                    (std::string_view("'uac").find(pair[0]) != std::string_view::npos || pair == "fl" || pair == "bi"))
                    wanted.push_back(at);
            }
            ASSERT_EQ(asked, wanted) << rtf;
        }
    }
}

}  // namespace
}  // namespace lore
