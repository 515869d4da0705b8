#include "calendar/reminder_editor.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "base/text.h"
#include "calendar/date_arithmetic.h"
#include "calendar/event_text.h"
#include "calendar/reminder_address.h"
#include "calendar/server_reminders.h"
#include "calendar/ten_minutes.h"

namespace lore {

namespace {

constexpr int64_t kLockedAhead = 21 * kMinute;
constexpr size_t kLongMessage = 495, kShortMessage = 150;

constexpr PriorTime kOtherTime = {-1, "Other Time-->"};
constexpr std::array kPriorTimes = std::to_array<PriorTime>(
    {{0, "0 Minutes"},   {10, "10 Minutes"}, {20, "20 Minutes"}, {30, "30 Minutes"}, {40, "40 Minutes"},
     {50, "50 Minutes"}, {60, "1 Hour"},     {120, "2 Hours"},   {180, "3 Hours"},   {240, "4 Hours"},
     {300, "5 Hours"},   {360, "6 Hours"},   {420, "7 Hours"},   {480, "8 Hours"},   {540, "9 Hours"},
     {600, "10 Hours"},  {660, "11 Hours"},  {720, "12 Hours"},  {1080, "18 Hours"}, {1440, "1 Day"},
     {2880, "2 Days"},   {4320, "3 Days"},   {5760, "4 Days"},   {7200, "5 Days"},   {10080, "1 Week"},
     {20160, "2 Weeks"}});

constexpr ReminderLabels kPopup = {"Popup will be displayed on:", "Message Text (Max 500 Chars)", "Display Popup:", "",
                                   ""};
constexpr ReminderLabels kEmail = {"Email will be sent on:", "Message Text (Max 500 Chars)",
                                   "Send Email:", "Email Address:", "eg: name@example.com"};
constexpr ReminderLabels kTextMessage = {"Text Msg will be sent on:", "Message Text (Max 150 Chars)",
                                         "Send Text Msg:", "Mobile Phone #:", "eg: 123-555-4567"};

DateTime WithoutSeconds(const DateTime& time) {
    return time.PlusSeconds(-time.Second());
}

}  // namespace

ReminderEditor::ReminderEditor(const CalendarWorld& world, CTmReminder reminder, Purpose purpose, bool isNew)
    : world_(world), reminder_(std::move(reminder)), purpose_(purpose), isNew_(isNew) {
    const DateTime now = world.clock.Now();
    earliest_ = RoundedToTenMinutes(now.PlusSeconds(kHour));
    isLocked_ = !isNew && !IsLater(reminder_.SendTime, now.PlusSeconds(kLockedAhead));
    email_ = isNew ? world.settings.Text(Option::Email) : reminder_.EmailAddress;
    phone_ = isNew ? world.settings.Text(Option::Phone) : reminder_.PhoneNumber;
    provider_ = isNew ? world.settings.Int(Option::Service) : reminder_.ProviderIndex;
    if (*ReminderTypeName(reminder_.Type) == '\0')
        reminder_.Type = static_cast<int32_t>(ReminderType::Popup);
    if (!isLocked_)
        FillPriorTimes();
    if (isNew)
        reminder_.SendTime = WithinBounds(reminder_.SendTime);
    opened_ = Current();
}

CTmReminder ReminderEditor::Current() const {
    CTmReminder reminder = reminder_;
    reminder.EmailAddress = email_;
    reminder.PhoneNumber = phone_;
    reminder.ProviderIndex = provider_;
    return reminder;
}

bool ReminderEditor::HasChanged() const {
    const auto address = [](const CTmReminder& r) { return std::tie(r.EmailAddress, r.PhoneNumber, r.ProviderIndex); };
    const CTmReminder now = Current();
    return ReminderDiffers(now, opened_) || address(now) != address(opened_);
}

void ReminderEditor::FillPriorTimes() {
    if (purpose_ != Purpose::Event)
        return;
    const DateTime limit = world_.clock.Now().PlusSeconds(kHour);
    const auto qualifies = [&](const PriorTime& prior) {
        return IsLater(reminder_.EventStart.PlusSeconds(-prior.minutes * kMinute), limit);
    };
    if (!qualifies(kPriorTimes.front()))
        return;
    priorTimes_.push_back(kOtherTime);
    std::copy_if(kPriorTimes.begin(), kPriorTimes.end(), std::back_inserter(priorTimes_), qualifies);
    const auto chosen = std::find_if(priorTimes_.begin(), priorTimes_.end(),
                                     [&](const PriorTime& prior) { return prior.minutes == reminder_.PriorMinutes; });
    chosenPrior_ = chosen == priorTimes_.end() ? 0 : static_cast<size_t>(chosen - priorTimes_.begin());
}

void ReminderEditor::SetType(ReminderType type) {
    reminder_.Type = static_cast<int32_t>(type);
    SetMessage(std::string(reminder_.Message));
}

const ReminderLabels& ReminderEditor::Labels() const {
    switch (Type()) {
        case ReminderType::Email:
            return kEmail;
        case ReminderType::TextMessage:
            return kTextMessage;
        case ReminderType::Popup:
            break;
    }
    return kPopup;
}

size_t ReminderEditor::MessageLimit() const {
    return Type() == ReminderType::TextMessage ? kShortMessage : kLongMessage;
}

void ReminderEditor::SetMessage(std::string_view message) {
    reminder_.Message = message.substr(0, ByteOfCharacter(message, MessageLimit()));
}

std::string ReminderEditor::Address() const {
    switch (Type()) {
        case ReminderType::Email:
            return email_;
        case ReminderType::TextMessage:
            return phone_;
        case ReminderType::Popup:
            break;
    }
    return "";
}

void ReminderEditor::SetAddress(const std::string& address) {
    if (Type() == ReminderType::Email)
        email_ = address;
    else if (Type() == ReminderType::TextMessage)
        phone_ = address;
}

void ReminderEditor::ChoosePrior(size_t row) {
    if (row >= priorTimes_.size())
        return;
    chosenPrior_ = row;
    if (const int32_t minutes = priorTimes_[row].minutes; minutes >= 0)
        reminder_.SendTime = reminder_.EventStart.PlusSeconds(-minutes * kMinute);
}

const char* ReminderEditor::DayLabel() const {
    switch (purpose_) {
        case Purpose::Day:
            return "Selected Day:";
        case Purpose::Calendar:
            return "Min Send Time:";
        case Purpose::Event:
            break;
    }
    return "";
}

DateTime ReminderEditor::WithinBounds(const DateTime& time) const {
    if (IsLater(time.Midnight(), LatestSendDay()))
        return AtTimeOf(LatestSendDay(), time);
    return IsLater(earliest_, time) ? earliest_ : time;
}

bool ReminderEditor::ChangeSendTime(const DateTime& time) {
    if (!time.IsValid())
        return true;
    const DateTime stepped = SteppedTime(reminder_.SendTime, time);
    reminder_.SendTime = WithinBounds(stepped);
    chosenPrior_ = 0;
    return !IsLater(EarliestSendTime(), stepped);
}

std::string ReminderEditor::SendTimeText() const {
    return reminder_.SendTime.Format("%A,  %b. %d %Y") + "  at  " + ClockTime(reminder_.SendTime);
}

std::string ReminderEditor::EventStartText() const {
    if (purpose_ != Purpose::Event)
        return "";
    return reminder_.EventStart.Format("%m/%d/%y") + "    " + ClockTime(reminder_.EventStart);
}

bool ReminderEditor::TakeAddress() {
    const AddressFault* const fault = ValidateAddress(reminder_, Address(), provider_, world_.setup);
    if (fault)
        world_.prompts.Message(fault->text, fault->title, PromptIcon::Warning);
    return !fault;
}

void ReminderEditor::SendTestMessage() {
    if (!TakeAddress() || !MayUseServer(world_))
        return;
    world_.ShowProgress("Attempting to connect to server and send message....");
    const bool connected = world_.server.TestServerConnection() > 0;
    if (connected)
        world_.server.SendTestTxtMsg(reminder_.SendTo);
    world_.progress.Hide();
    if (connected)
        world_.prompts.Message(
            "Test message was sent!  It may take a few minutes to arrive, depending on provider traffic.",
            "Message Sent!", PromptIcon::Information);
    else
        world_.prompts.Message("Message Failed.  Internet connection could not be established.", "Message Failed",
                               PromptIcon::Warning);
}

bool ReminderEditor::Save() {
    if (isLocked_ || !TakeAddress())
        return false;
    reminder_.PriorMinutes = priorTimes_.empty() ? kOtherTime.minutes : priorTimes_[chosenPrior_].minutes;
    reminder_.SendTime = reminder_.ServerSendTime = WithoutSeconds(reminder_.SendTime);
    if (Type() == ReminderType::Popup)
        reminder_.ServerId = -1;
    RememberAddress();
    return true;
}

void ReminderEditor::RememberAddress() const {
    if (Type() == ReminderType::Popup)
        return;
    if (Type() == ReminderType::Email) {
        world_.settings.Set(Option::Email, email_);
    } else {
        world_.settings.Set(Option::Phone, phone_);
        world_.settings.Set(Option::Service, provider_);
    }
    world_.storeSettings();
}

}  // namespace lore
