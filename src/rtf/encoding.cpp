#include "rtf/encoding.h"

#include <array>
#include <new>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include "base/text.h"

namespace lore {

namespace {

/// Left alone, some converters put a control character for such bytes. Those within UTF-8 are mostly Windows-1252.
void PutForStray(const void* /*context*/, UConverterToUnicodeArgs* text, const char* bytes, int32_t length,
                 UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR)
        return;  // no bytes: the converter begins or ends
    *status = U_ZERO_ERROR;
    constexpr UChar kReplacement = 0xFFFD;
    if (ucnv_getType(text->converter) != UCNV_UTF8)
        return ucnv_cbToUWriteUChars(text, &kReplacement, 1, 0, status);
    for (const char byte : std::string_view(bytes, static_cast<size_t>(length))) {
        const auto character = static_cast<UChar>(FromWindows1252(static_cast<unsigned char>(byte)));
        ucnv_cbToUWriteUChars(text, &character, 1, 0, status);
    }
}

}  // namespace

std::optional<std::string> DecodedFrom(const std::string& encoding, std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUConverterPointer from(ucnv_open(encoding.c_str(), &status));
    const icu::LocalUConverterPointer to(ucnv_open("UTF-8", &status));
    ucnv_setToUCallBack(from.getAlias(), PutForStray, nullptr, nullptr, nullptr, &status);
    if (status == U_MEMORY_ALLOCATION_ERROR)
        throw std::bad_alloc();  // not taken for an unknown name
    if (U_FAILURE(status))
        return std::nullopt;
    constexpr size_t kPiece = 4096;
    std::array<char, kPiece> piece;
    std::array<UChar, kPiece> pivot;
    UChar *pivotSource = pivot.data(), *pivotTarget = pivot.data();
    const char *source = bytes.data(), *const end = source + bytes.size();
    std::string utf8;
    do {
        status = U_ZERO_ERROR;
        char* target = piece.data();
        ucnv_convertEx(to.getAlias(), from.getAlias(), &target, piece.data() + kPiece, &source, end, pivot.data(),
                       &pivotSource, &pivotTarget, pivot.data() + kPiece, false, true, &status);
        utf8.append(piece.data(), target);
    } while (status == U_BUFFER_OVERFLOW_ERROR);
    if (U_FAILURE(status))
        throw std::bad_alloc();  // a text that ends where the memory did would look whole
    return utf8;
}

}  // namespace lore
