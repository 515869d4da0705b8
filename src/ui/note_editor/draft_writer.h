#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "base/work_beside.h"
#include "edit/draft_store.h"
#include "ports/fault_notice.h"

namespace lore {

/// Writes drafts of the note in an editor, beside the typing: each at most 2.5 seconds plus the time of the
/// writing after the first change that it holds.
class DraftWriter : public QObject {
    Q_OBJECT

public:
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
    /// Lives while a draft is collected and written.
    using Token = std::shared_ptr<const bool>;

    void Collect();
    void Write(Draft draft, const Token& token);

    DraftStore store_;
    Collector collect_;
    FaultNotice& faults_;
    QTimer timer_{this};
    std::weak_ptr<const bool> underWay_;
    bool stopped_ = false;
    bool failureTold_ = false;
    WorkBeside writing_;  // ends before the rest goes
};

}  // namespace lore
