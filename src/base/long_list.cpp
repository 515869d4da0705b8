#include "base/long_list.h"

#include <algorithm>

namespace lore {

namespace {
/// Shorter lists are scanned faster than they are indexed.
constexpr size_t kIndexFrom = 48;
/// A list that is asked only now and then isn't worth an index.
constexpr uint8_t kScansBeforeIndex = 16;
}  // namespace

LongList& LongList::operator=(const LongList& other) {
    if (this != &other) {
        values_ = other.values_;
        index_.reset();
        scans_ = 0;
    }
    return *this;
}

const LongList::Counts& LongList::Index() const {
    if (!index_) {
        scans_ = 0;
        index_ = std::make_unique<Counts>();
        index_->reserve(values_.size() * 2);
        for (const int32_t value : values_)
            ++(*index_)[value];
    }
    return *index_;
}

void LongList::CountUp(int32_t value) {
    if (index_)
        ++(*index_)[value];
}

void LongList::CountDown(int32_t value) {
    if (!index_)
        return;
    const auto found = index_->find(value);
    if (--found->second == 0)
        index_->erase(found);
}

void LongList::AddTail(int32_t value) {
    values_.push_back(value);
    CountUp(value);
}

bool LongList::Contains(int32_t value) const {
    if (!index_ && (values_.size() < kIndexFrom || ++scans_ < kScansBeforeIndex))
        return std::find(values_.begin(), values_.end(), value) != values_.end();
    return Index().contains(value);
}

bool LongList::AddUnique(int32_t value) {
    if (Contains(value))
        return false;
    AddTail(value);
    return true;
}

bool LongList::RemoveValue(int32_t value) {
    // The removal walks the list anyway, so an index isn't worth making for it.
    if (index_ ? !index_->contains(value) : std::find(values_.begin(), values_.end(), value) == values_.end())
        return false;
    const size_t before = values_.size();
    const bool firstMatches = values_.front() == value;
    if (firstMatches)
        values_.erase(values_.begin());
    // The scan goes on at position 1 of what is left, so the new first element isn't looked at.
    const auto from = values_.begin() + (firstMatches && !values_.empty() ? 1 : 0);
    values_.erase(std::remove(from, values_.end(), value), values_.end());
    for (size_t removed = before - values_.size(); removed > 0; --removed)
        CountDown(value);
    return true;
}

void LongList::Merge(const LongList& other) {
    for (const int32_t value : other.values_)
        AddUnique(value);
}

void LongList::RemoveAll() {
    values_.clear();
    index_.reset();
}

void LongList::SetAt(size_t position, int32_t value) {
    CountDown(values_[position]);
    values_[position] = value;
    CountUp(value);
}

}  // namespace lore
