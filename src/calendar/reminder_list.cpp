#include "calendar/reminder_list.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "calendar/date_arithmetic.h"

namespace lore {

namespace {

template <typename List>
auto FindById(List& list, std::string_view reminderId) {
    return std::find_if(list.begin(), list.end(), [&](const CTmReminder& r) { return r.ReminderId == reminderId; });
}

template <typename Test>
ReminderList Filtered(const ReminderList& list, Test test) {
    ReminderList result;
    std::copy_if(list.begin(), list.end(), std::back_inserter(result), test);
    return result;
}

}  // namespace

ReminderList RemindersOfEvent(const ReminderList& list, std::string_view eventId) {
    return Filtered(list, [&](const CTmReminder& r) { return r.EventId == eventId; });
}

ReminderList RemindersOnDate(const ReminderList& list, const DateTime& date) {
    if (!date.IsValid())
        return {};
    return Filtered(list, [&](const CTmReminder& r) { return IsSameDay(r.SendTime, date); });
}

bool HasServerReminder(const ReminderList& list) {
    return std::any_of(list.begin(), list.end(), IsServerReminder);
}

void ClearServerDone(ReminderList& list) {
    for (CTmReminder& reminder : list)
        reminder.ServerDone = false;
}

void ClearServerIds(ReminderList& list) {
    for (CTmReminder& reminder : list)
        reminder.ServerId = -1;
}

const CTmReminder* FindReminder(const ReminderList& list, std::string_view reminderId) {
    const auto found = FindById(list, reminderId);
    return found == list.end() ? nullptr : &*found;
}

bool ReplaceReminder(ReminderList& list, const CTmReminder& reminder) {
    const auto found = FindById(list, reminder.ReminderId);
    if (found == list.end())
        return false;
    *found = reminder;
    return true;
}

bool RemoveReminder(ReminderList& list, std::string_view reminderId) {
    const auto found = FindById(list, reminderId);
    if (found == list.end())
        return false;
    list.erase(found);
    return true;
}

void RemoveReminders(ReminderList& list, const ReminderList& removed) {
    std::unordered_map<std::string_view, size_t> left;
    for (const CTmReminder& reminder : removed)
        ++left[reminder.ReminderId];
    std::erase_if(list, [&](const CTmReminder& reminder) {
        const auto found = left.find(reminder.ReminderId);
        return found != left.end() && found->second > 0 && found->second-- > 0;
    });
}

void AddReminders(ReminderList& list, const ReminderList& added) {
    list.insert(list.end(), added.begin(), added.end());
}

bool RemindersDiffer(const ReminderList& a, const ReminderList& b) {
    if (a.size() != b.size())
        return true;
    std::unordered_map<std::string_view, const CTmReminder*> partners;
    for (const CTmReminder& reminder : b)
        partners.emplace(reminder.ReminderId, &reminder);
    return std::any_of(a.begin(), a.end(), [&](const CTmReminder& reminder) {
        const auto partner = partners.find(reminder.ReminderId);
        return partner == partners.end() || ReminderDiffers(reminder, *partner->second);
    });
}

bool HasSameReminder(const ReminderList& list, const CTmReminder& reminder) {
    return std::any_of(list.begin(), list.end(),
                       [&](const CTmReminder& other) { return SameReminder(other, reminder); });
}

}  // namespace lore
