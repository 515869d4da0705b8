#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTextDocument>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "base/work_beside.h"

namespace lore {

class NoteCapture;
class NoteFormats;

/// A text of the editor as a record keeps it.
struct CapturedTexts {
    std::string rtf;
    std::string plainText;  ///< "\r\n" between paragraphs
};

/// Converts the text of the editor beside the typing: in slices of a few milliseconds while nothing else waits, only
/// paragraphs that changed, and writes it on another thread. A change between two slices starts the walk through the
/// text again; one that never rests for long enough is followed by a single long slice.
class CaptureBeside : public QObject {
    Q_OBJECT

public:
    using Callback = std::function<void(CapturedTexts)>;

    CaptureBeside(const NoteFormats& formats, QObject* parent);
    ~CaptureBeside() override;

    /// Converts `document` and hands over its state at the end of the conversion, on this thread. A call before that
    /// takes the place of the earlier one.
    void Start(QTextDocument& document, Callback callback);
    bool IsUnderWay() const { return static_cast<bool>(callback_); }
    /// Forgets the call that is under way, and hands back its callback, which isn't called.
    Callback Stop();
    /// For tests: the longest slice of the last conversion, in microseconds.
    qint64 LongestSlice() const { return longestSlice_; }

private:
    void Slice();
    void BeginWalk();
    void Write();

    const NoteFormats& formats_;
    QPointer<QTextDocument> document_;
    QTimer timer_;
    Callback callback_;
    std::unique_ptr<NoteCapture> walk_;
    int revision_ = 0;  ///< of the document, when the walk began
    QElapsedTimer sinceStart_;
    quint64 call_ = 0;
    qint64 longestSlice_ = 0;
    WorkBeside writing_;  // ends before the rest goes
};

}  // namespace lore
