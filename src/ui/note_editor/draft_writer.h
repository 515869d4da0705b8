#pragma once

#include <QObject>
#include <QThreadPool>
#include <QTimer>
#include <functional>

#include "edit/draft_store.h"
#include "ports/fault_notice.h"

namespace lore {

/// Writes drafts of the note in an editor, beside the typing: each at most kDelayMilliseconds plus the time of the
/// writing behind the first change that it holds.
class DraftWriter : public QObject {
    Q_OBJECT

public:
    static constexpr int kDelayMilliseconds = 2500;
    /// Collects the note as it stands; may answer later, on the window's thread.
    using Collector = std::function<void(std::function<void(Draft)> whenReady)>;

    DraftWriter(DraftStore store, Collector collect, FaultNotice& faults, QObject* parent = nullptr);
    ~DraftWriter() override;

    /// Something changed.
    void Touch();
    /// No draft is written from here on; waits for the one that is being written.
    void Stop();
    const DraftStore& Store() const { return store_; }

signals:
    /// A draft stands on the disk, or could not be written.
    void Written(bool ok);

private:
    void Collect();
    void Write(Draft draft);

    DraftStore store_;
    Collector collect_;
    FaultNotice& faults_;
    QTimer timer_;
    QThreadPool thread_;
    bool stopped_ = false;
    bool failureTold_ = false;
};

}  // namespace lore
