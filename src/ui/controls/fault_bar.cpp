#include "ui/controls/fault_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "ui/controls/run_when_free.h"
#include "ui/look/announce.h"
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
        failed_ = nullptr;
    });
    connect(&theme_, &Theme::Changed, this, &FaultBar::Restyle);
    Restyle();
    hide();
}

void FaultBar::Add(const Fault& fault) {
    const bool isNew =
        std::erase_if(faults_, [&](const Numbered& one) { return one.fault.IsOf(fault.what, fault.path); }) == 0;
    faults_.push_back({fault, ++lastNumber_});
    Refresh();
    if (isNew)
        Announce(*this, text_->text());
    emit Changed();
}

void FaultBar::Remove(const std::string& what, const std::string& path) {
    if (std::erase_if(faults_, [&](const Numbered& one) { return one.fault.IsOf(what, path); }) == 0)
        return;
    Refresh();
    emit Changed();
}

void FaultBar::Forget(size_t last, const std::filesystem::path& folder) {
    const std::string inside = (folder / "").string();
    std::erase_if(
        faults_, [&](const Numbered& one) { return one.number <= last && (one.fault.path + "/").starts_with(inside); });
    Refresh();
}

void FaultBar::OfferTryAgain(bool offers) {
    offers_ = offers;
    ShowOffer();
}

void FaultBar::ShowOffer() {
    again_->setVisible(offers_ || failed_);
}

void FaultBar::Run(const std::function<bool()>& command) {
    failed_ = nullptr;
    const size_t before = lastNumber_;
    if (!command() && lastNumber_ != before && !faults_.empty())
        failed_ = command;
    ShowOffer();
}

std::function<bool()> FaultBar::TakeFailed() {
    std::function<bool()> command = std::exchange(failed_, nullptr);
    ShowOffer();
    return command;
}

void FaultBar::Refresh() {
    if (faults_.empty()) {
        failed_ = nullptr;
        return Clear();
    }
    // A notice doesn't take the place of a failure.
    const auto failed =
        std::find_if(faults_.rbegin(), faults_.rend(), [](const Numbered& one) { return !one.fault.isNotice; });
    const bool isLast = failed == faults_.rend() || failed == faults_.rbegin();
    const QString line = LineOf((isLast ? faults_.back() : *failed).fault);
    const QString several = isLast ? tr("%1 problems, the last one: %2") : tr("%1 problems, the worst one: %2");
    text_->setText(faults_.size() == 1 ? line : several.arg(faults_.size()).arg(line));
    ShowOffer();
    show();
}

void FaultBar::ShowDetails() {
    QStringList lines;
    for (const Numbered& one : faults_)
        lines << LineOf(one.fault);
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

}  // namespace lore
