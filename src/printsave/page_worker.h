#pragma once

#include <QImage>
#include <QObject>
#include <QPageLayout>
#include <QThread>
#include <atomic>
#include <functional>
#include <memory>

#include "platform/pdf/paged_text.h"
#include "printsave/print_content.h"

namespace lore {

/// A page as it looks on paper; at scale 1 a pixel of the paper is one of the picture.
QImage PictureOfPage(const PagedText& text, int page, double scale);

/// Makes contents, lays them out and draws their pages on a thread of its own, if the system gives one. The fonts of a
/// layout belong to the thread that made it: nothing but that thread ever touches the pages.
class PageWorker : public QObject {
    Q_OBJECT

public:
    using MakeContent = std::function<std::shared_ptr<const PrintContent>()>;

    explicit PageWorker(QObject* parent);
    /// Waits for what is being done.
    ~PageWorker() override;

    /// Makes a content and lays it out; LaidOut tells. What was asked for before is of no use any more.
    void LayOut(MakeContent make, const QPageLayout& paper);
    bool IsDone() const { return done_ == asked_; }
    /// Waits until that is done. LaidOut has been told then.
    void Finish();
    /// Of what is laid out.
    const std::shared_ptr<const PrintContent>& Content() const { return content_; }
    int PageCount() const { return pageCount_; }

    /// Draws a page of it; Drawn tells, with no picture if pages far from this one have been asked for meanwhile.
    void Draw(int page, double scale);
    /// Runs work with the pages, and waits for its end. Something must be laid out.
    void Run(const std::function<void(const PagedText&)>& work);

signals:
    void LaidOut();
    void Drawn(int page, double scale, const QImage& picture);

private:
    void Post(const std::function<void()>& task, Qt::ConnectionType type = Qt::QueuedConnection);
    void MakeAndLayOut(int number, const MakeContent& make, const QPageLayout& paper);
    /// Of the layout with this number, on either thread; another one may be asked for at any time.
    bool IsWanted(int number) const { return number == asked_; }
    void Take(int number, std::shared_ptr<const PrintContent> content, int pageCount);

    QThread thread_;
    QObject* const desk_;              // lives on the thread that works
    std::unique_ptr<PagedText> text_;  // of that thread
    std::atomic<int> asked_ = 0;       // number of the layout that is wanted
    std::atomic<int> lastAsked_ = 0;   // page
    int done_ = 0;
    int pageCount_ = 0;
    std::shared_ptr<const PrintContent> content_;
};

}  // namespace lore
