#include "printsave/layout_job.h"

#include <QThread>

namespace lore {

LayoutJob::LayoutJob(std::function<std::shared_ptr<const PrintContent>()> make, const QPageLayout& paper,
                     QObject* parent)
    : QObject(parent) {
    QThread* const home = thread();
    thread_.reset(QThread::create([this, make = std::move(make), paper, home] {
        made_.content = make();
        made_.text = std::make_unique<PagedText>(QString::fromStdString(made_.content->Html()), paper);
        made_.text->MoveToThread(*home);
    }));
    connect(thread_.get(), &QThread::finished, this, &LayoutJob::Done);
    thread_->start();
}

LayoutJob::~LayoutJob() {
    thread_->wait();
}

LaidOutContent LayoutJob::Take() {
    thread_->wait();
    return std::move(made_);
}

}  // namespace lore
