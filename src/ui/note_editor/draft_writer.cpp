#include "ui/note_editor/draft_writer.h"

#include <QPointer>

#include "notes/file_faults.h"

namespace lore {

DraftWriter::DraftWriter(DraftStore store, Collector collect, FaultNotice& faults, QObject* parent)
    : QObject(parent), store_(std::move(store)), collect_(std::move(collect)), faults_(faults) {
    thread_.setMaxThreadCount(1);
    timer_.setSingleShot(true);
    timer_.setInterval(kDelayMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &DraftWriter::Collect);
}

DraftWriter::~DraftWriter() {
    Stop();
}

void DraftWriter::Touch() {
    // The timer isn't put off by further changes: whoever types without a pause has a draft all the same.
    if (!stopped_ && !timer_.isActive())
        timer_.start();
}

void DraftWriter::Stop() {
    stopped_ = true;
    timer_.stop();
    thread_.waitForDone();
}

void DraftWriter::Collect() {
    collect_([guard = QPointer<DraftWriter>(this)](Draft draft) {
        if (guard && !guard->stopped_)
            guard->Write(std::move(draft));
    });
}

void DraftWriter::Write(Draft draft) {
    thread_.start([this, draft = std::move(draft)] {
        const FileResult result = store_.WriteDraft(draft);
        QMetaObject::invokeMethod(this, [this, result] {
            if (!result.Ok() && !failureTold_)
                TellFailedWrite(faults_,
                                "The draft of the note could not be written; the text is safe once it is saved",
                                store_.Folder(), result);
            failureTold_ = !result.Ok();
            emit Written(result.Ok());
        });
    });
}

}  // namespace lore
