#include "calendar/reminder_address.h"

#include "base/text.h"

namespace lore {

namespace {

// clang-format off
constexpr std::array<Provider, kProviders> kTable = {{
    {"7-11 Speakout", "", 9},
    {"Alaska Comm Systems", "", 1},
    {"Alltel Wireless", "", 2},
    {"AT&T Wireless", "", 3},
    {"AT&T Mobility", "", 3},
    {"AT&T Enterprise Paging", "", 5},
    {"Bell Mobility & Solo Mobile", "", 6},
    {"Boost Mobile", "", 7},
    {"Cellular One", "", 8},
    {"Cingular", "", 9},
    {"Centennial Wireless", "", 10},
    {"Comcel", "", 11},
    {"Cricket", "", 12},
    {"CTI", "", 13},
    {"Emtel", "", 14},
    {"Fido", "", 15},
    {"General Communications", "", 16},
    {"Globalstar", "", 17},
    {"Helio", "", 18},
    {"Illinois Valley Cellular", "", 19},
    {"Iridium (satellite)", "", 20},
    {"Meteor", "", 21},
    {"Mero Mobile", "977", 22},
    {"MetroPCS", "", 23},
    {"Movicom", "", 24},
    {"Mobitel", "", 25},
    {"Movistar", "", 26},
    {"MTN", "", 27},
    {"MTS", "", 28},
    {"Nextel", "", 29},
    {"Personal", "11", 30},
    {"Plus GSM", "+48", 31},
    {"President's Choice", "", 6},
    {"Qwest", "", 33},
    {"Rogers", "", 34},
    {"Sasktel", "", 35},
    {"Sprint (PCS)", "", 36},
    {"Sprint (Nextel)", "", 29},
    {"Suncom", "1", 38},
    {"T-Mobile", "", 39},
    {"Telus Mobility", "", 40},
    {"Thumb Cellular", "", 41},
    {"Tigo", "", 42},
    {"Unicel", "", 43},
    {"US Cellular", "", 44},
    {"Verizon", "", 45},
    {"Virgin Mobile (Canada)", "", 46},
    {"Virgin Mobile (USA)", "", 47},
    {"Vodacom", "", 48},
    {"YCC", "", 49},
}};
// clang-format on

constexpr AddressFault kBadEmail = {"Invalid Email Address", "Invalid Email"};
constexpr AddressFault kBadNumber = {"Invalid Phone Number.  Number must be at least 10 digits.", "Invalid Number"};
constexpr AddressFault kBadProvider = {"Please choose a service provider.", "Invalid Provider"};
constexpr AddressFault kNoGateway = {
    "No gateway for this service provider is set up, so no text message can reach it.\n\n"
    "Give its domain in the settings file, section \"Reminders\", or choose another kind of reminder.",
    "No Gateway"};

constexpr char kNoPhoneCharacters[] = "qwertyuioplkjhgfdsazxcvbnm,.;[]=-!@#$%^&*()_+QWERTYUIOP{}|ASDFGHJKL:ZXCVBNM<>?";
constexpr size_t kShortestNumber = 10, kShortestEmail = 6;

bool IsEmail(const std::string& text) {
    const size_t at = text.find('@'), dot = text.rfind('.');
    return text.size() >= kShortestEmail && at != std::string::npos && dot != std::string::npos && at > 0 && dot > at &&
           dot + 2 < text.size();
}

const AddressFault* ValidateEmail(CTmReminder& reminder, const std::string& typed) {
    if (!IsEmail(typed))
        return &kBadEmail;
    reminder.EmailAddress = reminder.SendTo = typed;
    return nullptr;
}

const AddressFault* ValidatePhone(CTmReminder& reminder, const std::string& typed, int provider,
                                  const ReminderSetup& setup) {
    const std::string digits = ReplaceAll(typed, "-", "");
    if (digits.size() < kShortestNumber || digits.find_first_of(kNoPhoneCharacters) != std::string::npos)
        return &kBadNumber;
    if (provider < 0 || provider >= static_cast<int>(kProviders))
        return &kBadProvider;
    const Provider& row = kTable[static_cast<size_t>(provider)];
    const std::string& gateway = setup.gateways[static_cast<size_t>(row.gatewayRow)];
    if (gateway.empty())
        return &kNoGateway;
    reminder.PhoneNumber = typed;
    reminder.ProviderIndex = provider;
    reminder.SendTo = row.prefix + digits + "@" + gateway;
    return nullptr;
}

}  // namespace

const std::array<Provider, kProviders>& Providers() {
    return kTable;
}

const AddressFault* ValidateAddress(CTmReminder& reminder, const std::string& typed, int provider,
                                    const ReminderSetup& setup) {
    switch (static_cast<ReminderType>(reminder.Type)) {
        case ReminderType::Email:
            return ValidateEmail(reminder, typed);
        case ReminderType::TextMessage:
            return ValidatePhone(reminder, typed, provider, setup);
        case ReminderType::Popup:
            break;
    }
    return nullptr;
}

}  // namespace lore
