#include "ui/editor/note_clipboard.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <map>

#include "base/text.h"
#include "rtf/html_reader.h"
#include "rtf/rtf.h"
#include "ui/editor/document_capture.h"
#include "ui/editor/document_fill.h"
#include "ui/editor/note_formats.h"
#include "ui/editor/picture_import.h"

namespace lore {
namespace {

/// Says which text a copy is of.
constexpr char kOrigin[] = "application/x-lorebinder-text";

QTextListFormat::Style StyleOf(ListKind kind) {
    switch (kind) {
        case ListKind::Decimal:
            return QTextListFormat::ListDecimal;
        case ListKind::LowerLetter:
            return QTextListFormat::ListLowerAlpha;
        case ListKind::UpperLetter:
            return QTextListFormat::ListUpperAlpha;
        case ListKind::LowerRoman:
            return QTextListFormat::ListLowerRoman;
        case ListKind::UpperRoman:
            return QTextListFormat::ListUpperRoman;
        case ListKind::None:
        case ListKind::Bullet:
            break;
    }
    return QTextListFormat::ListDisc;
}

// HTML knows lists as such: the items get lists of Qt's own.
void MakeLists(QTextDocument& text, const NoteFormats& formats) {
    std::map<std::pair<int32_t, int>, QTextList*> lists;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        const ParagraphFormat format = formats.Paragraph(block.blockFormat());
        if (format.list == ListKind::None) {
            lists.clear();
            continue;
        }
        QTextBlockFormat plain = block.blockFormat();
        plain.setLeftMargin(0);
        QTextCursor(block).setBlockFormat(plain);
        QTextList*& list = lists[{format.listId, format.listLevel}];
        if (!list) {
            QTextListFormat look;
            look.setStyle(StyleOf(format.list));
            look.setIndent(format.listLevel + 1);
            list = QTextCursor(block).createList(look);
        } else {
            list->add(block);
        }
    }
}

QString HtmlOf(const Document& document, const NoteFormats& own) {
    NoteFormats formats(own.GetTheme());
    // Elsewhere the ground is white, whatever it is here.
    formats.SetLook({Qt::white, 1.0, 96, 0});
    formats.Reset(document);
    QTextDocument text;
    FillNote(document, text, formats);
    MakeLists(text, formats);
    QString html = text.toHtml();
    for (size_t i = 0; i < document.pictures.size(); ++i) {
        const Picture& picture = document.pictures[i];
        if (picture.kind != PictureKind::Png && picture.kind != PictureKind::Jpeg)
            continue;
        const QByteArray bytes = QByteArray::fromStdString(picture.bytes).toBase64();
        html.replace(QStringLiteral("\"picture:%1\"").arg(i),
                     QStringLiteral("\"data:image/%1;base64,%2\"")
                         .arg(picture.kind == PictureKind::Png ? "png" : "jpeg", QString::fromLatin1(bytes)));
    }
    return html;
}

QByteArray RtfIn(const QMimeData& mime) {
    for (const char* type : {"text/rtf", "application/rtf", "text/richtext"})
        if (QByteArray bytes = mime.data(QLatin1String(type)); bytes.startsWith("{\\rtf"))
            return bytes;
    return {};
}

}  // namespace

std::unique_ptr<QMimeData> CopyOf(const QTextCursor& selection, const NoteFormats& formats) {
    auto mime = CopyOf(Assemble(CaptureSelection(selection, formats)), formats);
    mime->setData(QLatin1String(kOrigin), formats.Mark().toRfc4122());
    return mime;
}

std::unique_ptr<QMimeData> CopyOf(const Document& document, const NoteFormats& formats) {
    auto mime = std::make_unique<QMimeData>();
    const QByteArray rtf = QByteArray::fromStdString(WriteRtf(document));
    mime->setText(QString::fromStdString(document.text));
    mime->setHtml(HtmlOf(document, formats));
    mime->setData(QStringLiteral("text/rtf"), rtf);
    mime->setData(QStringLiteral("application/rtf"), rtf);
    return mime;
}

bool IsCopyOf(const QMimeData& mime, const NoteFormats& formats) {
    return mime.data(QLatin1String(kOrigin)) == formats.Mark().toRfc4122();
}

std::optional<Document> PastedText(const QMimeData& mime, NoteFormats& formats, int widest) {
    std::optional<Document> pasted;
    if (const QByteArray rtf = RtfIn(mime); !rtf.isEmpty()) {
        pasted = ReadRtf(CleanRtf(rtf.toStdString()));
    } else if (mime.hasHtml()) {
        const CharFormat text = formats.Default();
        const auto convert = [widest](const std::string& bytes) {
            return PictureFromBytes(QByteArray::fromStdString(bytes), widest);
        };
        const std::string page = CleanText(mime.html().toStdString());
        HtmlLook look{formats.FontName(text), text.halfPoints, convert};
        // A picture that was copied from a page comes as a page that only names it, and as itself.
        look.alternatives = !mime.hasImage();
        pasted = ReadHtml(page, look);
        const bool hasWords = !QString::fromStdString(pasted->text).trimmed().isEmpty();
        if (mime.hasImage() && !hasWords && pasted->pictures.empty())
            return std::nullopt;  // white space around the picture
        if (mime.hasImage() && hasWords) {
            look.alternatives = true;
            pasted = ReadHtml(page, look);
        }
    }
    if (pasted) {
        for (Picture& picture : pasted->pictures)
            picture = Bounded(picture, widest);
    }
    return pasted;
}

std::optional<Picture> PastedPicture(const QMimeData& mime, int widest) {
    // An image that Qt makes of the same bytes has a lower limit.
    for (const QString& form : QStringList(QStringLiteral("image/png")) + mime.formats()) {
        if (!form.startsWith(u"image/"))
            continue;
        if (std::optional<Picture> picture = PictureFromBytes(mime.data(form), widest))
            return picture;
    }
    return PictureFromImage(qvariant_cast<QImage>(mime.imageData()), widest);
}

QString PastedPlainText(const QMimeData& mime) {
    QString text = QString::fromStdString(CleanText(mime.text().toStdString()));
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}

}  // namespace lore
