#pragma once

#include <QAction>
#include <QComboBox>
#include <QFontComboBox>
#include <QToolBar>
#include <map>
#include <optional>
#include <vector>

#include "rtf/formats.h"

namespace lore {

class RichTextEdit;
class Theme;

/// The commands of an editor as a bar: what doesn't fit goes into the menu at its end. Each command is an action that
/// the editor has too, so that its shortcut works there.
class FormatBar : public QToolBar {
    Q_OBJECT

public:
    FormatBar(RichTextEdit& edit, const Theme& theme, QWidget* parent = nullptr);

    /// A command by its name, such as "bold"; null for a name that there isn't.
    QAction* Command(const QString& name) const;
    /// All commands in their order, for menus and for a bar that finds commands.
    const std::vector<QAction*>& Commands() const { return commands_; }

private:
    struct Entry;
    void AddStyles();
    void AddFonts();
    void AddSizes();
    void AddCommands();
    void AddCommand(const Entry& entry);
    QMenu* MenuOf(const QString& name);
    QMenu* TableMenu();
    QComboBox* AddCombo(QComboBox* combo, const QString& name, int characters);
    void Run(const QString& name);
    void EditLink();
    void ChoosePicture();
    void ResizePicture();
    void SetColor(const QColor& color, std::optional<TextColor> CharFormat::*field);
    void ApplySize(const QString& text);
    void Follow();
    void FollowFonts(const CharFormat& characters);

    RichTextEdit& edit_;
    const Theme& theme_;
    QComboBox* styles_ = nullptr;
    QFontComboBox* fonts_ = nullptr;
    QComboBox* sizes_ = nullptr;
    std::map<QString, QAction*> byName_;
    std::vector<QAction*> commands_;
    std::vector<QAction*> inTable_;  ///< of use inside a table alone
};

}  // namespace lore
