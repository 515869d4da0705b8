#include "printsave/note_pictures.h"

#include <QByteArray>

#include "base/file_io.h"
#include "notes/attachment_path.h"
#include "notes/picture_scale.h"
#include "rtf/html_writer.h"
#include "ui/board/rich_text_formats.h"
#include "ui/board/rich_text_pictures.h"
#include "ui/editor/picture_import.h"

namespace lore {

namespace {

QByteArray Bytes(const std::string& bytes) {
    return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

void Narrow(Picture& picture, int widest) {
    const PictureTwips size = SizeOnPaper(picture);
    const double most = widest * RichTextFormats::kTwipsPerPixel;
    if (size.width > most)
        picture = Resized(picture, QSizeF(widest, size.height * most / size.width / RichTextFormats::kTwipsPerPixel));
}

}  // namespace

std::optional<Picture> AttachedPicture(const NoteBookPaths& paths, const CAttachment& attachment, int widest) {
    const std::filesystem::path path = AttachmentPath(attachment, paths.Attachments());
    std::string bytes;
    if (path.empty() || !ReadFile(path, bytes).Ok())
        return std::nullopt;
    std::optional<Picture> picture = PictureFromBytes(Bytes(bytes), widest);
    if (!picture)
        return std::nullopt;
    // A zoom makes it larger or smaller than it came in, but never wider than the text.
    const PictureTwips size = SizeOnPaper(*picture);
    const QSizeF pixels = QSizeF(size.width, size.height) / RichTextFormats::kTwipsPerPixel;
    return Resized(*picture, pixels * PictureScale(attachment.zoom, pixels.width(), pixels.height(), widest));
}

void MakePicturesPlain(Document& document, int widest) {
    for (Picture& picture : document.pictures) {
        if (picture.kind != PictureKind::Png && picture.kind != PictureKind::Jpeg) {
            const QImage image = DecodePicture(picture);
            const QSizeF size = PictureSize(picture, image);
            if (std::optional<Picture> plain = PictureFromImage(image, 0))
                picture = Resized(*plain, size);
        }
        Narrow(picture, widest);
    }
}

}  // namespace lore
