#pragma once

#include <QObject>
#include <cstdint>

#include "notebooks/notebook_trash.h"

class QString;
class QWidget;

namespace lore {

class CLorebinderApp;
class FaultRetry;
class NoteActions;
class Theme;

/// What changes the open NoteBook as a whole or reaches another one: to switch, to manage them, to import, to copy a
/// note.
class NoteBookActions : public QObject {
    Q_OBJECT

public:
    /// All outlive the actions. `window` is what dialogs open above.
    NoteBookActions(CLorebinderApp& app, Theme& theme, NoteActions& notes, FaultRetry& retry, QWidget& window);

    /// By the position in NoteBookChoices. Nothing for the open one.
    void Switch(int index);
    void Manage();
    void Import();
    void ImportFile(const QString& path);
    /// `target` is a position in CopyTargets.
    void CopyNote(int32_t noteId, int target);

signals:
    /// Another NoteBook is open, or the open one has been read anew.
    void Opened();
    /// The list of NoteBooks may be another.
    void ListChanged();

private:
    CLorebinderApp& app_;
    Theme& theme_;
    NoteActions& notes_;
    FaultRetry& retry_;
    QWidget& window_;
    NoteBookTrash trash_;
};

}  // namespace lore
