#pragma once

#include <filesystem>

#include "edit/attachment_list.h"
#include "ui/controls/panel_section.h"

class QTreeWidget;

namespace lore {

/// The files and links of the note.
class AttachmentPanel : public PanelSection {
    Q_OBJECT

public:
    AttachmentPanel(AttachmentList& attachments, std::filesystem::path folder, Prompts& prompts, const Theme& theme,
                    QWidget* parent = nullptr);

    void AddDropped(const QStringList& paths);
    void Rebuild();
    QTreeWidget* List() const { return list_; }

signals:
    void Changed();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Runs a command of the list, then shows what has become of it.
    template <typename Command>
    void Run(Command command);
    void MakeButtons();
    void Open(int row);
    /// @param at in the list's viewport
    void OpenMenu(const QPoint& at);
    bool IsMissing(const CAttachment& record) const;

    AttachmentList& attachments_;
    std::filesystem::path folder_;
    Prompts& prompts_;
    const Theme& theme_;
    QTreeWidget* list_;
};

}  // namespace lore
