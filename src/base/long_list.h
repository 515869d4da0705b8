#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <unordered_map>
#include <vector>

namespace lore {

/// An ordered list of 32-bit numbers, nearly always ids. Positions count from 0.
/// Membership is answered in constant time once a list has grown, so that filling a list of n ids costs n steps.
/// Contains makes its index as it goes: no two threads may ask the same list.
class LongList {
public:
    LongList() = default;
    LongList(std::initializer_list<int32_t> values) : values_(values) {}
    explicit LongList(std::vector<int32_t> values) : values_(std::move(values)) {}
    LongList(const LongList& other) : values_(other.values_) {}
    LongList& operator=(const LongList& other);
    LongList(LongList&&) noexcept = default;
    LongList& operator=(LongList&&) noexcept = default;
    ~LongList() = default;

    /// Appends a value; duplicates are allowed.
    void AddTail(int32_t value);
    bool Contains(int32_t value) const;
    /// Appends the value unless the list holds it. True if it was added.
    bool AddUnique(int32_t value);
    /// Removes occurrences of a value, true if any was removed. After a removal the scan goes on at position 1 of the
    /// shortened list, so that a value which has just become the first one stays: 5, 5, 3 without 5 is 5, 3.
    bool RemoveValue(int32_t value);
    /// Appends every value of the other list that this one doesn't hold yet.
    void Merge(const LongList& other);
    void Assign(const LongList& other) { *this = other; }
    void RemoveAll();

    size_t Count() const { return values_.size(); }
    bool IsEmpty() const { return values_.empty(); }
    int32_t operator[](size_t position) const { return values_[position]; }
    /// Overwrites the value at a position, which must be below Count().
    void SetAt(size_t position, int32_t value);
    const std::vector<int32_t>& Values() const { return values_; }
    auto begin() const { return values_.begin(); }
    auto end() const { return values_.end(); }
    bool operator==(const LongList& other) const { return values_ == other.values_; }

private:
    using Counts = std::unordered_map<int32_t, uint32_t>;
    const Counts& Index() const;
    void CountUp(int32_t value);
    void CountDown(int32_t value);

    std::vector<int32_t> values_;
    mutable uint8_t scans_ = 0;  // how often the list was searched without an index
    // How often each value stands in values_; made when a long list has been searched a few times.
    mutable std::unique_ptr<Counts> index_;
};

}  // namespace lore
