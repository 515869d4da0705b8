#pragma once

#include <cstdint>
#include <string_view>

namespace lore {

struct CAttachment;

/// What an attachment is. On disk; never change.
enum AttachmentKind : int32_t {
    kImageFile = 1,
    kTextFile = 2,
    kDocumentFile = 3,
    kPdfFile = 4,
    kSpreadsheetFile = 5,
    kMusicFile = 6,
    kVideoFile = 7,
    kHtmlFile = 8,
    kCodeFile = 9,
    kUnknownFile = 10,
    kCompressedFile = 11,
    kWebLink = 12,
};

/// The kind that a file's extension tells, without regard to case; kUnknownFile if none matches. Never kWebLink.
int32_t AttachmentKindOf(std::string_view path);

/// Gives an attachment its type. Only a picture shows on the board: any other type hides it.
void SetAttachmentType(CAttachment& attachment, int32_t type);

/// "Image File"; "Unknown File" for a number that is no kind.
std::string_view AttachmentKindName(int32_t kind);

}  // namespace lore
