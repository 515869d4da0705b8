#include "ui/note_editor/attachment_open.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

#include "app/open_rules.h"
#include "notes/attachment_kind.h"
#include "ui/look/qt_text.h"
#include "ui/note_editor/picture_viewer.h"

namespace lore {

void OpenWebLink(const QString& address, Prompts& prompts) {
    if (JudgeLink(FromQString(address)) == OpenVerdict::Open) {
        QDesktopServices::openUrl(QUrl(address.trimmed(), QUrl::TolerantMode));
        return;
    }
    prompts.Message("\"" + FromQString(address) + "\" isn't opened: a link begins with http:, https:, ftp: or mailto:.",
                    "Open Link", PromptIcon::Warning);
}

void OpenAttachmentFile(const CAttachment& attachment, const std::filesystem::path& file, Prompts& prompts,
                        const Theme& theme, QWidget* parent) {
    if (attachment.type == kWebLink)
        return OpenWebLink(ToQString(attachment.sourceFile), prompts);
    const QString path = PathToQString(file);
    if (!QFile::exists(path)) {
        prompts.Message("The attached file \"" + attachment.title + "\" isn't in the NoteBook any more.",
                        "Missing Attachment", PromptIcon::Warning);
        return;
    }
    if (attachment.type == kImageFile) {
        PictureViewer viewer(path, ToQString(attachment.title), theme, parent);
        if (viewer.IsLoaded()) {
            viewer.exec();
            return;
        }
    }
    const std::string question =
        "\"" + attachment.title + "\" could be a program. Do you wish to open it all the same?";
    if (JudgeFile(FromQString(path)) == OpenVerdict::AskFirst &&
        prompts.Ask(question, "Open Attachment?") != PromptAnswer::Yes)
        return;
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace lore
