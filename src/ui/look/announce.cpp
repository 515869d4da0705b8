#include "ui/look/announce.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QBasicTimer>
#include <QTimerEvent>
#include <QWidget>

namespace lore {
namespace {

constexpr int kStays = 3000;  // milliseconds, so that a reader can ask for the text

/// A widget without a size that bears the text. Screen readers read a notification when it comes up; what Qt has for
/// alerts doesn't get to them on this desktop.
class Notice : public QWidget {
public:
    explicit Notice(QWidget& about) : QWidget(&about) {
        setObjectName("notice");
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFixedSize(0, 0);
        hide();
    }

    void Say(const QString& text) {
        next_ = text;
        due_.start(0, this);
    }

protected:
    void timerEvent(QTimerEvent* event) override {
        hide();
        if (event->timerId() != due_.timerId())
            return gone_.stop();
        due_.stop();
        setAccessibleName(next_);
        show();
        gone_.start(kStays, this);
    }

private:
    QString next_;
    QBasicTimer due_, gone_;
};

QAccessibleInterface* MakeAccessible(const QString&, QObject* object) {
    auto* const notice = dynamic_cast<Notice*>(object);
    return notice ? new QAccessibleWidget(notice, QAccessible::Notification) : nullptr;
}

}  // namespace

void Announce(QWidget& about, const QString& text) {
    if (!QAccessible::isActive() || !about.isVisible() || text.isEmpty())
        return;
    QAccessible::installFactory(MakeAccessible);  // once; more often makes no difference
    auto* notice = static_cast<Notice*>(about.findChild<QWidget*>("notice", Qt::FindDirectChildrenOnly));
    if (!notice)
        notice = new Notice(about);
    notice->Say(text);
}

}  // namespace lore
