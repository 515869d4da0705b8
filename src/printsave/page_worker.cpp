#include "printsave/page_worker.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <cstdlib>

namespace lore {

namespace {

/// Pages further from the one that was asked for last aren't in sight any more.
constexpr int kFarAway = 60;

}  // namespace

QImage PictureOfPage(const PagedText& text, int page, double scale) {
    QImage picture((text.PaperSize() * scale).toSize().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(scale, scale);
    text.DrawPage(painter, page, PagedText::kPixelsPerInch);
    return picture;
}

PageWorker::PageWorker(QObject* parent) : QObject(parent), desk_(new QObject) {
    thread_.start();
    if (thread_.isRunning()) {
        desk_->moveToThread(&thread_);
        connect(&thread_, &QThread::finished, desk_, &QObject::deleteLater);
    } else {
        desk_->setParent(this);  // a system that gives no thread: that of the window does the work
    }
}

PageWorker::~PageWorker() {
    ++asked_;
    Post([this] { text_.reset(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void PageWorker::Post(const std::function<void()>& task, Qt::ConnectionType type) {
    if (desk_->thread() == thread())
        return task();
    QMetaObject::invokeMethod(desk_, task, type);
}

void PageWorker::LayOut(MakeContent make, const QPageLayout& paper) {
    const int number = ++asked_;
    Post([this, number, make = std::move(make), paper] { MakeAndLayOut(number, make, paper); });
}

void PageWorker::MakeAndLayOut(int number, const MakeContent& make, const QPageLayout& paper) {
    if (!IsWanted(number))
        return;
    std::shared_ptr<const PrintContent> content = make();
    // cppcheck-suppress identicalConditionAfterEarlyExit; the window may want another layout by now
    if (!IsWanted(number))
        return;
    text_ = std::make_unique<PagedText>(QString::fromStdString(content->Html()), paper);
    QMetaObject::invokeMethod(
        this,
        [this, number, content = std::move(content), count = text_->PageCount()] { Take(number, content, count); },
        Qt::QueuedConnection);
}

void PageWorker::Take(int number, std::shared_ptr<const PrintContent> content, int pageCount) {
    if (!IsWanted(number))
        return;
    done_ = number;
    content_ = std::move(content);
    pageCount_ = pageCount;
    emit LaidOut();
}

void PageWorker::Finish() {
    if (IsDone())
        return;
    Post([] {}, Qt::BlockingQueuedConnection);
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void PageWorker::Draw(int page, double scale) {
    lastAsked_ = page;
    const int number = asked_;
    Post([this, number, page, scale] {
        if (!IsWanted(number))
            return;
        const bool isFar = std::abs(page - lastAsked_) > kFarAway;
        const QImage picture = isFar || page >= text_->PageCount() ? QImage() : PictureOfPage(*text_, page, scale);
        // By the time that it comes, other pages may be shown.
        const auto tell = [this, number, page, scale, picture] {
            if (IsWanted(number))
                emit Drawn(page, scale, picture);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
}

void PageWorker::Run(const std::function<void(const PagedText&)>& work) {
    Post([&] { work(*text_); }, Qt::BlockingQueuedConnection);
}

}  // namespace lore
