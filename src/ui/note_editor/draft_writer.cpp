#include "ui/note_editor/draft_writer.h"

#include <QPointer>

namespace lore {

namespace {

constexpr int kDelayMilliseconds = 2500;

}  // namespace

DraftWriter::DraftWriter(DraftStore store, Collector collect, FaultNotice& faults, QObject* parent)
    : QObject(parent), store_(std::move(store)), collect_(std::move(collect)), faults_(faults) {
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
    writing_.Wait();
}

void DraftWriter::Collect() {
    // Another collection would take the place of the one before: where each takes long, none would come to its end.
    if (!underWay_.expired())
        return timer_.start();
    const Token token = std::make_shared<const bool>();
    underWay_ = token;
    collect_([guard = QPointer<DraftWriter>(this), token](Draft draft) {
        if (guard && !guard->stopped_)
            guard->Write(std::move(draft), token);
    });
}

void DraftWriter::Write(Draft draft, const Token& token) {
    writing_.Run([this, draft = std::move(draft), token] {
        const FileResult result = store_.WriteDraft(draft);
        const auto tell = [this, result, token] {
            if (!result.Ok() && !failureTold_)
                faults_.Tell({"The draft of the note could not be written; the text is safe once it is saved",
                              store_.Folder().string(), result.Reason(), true});
            failureTold_ = !result.Ok();
            emit Written(result.Ok());
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
}

}  // namespace lore
