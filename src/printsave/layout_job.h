#pragma once

#include <QObject>
#include <QPageLayout>
#include <functional>
#include <memory>

#include "platform/pdf/paged_text.h"
#include "printsave/print_content.h"

class QThread;

namespace lore {

/// All of a content, and its pages.
struct LaidOutContent {
    std::shared_ptr<const PrintContent> content;
    std::unique_ptr<PagedText> text;
};

/// Makes a content and lays it out on a thread of its own.
class LayoutJob : public QObject {
    Q_OBJECT

public:
    LayoutJob(std::function<std::shared_ptr<const PrintContent>()> make, const QPageLayout& paper, QObject* parent);
    /// Waits for its thread.
    ~LayoutJob() override;

    /// What it has made; waits for it. Once only.
    LaidOutContent Take();

signals:
    void Done();

private:
    LaidOutContent made_;
    std::unique_ptr<QThread> thread_;
};

}  // namespace lore
