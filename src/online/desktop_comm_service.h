#pragma once

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "online/soap_client.h"

namespace lore {

/// The path of the service on its host.
inline constexpr char kServicePath[] = "/DatabaseComServices/DesktopCommService.asmx";

/// What the service says of an account.
struct ValidationInfo {
    int32_t UserID = 0;  ///< above 0 if the account was found
    std::string UserNickname;
    bool IsValidSubcription = false;  ///< spelled as on the wire
};

/// An online NoteBook as the service names it.
struct NoteBookInfo {
    int32_t databaseID = 0;  ///< of the online NoteBook; 0 or below if there is none
    std::string name;
};

/// The online NoteBooks of an account, which a list or the making of one answers with.
struct NoteBooksInfo {
    int32_t newNoteBookID = 0;  ///< of a NoteBook just made; 0 or below on failure
    bool foundUser = false;     ///< there is an account with the GUID
    std::vector<NoteBookInfo> noteBooksList;
};

/// What came of a call. A call that went well may have no result.
template <typename T>
struct Called {
    SoapError error = SoapError::None;
    std::optional<T> result;
    bool Ok() const { return error == SoapError::None; }
};

/// The two sides of a link between NoteBooks.
struct LinkRequest {
    int32_t newOnlineNoteBookID = -1, prevOnlineNoteBookID = -1;
    std::string desktopGUID;  ///< of the installation
    std::string desktopNoteBookGUID, desktopNoteBookName;
};

/// The web service of the online account, by the names of its operations. GUIDs are 38 characters with braces. A field
/// that is nil or missing keeps its default; one that should be a number or a boolean and isn't fails the call, and so
/// does a single NoteBookInfo without its databaseID, which nobody may take for the word that the NoteBook has gone.
/// Each call is a conversation of its own and waits for the reply, until `stop` is requested.
class DesktopCommService {
public:
    DesktopCommService(HttpTransport& transport, ServiceAddress address)
        : transport_(transport), address_(std::move(address)) {}

    Called<NoteBooksInfo> GetNoteBooksInfo(const std::string& syncGUID, bool onlyUnlinkedNoteBooks,
                                           const std::stop_token& stop = {});
    Called<bool> ClearOnlineNoteBookLinks(const std::string& syncGUID, const std::string& desktopGUID,
                                          const std::stop_token& stop = {});
    Called<NoteBookInfo> SetupLinkWithOnlineNoteBook(const LinkRequest& link, const std::stop_token& stop = {});
    Called<ValidationInfo> ValidateUserSyncGUID(const std::string& syncGUID, const std::stop_token& stop = {});
    Called<NoteBookInfo> GetNoteBookInfo(int32_t noteBookID, const std::stop_token& stop = {});
    Called<ValidationInfo> EngageSyncWithOnlineAccount(const std::string& syncGUID, const std::string& desktopGUID,
                                                       const std::stop_token& stop = {});
    Called<NoteBookInfo> ClearLinkWithOnlineNoteBook(int32_t onlineNoteBookID, const std::string& desktopNoteBookGUID,
                                                     const std::stop_token& stop = {});
    Called<NoteBooksInfo> CreateNewNoteBook(const std::string& syncGUID, const std::string& newNoteBookName,
                                            bool onlyUnlinkedNoteBooks, const std::stop_token& stop = {});

private:
    template <typename T>
    Called<T> Call(std::string_view operation, const std::vector<SoapArgument>& arguments, const std::stop_token& stop);

    HttpTransport& transport_;
    ServiceAddress address_;
};

}  // namespace lore
