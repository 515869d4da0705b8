#pragma once

#include <QFrame>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "ports/fault_notice.h"

class QLabel;
class QPushButton;

namespace lore {

class Theme;

/// The quiet bar above the content of a window that tells of reads and writes that failed. Hidden while there is
/// nothing to tell.
class FaultBar : public QFrame {
    Q_OBJECT

public:
    explicit FaultBar(const Theme& theme, QWidget* parent = nullptr);
    /// Takes the place of what was told in the same words of the same file.
    void Add(const Fault& fault);
    /// Takes out what was told in these words of this file.
    void Remove(const std::string& what, const std::string& path);
    /// How many faults it tells of.
    size_t Count() const { return faults_.size(); }
    /// The number of the last fault that was added; they are counted from 1.
    size_t LastNumber() const { return lastNumber_; }
    /// Takes out those up to a number whose file lies in a folder.
    void Forget(size_t last, const std::filesystem::path& folder);
    /// Whether the bar has the button "Try again" even where no command can be run anew; at first it has.
    void OfferTryAgain(bool offers);

    /// Runs a command that says whether it came to its end. Where it failed, and that was told here, it can be tried
    /// again, until another one runs or the bar is empty.
    void Run(const std::function<bool()>& command);
    /// The command that can be tried again, which it then no longer is here; may be empty.
    std::function<bool()> TakeFailed();

    const Theme& Look() const { return theme_; }

signals:
    /// A fault was added, or taken out because it was mended.
    void Changed();
    void TryAgainRequested();

private:
    struct Numbered {
        Fault fault;
        size_t number;
    };
    void Refresh();
    void ShowOffer();
    void ShowDetails();
    void Clear();
    void Restyle();

    const Theme& theme_;
    std::vector<Numbered> faults_;
    size_t lastNumber_ = 0;
    std::function<bool()> failed_;
    bool offers_ = true;
    QLabel* text_;
    QPushButton* details_;
    QPushButton* again_;
};

/// Keeps faults as lines of a text, for a message of their own.
class FaultLines : public FaultNotice {
public:
    void Tell(const Fault& fault) override;
    void Mended(const std::string& /*what*/, const std::string& /*path*/) override {}
    const std::string& Text() const { return text_; }

private:
    std::string text_;
};

}  // namespace lore
