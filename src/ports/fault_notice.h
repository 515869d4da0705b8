#pragma once

#include <string>

namespace lore {

/// A read or write that failed, or met a damaged file: what was being done, with which file, and the system's reason.
struct Fault {
    std::string what;  ///< such as "The note file could not be read"
    std::string path;
    std::string reason;  ///< such as "Permission denied"
    /// Nothing failed that the user would do again; something was done beside that they have to know. Such words
    /// outlive the window whose command met it.
    bool isNotice = false;

    bool IsOf(const std::string& words, const std::string& file) const { return what == words && path == file; }
};

/// Is told of every failed read and write. The flow that met the failure goes on.
class FaultNotice {
public:
    virtual ~FaultNotice() = default;
    virtual void Tell(const Fault& fault) = 0;
    /// What may have been told in these words of this file has been done by now.
    virtual void Mended(const std::string& what, const std::string& path) = 0;
};

/// Hands faults on, and notes before it does that there was one, unless it is a notice.
class HeardFaults : public FaultNotice {
public:
    explicit HeardFaults(FaultNotice& next) : next_(next), any_(own_) {}
    /// Notes it in a flag that outlives this.
    HeardFaults(FaultNotice& next, bool& any) : next_(next), any_(any) {}
    HeardFaults(const HeardFaults&) = delete;
    HeardFaults& operator=(const HeardFaults&) = delete;

    bool Any() const { return any_; }
    void Tell(const Fault& fault) override {
        any_ = any_ || !fault.isNotice;
        next_.Tell(fault);
    }
    void Mended(const std::string& what, const std::string& path) override { next_.Mended(what, path); }

private:
    FaultNotice& next_;
    bool own_ = false;
    bool& any_;
};

}  // namespace lore
