#include "ui/board_window.h"

#include "ui/board_accessible.h"

namespace lore {

void BoardWindowTest::initTestCase() {
    InstallBoardAccessibility();
}

QPoint BoardWindowTest::Middle(int row) const {
    return view_->CardRect(row).intersected(view_->viewport()->rect()).center();
}

QPoint BoardWindowTest::Spot(int row) const {
    return view_->CardRect(row).topLeft() + QPoint(8, 14);
}

void BoardWindowTest::init() {
    theme_ = std::make_unique<Theme>(*qApp, Appearance::Light);
    board_ = std::make_unique<MemoryBoard>();
    view_ = std::make_unique<BoardView>(*board_, *theme_);
}

void BoardWindowTest::cleanup() {
    view_.reset();
    board_.reset();
    theme_.reset();
}

void BoardWindowTest::Show(int width, int height) {
    view_->resize(width, height);
    view_->Rebuild();
    view_->show();
    QVERIFY(QTest::qWaitForWindowExposed(view_.get()));
}

void BoardWindowTest::Wheel(int delta) {
    const QPointF at(400, 200);
    QWheelEvent event(at, view_->viewport()->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view_->viewport(), &event);
}

}  // namespace lore
