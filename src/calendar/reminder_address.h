#pragma once

#include <string>

#include "calendar/calendar_world.h"

namespace lore {

/// A row of the provider table.
struct Provider {
    const char* name;
    const char* prefix;  ///< stands before the number
    int gatewayRow;      ///< the row whose gateway it uses
};
/// By ProviderIndex, in the order of the list "Service Provider:".
const std::array<Provider, kProviders>& Providers();

/// Why an address is refused.
struct AddressFault {
    const char *text, *title;
};

/// Checks the address of the reminder's type and puts it into the reminder: `SendTo`, with `EmailAddress` or
/// `PhoneNumber` and `ProviderIndex`. Null if it is valid; otherwise the reminder is as it was.
/// @param typed e-mail address or phone number
const AddressFault* ValidateAddress(CTmReminder& reminder, const std::string& typed, int provider,
                                    const ReminderSetup& setup);

}  // namespace lore
