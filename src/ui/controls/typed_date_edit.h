#pragma once

#include <QDateEdit>
#include <optional>

namespace lore {

/// A date that is typed as it is shown, or in any other usual way (see SplitTypedDay). A number alone is for the part
/// that is selected or has the caret; two or three parts are from the month on, wherever typing began. The date is
/// told of once it is complete. What is no date, or outside of the range, changes nothing, and Enter leaves it there to
/// be mended.
class TypedDateEdit : public QDateEdit {
public:
    explicit TypedDateEdit(QWidget* parent);

    QValidator::State validate(QString& text, int& position) const override;

protected:
    QDateTime dateTimeFromText(const QString& text) const override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::optional<QDate> Read(const QString& text) const;
    int FirstPart() const;
    size_t Parts() const { return static_cast<size_t>(3 - FirstPart()); }
    int FirstOf(const QStringList& parts) const;
    QDate Under(const QStringList& parts) const;
    bool IsUnread() const;
    void BeginTyping(bool goesOn);
    void ShowTyped();
    void EndTyping();

    std::optional<QString> typed_;
    QString shown_;  // the text with what was typed in it
    int start_ = 0;  // the part of a number alone
    int last_ = 0;   // the part that was typed last
};

/// True for a key that changes a text.
bool ChangesText(const QKeyEvent& key);
/// True for a key that is held down for the one that follows, or a lock.
bool IsModifier(const QKeyEvent& key);

}  // namespace lore
