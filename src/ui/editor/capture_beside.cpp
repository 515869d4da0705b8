#include "ui/editor/capture_beside.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "rtf/rtf.h"
#include "ui/editor/document_capture.h"

namespace lore {
namespace {

constexpr int kStep = 8;
constexpr int kSliceMilliseconds = 4;
// How long the walk gives way to changes of the text.
constexpr int kPatienceMilliseconds = 2000;

}  // namespace

CaptureBeside::CaptureBeside(const NoteFormats& formats, QObject* parent) : QObject(parent), formats_(formats) {
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &CaptureBeside::Slice);
}

CaptureBeside::~CaptureBeside() = default;

void CaptureBeside::Start(QTextDocument& document, Callback callback) {
    document_ = &document;
    callback_ = std::move(callback);
    longestSlice_ = 0;
    ++call_;
    sinceStart_.start();
    BeginWalk();
    timer_.start();
}

CaptureBeside::Callback CaptureBeside::Stop() {
    ++call_;
    timer_.stop();
    walk_.reset();
    return std::exchange(callback_, nullptr);
}

void CaptureBeside::BeginWalk() {
    walk_ = std::make_unique<NoteCapture>(*document_, formats_);
    revision_ = document_->revision();
}

void CaptureBeside::Slice() {
    if (!document_) {
        Stop();
        return;
    }
    QElapsedTimer clock;
    clock.start();
    if (document_->revision() != revision_)
        BeginWalk();
    const bool isPatient = sinceStart_.elapsed() < kPatienceMilliseconds;
    // The clock is read once in a few paragraphs: most of them are converted already.
    bool isMore = true;
    while (isMore && !(isPatient && clock.elapsed() >= kSliceMilliseconds - 1))
        isMore = walk_->Step(kStep);
    if (!isMore)
        Write();
    longestSlice_ = std::max(longestSlice_, clock.nsecsElapsed() / 1000);
}

void CaptureBeside::Write() {
    timer_.stop();
    auto note = std::make_shared<CapturedNote>(walk_->Take());
    walk_.reset();
    writing_.Run([this, note, call = call_] {
        auto texts = std::make_shared<CapturedTexts>();
        const Document document = Assemble(*note);
        texts->rtf = WriteRtf(document);
        texts->plainText = WithCrLf(document.text);
        QMetaObject::invokeMethod(
            this,
            [this, texts, call] {
                if (call_ == call && callback_)
                    std::exchange(callback_, nullptr)(std::move(*texts));
            },
            Qt::QueuedConnection);
    });
}

}  // namespace lore
