#include "rtf/code_page.h"

#include <algorithm>
#include <unicode/ucnv.h>

#include "base/ascii.h"
#include "base/text.h"
#include "base/utf8.h"

namespace lore {

namespace {

constexpr int kUtf8 = 65001;
constexpr char32_t kReplacement = 0xFFFD;

struct CharsetPage {
    int charset;
    int codePage;
};
constexpr CharsetPage kCharsetPages[] = {
    {77, 10000}, {78, 932},   {79, 949},   {80, 936},   {81, 950},  {83, 10005}, {84, 10004}, {85, 10006}, {86, 10081},
    {88, 10029}, {89, 10007}, {128, 932},  {129, 949},  {134, 936}, {136, 950},  {161, 1253}, {162, 1254}, {163, 1258},
    {177, 1255}, {178, 1256}, {186, 1257}, {204, 1251}, {222, 874}, {238, 1250}, {254, 437},  {255, 850},
};

/// How many bytes the characters of a code page take.
enum class PageForm : uint8_t { Single, Double, ShiftJis, Euc, Gb18030, Unicode };

struct NamedPage {
    int codePage;
    const char* converter;
    PageForm form = PageForm::Single;
};
constexpr NamedPage kNamedPages[] = {
    {708, "ISO-8859-6"},
    {932, "windows-932", PageForm::ShiftJis},
    {936, "GBK", PageForm::Double},
    {949, "windows-949", PageForm::Double},
    {950, "windows-950", PageForm::Double},
    {10000, "macintosh"},
    {10001, "Shift_JIS", PageForm::ShiftJis},
    {10002, "Big5", PageForm::Double},
    {10003, "EUC-KR", PageForm::Double},
    {10004, "x-mac-arabic"},
    {10005, "x-mac-hebrew"},
    {10006, "x-mac-greek"},
    {10007, "x-mac-cyrillic"},
    {10008, "GBK", PageForm::Double},
    {10029, "x-mac-centraleurroman"},
    {10081, "x-mac-turkish"},
    {20127, "US-ASCII"},
    {20866, "KOI8-R"},
    {20932, "EUC-JP", PageForm::Euc},
    {20936, "GBK", PageForm::Double},
    {20949, "windows-949", PageForm::Double},
    {21866, "KOI8-U"},
    {28591, "windows-1252"},
    {28599, "windows-1254"},
    {51932, "EUC-JP", PageForm::Euc},
    {51936, "GBK", PageForm::Double},
    {51949, "windows-949", PageForm::Double},
    {54936, "gb18030", PageForm::Gb18030},
    {kUtf8, "UTF-8", PageForm::Unicode},
};
static_assert(std::is_sorted(std::begin(kNamedPages), std::end(kNamedPages),
                             [](const NamedPage& a, const NamedPage& b) { return a.codePage < b.codePage; }));

const NamedPage* FindPage(int codePage) {
    const auto* const found =
        std::lower_bound(std::begin(kNamedPages), std::end(kNamedPages), codePage,
                         [](const NamedPage& page, int wanted) { return page.codePage < wanted; });
    return found == std::end(kNamedPages) || found->codePage != codePage ? nullptr : found;
}

PageForm FormOf(int codePage) {
    const NamedPage* const page = FindPage(codePage);
    return page == nullptr ? PageForm::Single : page->form;
}

std::string ConverterName(int codePage) {
    if (const NamedPage* const page = FindPage(codePage))
        return page->converter;
    constexpr int kFirstIso = 28591, kLastIso = 28606;
    if (codePage >= kFirstIso && codePage <= kLastIso)
        return "ISO-8859-" + std::to_string(codePage - kFirstIso + 1);
    const bool windows = (codePage >= 1250 && codePage <= 1258) || codePage == 874;
    return (windows ? "windows-" : "ibm-") + std::to_string(codePage);
}

char32_t ConvertOne(UConverter* converter, std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    UChar units[8];
    ucnv_resetToUnicode(converter);
    const int32_t count = ucnv_toUChars(converter, units, 8, bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status) || count < 1)
        return kReplacement;
    if (count > 1 && U16_IS_LEAD(units[0]) && U16_IS_TRAIL(units[1]))
        return static_cast<char32_t>(U16_GET_SUPPLEMENTARY(units[0], units[1]));
    // Some converters give a control character for a byte that stands for nothing.
    return U16_IS_SURROGATE(units[0]) || units[0] < 0x20 ? kReplacement : static_cast<char32_t>(units[0]);
}

}  // namespace

int CodePageOfCharset(int charset, int documentPage) {
    const auto* found = std::find_if(std::begin(kCharsetPages), std::end(kCharsetPages),
                                     [charset](const CharsetPage& entry) { return entry.charset == charset; });
    return found == std::end(kCharsetPages) ? documentPage : found->codePage;
}

bool IsMultiByte(int codePage) {
    return FormOf(codePage) != PageForm::Single;
}

size_t CharacterLength(int codePage, std::string_view begin) {
    const auto lead = static_cast<unsigned char>(begin[0]);
    if (lead < 0x80)
        return 1;
    switch (FormOf(codePage)) {
        case PageForm::Single:
            return 1;
        case PageForm::Unicode:
            return SequenceLength(begin[0]);
        case PageForm::ShiftJis:
            return (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC) ? 2 : 1;
        case PageForm::Euc:
            return lead == 0x8F ? 3 : lead == 0x8E || (lead >= 0xA1 && lead <= 0xFE) ? 2 : 1;
        case PageForm::Gb18030:
            if (begin.size() > 1 && IsDigit(begin[1]))
                return 4;
            [[fallthrough]];
        case PageForm::Double:
            return lead >= 0x81 && lead <= 0xFE ? 2 : 1;
    }
    return 1;
}

bool MayContinue(int codePage, std::string_view begin, char next) {
    const auto byte = static_cast<unsigned char>(next);
    switch (FormOf(codePage)) {
        case PageForm::Unicode:
            return IsContinuation(next);
        case PageForm::Euc:
            return byte >= 0xA0;
        case PageForm::Gb18030:
            return begin.size() == 1 ? byte >= 0x40 || IsDigit(next) : begin.size() == 2 ? byte >= 0x81 : IsDigit(next);
        default:
            return byte >= 0x40;
    }
}

struct CodePageDecoder::Page {
    explicit Page(int number) : codePage(number) {
        if (number == kWesternPage || number == kUtf8)
            return;
        UErrorCode status = U_ZERO_ERROR;
        converter = ucnv_open(ConverterName(number).c_str(), &status);
        if (U_FAILURE(status))
            converter = nullptr;
        if (converter != nullptr && !IsMultiByte(number))
            FillUpperHalf();
    }
    ~Page() {
        if (converter != nullptr)
            ucnv_close(converter);
    }
    Page(const Page&) = delete;
    Page& operator=(const Page&) = delete;

    void FillUpperHalf() {
        for (size_t i = 0; i < upperHalf.size(); ++i) {
            const char byte = static_cast<char>(0x80 + i);
            upperHalf[i] = ConvertOne(converter, std::string_view(&byte, 1));
        }
    }

    int codePage;
    UConverter* converter = nullptr;
    std::array<char32_t, 128> upperHalf{};
};

CodePageDecoder::CodePageDecoder() = default;
CodePageDecoder::~CodePageDecoder() = default;

CodePageDecoder::Page& CodePageDecoder::PageOf(int codePage) {
    for (const auto& page : pages_) {
        if (page->codePage == codePage)
            return *page;
    }
    // A converter takes long to open: a file that names ever new code pages gets Western text from then on.
    constexpr size_t kMostPages = 64;
    if (pages_.size() == kMostPages)
        return *pages_.back();
    if (pages_.size() + 1 == kMostPages)
        codePage = kWesternPage;
    return *pages_.emplace_back(std::make_unique<Page>(codePage));
}

char32_t CodePageDecoder::Decode(int codePage, unsigned char byte) {
    if (byte < 0x80)
        return byte;
    if (codePage == kWesternPage)
        return FromWindows1252(byte);
    const Page& page = PageOf(codePage);
    return page.converter == nullptr ? FromWindows1252(byte) : page.upperHalf[byte - 0x80u];
}

void CodePageDecoder::Append(int codePage, std::string_view bytes, std::string& utf8) {
    const Page& page = PageOf(codePage);
    if (codePage == kUtf8 && IsValidUtf8(bytes))
        utf8.append(bytes);
    else
        AppendUtf8(utf8, page.converter == nullptr ? kReplacement : ConvertOne(page.converter, bytes));
}

}  // namespace lore
