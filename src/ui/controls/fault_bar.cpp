#include "ui/controls/fault_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "ui/controls/run_when_free.h"
#include "ui/look/qt_text.h"
#include "ui/look/theme.h"

namespace lore {

namespace {

QString LineOf(const Fault& fault) {
    return QStringLiteral("%1: %2 (%3)")
        .arg(ToQString(fault.what), QString::fromStdString(fault.path), QString::fromStdString(fault.reason));
}

}  // namespace

FaultBar::FaultBar(const Theme& theme, QWidget* parent) : QFrame(parent), theme_(theme) {
    setObjectName("faultBar");
    setAutoFillBackground(true);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(kSpace * 3, kSpace * 2, kSpace * 3, kSpace * 2);
    text_ = new QLabel(this);
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    // No Alt keys: the bar comes up in windows that have given theirs away.
    details_ = new QPushButton(tr("Details"), this);
    again_ = new QPushButton(tr("Try again"), this);
    auto* const close = new QPushButton(tr("Hide"), this);
    layout->addWidget(text_, 1);
    layout->addWidget(details_);
    layout->addWidget(again_);
    layout->addWidget(close);
    connect(details_, &QPushButton::clicked, this, &FaultBar::ShowDetails);
    connect(again_, &QPushButton::clicked, this, UnlessAtWork([this] {
                Clear();
                emit TryAgainRequested();
            }));
    connect(close, &QPushButton::clicked, this, [this] {
        Clear();
        emit Dismissed();
    });
    connect(&theme_, &Theme::Changed, this, &FaultBar::Restyle);
    Restyle();
    hide();
}

void FaultBar::Add(const Fault& fault) {
    faults_.push_back(fault);
    Refresh();
    emit Added();
}

void FaultBar::OfferTryAgain(bool offers) {
    again_->setVisible(offers);
}

void FaultBar::Forget(size_t count, const std::filesystem::path& folder) {
    const std::string inside = (folder / "").string();
    const auto end = faults_.begin() + static_cast<std::ptrdiff_t>(std::min(count, faults_.size()));
    faults_.erase(std::remove_if(faults_.begin(), end,
                                 [&](const Fault& fault) { return (fault.path + "/").starts_with(inside); }),
                  end);
    if (faults_.empty())
        Clear();
    else
        Refresh();
}

void FaultBar::Refresh() {
    // A notice doesn't take the place of a failure.
    const auto failed =
        std::find_if(faults_.rbegin(), faults_.rend(), [](const Fault& fault) { return !fault.isNotice; });
    const bool isLast = failed == faults_.rend() || failed == faults_.rbegin();
    const QString line = LineOf(isLast ? faults_.back() : *failed);
    const QString several = isLast ? tr("%1 problems, the last one: %2") : tr("%1 problems, the gravest one: %2");
    text_->setText(faults_.size() == 1 ? line : several.arg(faults_.size()).arg(line));
    show();
}

void FaultBar::ShowDetails() {
    QStringList lines;
    for (const Fault& fault : faults_)
        lines << LineOf(fault);
    QMessageBox box(QMessageBox::Warning, tr("Details"),
                    tr("What could not be read or written. Nothing else is touched; what you typed is kept."),
                    QMessageBox::Ok, this);
    box.setDetailedText(lines.join('\n'));
    for (QAbstractButton* const button : box.buttons())
        if (box.buttonRole(button) == QMessageBox::ActionRole)
            button->click();  // the lines are unfolded
    box.exec();
}

void FaultBar::Clear() {
    faults_.clear();
    hide();
}

void FaultBar::Restyle() {
    QPalette colors = palette();
    colors.setColor(QPalette::Window, theme_.Color(ColorRole::Warning));
    colors.setColor(QPalette::WindowText, theme_.Color(ColorRole::WarningText));
    setPalette(colors);
}

void FaultLines::Tell(const Fault& fault) {
    text_ += (text_.empty() ? "" : "\n") + fault.what + ": " + fault.path + " (" + fault.reason + ")";
}

void BarFaults::Tell(const Fault& fault) {
    if (bar_)
        bar_->Add(fault);
    else
        early_.push_back(fault);
}

void BarFaults::SetBar(FaultBar* bar) {
    bar_ = bar;
    if (!bar_)
        return;
    for (const Fault& fault : early_)
        bar_->Add(fault);
    early_.clear();
}

}  // namespace lore
