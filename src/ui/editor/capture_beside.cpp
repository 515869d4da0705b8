#include "ui/editor/capture_beside.h"

#include <QCoreApplication>
#include <QTextBlock>
#include <QThreadPool>
#include <algorithm>
#include <memory>

#include "rtf/rtf.h"
#include "ui/editor/document_capture.h"

namespace lore {

CaptureBeside::CaptureBeside(const NoteFormats& formats, QObject* parent) : QObject(parent), formats_(formats) {
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &CaptureBeside::Slice);
}

void CaptureBeside::Start(QTextDocument& document, Callback callback) {
    document_ = &document;
    callback_ = std::move(callback);
    nextBlock_ = 0;
    longestSlice_ = 0;
    ++call_;
    timer_.start();
}

void CaptureBeside::Stop() {
    ++call_;
    timer_.stop();
    callback_ = nullptr;
}

void CaptureBeside::Slice() {
    if (!document_)
        return Stop();
    QElapsedTimer clock;
    clock.start();
    QTextBlock block = document_->findBlockByNumber(nextBlock_);
    // The clock is read once in a few paragraphs: most of them are converted already.
    for (int count = 0; block.isValid(); block = block.next(), ++count) {
        if (count % 8 == 7 && clock.elapsed() >= kSliceMilliseconds - 1)
            break;
        CaptureBlock(block, formats_);
    }
    nextBlock_ = block.isValid() ? block.blockNumber() : -1;
    if (!block.isValid() && clock.elapsed() < kSliceMilliseconds / 2)
        Write();
    else if (!block.isValid())
        nextBlock_ = document_->blockCount();  // the last step gets a slice of its own
    longestSlice_ = std::max(longestSlice_, clock.nsecsElapsed() / 1000);
}

void CaptureBeside::Write() {
    timer_.stop();
    auto note = std::make_shared<CapturedNote>(CaptureNote(*document_, formats_));
    const QPointer<CaptureBeside> self(this);
    QThreadPool::globalInstance()->start([note, self, call = call_] {
        auto texts = std::make_shared<CapturedTexts>();
        const Document document = Assemble(*note);
        texts->rtf = WriteRtf(document);
        texts->plainText = WithCrLf(document.text);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [texts, self, call] {
                if (self && self->call_ == call && self->callback_)
                    std::exchange(self->callback_, nullptr)(std::move(*texts));
            },
            Qt::QueuedConnection);
    });
}

}  // namespace lore
