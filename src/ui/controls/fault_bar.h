#pragma once

#include <QFrame>
#include <filesystem>
#include <string>
#include <vector>

#include "ports/fault_notice.h"

class QLabel;
class QPushButton;

namespace lore {

class Theme;

/// The quiet bar above the board that tells of reads and writes that failed. Hidden while there is nothing to tell.
class FaultBar : public QFrame {
    Q_OBJECT

public:
    explicit FaultBar(const Theme& theme, QWidget* parent = nullptr);
    void Add(const Fault& fault);
    /// How many faults it tells of.
    size_t Count() const { return faults_.size(); }
    /// Takes out those of the first `count` whose file lies in a folder.
    void Forget(size_t count, const std::filesystem::path& folder);
    /// Whether the bar has the button "Try again"; at first it has.
    void OfferTryAgain(bool offers);

signals:
    void Added();
    void TryAgainRequested();
    /// The user has seen enough of what was told.
    void Dismissed();

private:
    void Refresh();
    void ShowDetails();
    void Clear();
    void Restyle();

    const Theme& theme_;
    std::vector<Fault> faults_;
    QLabel* text_;
    QPushButton* details_;
    QPushButton* again_;
};

/// Keeps faults as lines of a text, for a message of their own.
class FaultLines : public FaultNotice {
public:
    void Tell(const Fault& fault) override;
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

/// Hands faults on to a bar, and keeps those that come before there is one.
class BarFaults : public FaultNotice {
public:
    void Tell(const Fault& fault) override;
    void SetBar(FaultBar* bar);

private:
    FaultBar* bar_ = nullptr;
    std::vector<Fault> early_;
};

}  // namespace lore
