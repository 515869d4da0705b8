#include "online/desktop_comm_service.h"

#include <charconv>

#include "base/text.h"

namespace lore {

namespace {

using Text = std::optional<std::string>;

// Each reads a text of the wire into a value; false if it isn't one. An empty number or boolean is none.

bool Read(std::string_view text, int32_t& value) {
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

bool Read(std::string_view text, bool& value) {
    text = Trim(text);
    value = text == "true" || text == "1";
    return value || text == "false" || text == "0";
}

bool Read(std::string_view text, std::string& value) {
    value = text;
    return true;
}

/// Reads the field of this name, if it has a value.
template <typename T>
bool ReadField(const SoapFields& fields, std::string_view name, T& value) {
    const auto found = fields.find(name);
    return found == fields.end() || Read(found->second, value);
}

bool ReadNoteBook(const SoapFields& fields, NoteBookInfo& info) {
    return ReadField(fields, "databaseID", info.databaseID) && ReadField(fields, "name", info.name);
}

// The types of results, each with what stands in it.

template <typename T>
SoapShape ShapeOf();

template <>
SoapShape ShapeOf<bool>() {
    return {};
}
template <>
SoapShape ShapeOf<ValidationInfo>() {
    return {.fields = {"UserID", "UserNickname", "IsValidSubcription"}};
}
template <>
SoapShape ShapeOf<NoteBookInfo>() {
    return {.fields = {"databaseID", "name"}};
}
template <>
SoapShape ShapeOf<NoteBooksInfo>() {
    return {.fields = {"newNoteBookID", "foundUser"},
            .list = "noteBooksList",
            .item = "NoteBookInfo",
            .itemFields = {"databaseID", "name"}};
}

bool ReadResult(const SoapResult& result, bool& value) {
    return Read(result.text, value);
}
bool ReadResult(const SoapResult& result, ValidationInfo& info) {
    return ReadField(result.fields, "UserID", info.UserID) &&
           ReadField(result.fields, "UserNickname", info.UserNickname) &&
           ReadField(result.fields, "IsValidSubcription", info.IsValidSubcription);
}
bool ReadResult(const SoapResult& result, NoteBookInfo& info) {
    return result.fields.contains("databaseID") && ReadNoteBook(result.fields, info);
}
bool ReadResult(const SoapResult& result, NoteBooksInfo& info) {
    bool isRead = ReadField(result.fields, "newNoteBookID", info.newNoteBookID) &&
                  ReadField(result.fields, "foundUser", info.foundUser);
    for (const SoapFields& item : result.items)
        isRead = ReadNoteBook(item, info.noteBooksList.emplace_back()) && isRead;
    return isRead;
}

}  // namespace

template <typename T>
Called<T> DesktopCommService::Call(std::string_view operation, const std::vector<SoapArgument>& arguments,
                                   const std::stop_token& stop) {
    SoapClient client(transport_, address_);
    std::optional<SoapResult> result;
    Called<T> called;
    called.error = client.Invoke(operation, arguments, ShapeOf<T>(), stop, result);
    if (result && !ReadResult(*result, called.result.emplace())) {
        called.error = SoapError::Reply;
        called.result.reset();
    }
    return called;
}

Called<NoteBooksInfo> DesktopCommService::GetNoteBooksInfo(const std::string& syncGUID, bool onlyUnlinkedNoteBooks,
                                                           const std::stop_token& stop) {
    return Call<NoteBooksInfo>("GetNoteBooksInfo",
                               {{"syncGUID", Text(syncGUID)}, {"onlyUnlinkedNoteBooks", onlyUnlinkedNoteBooks}}, stop);
}

Called<bool> DesktopCommService::ClearOnlineNoteBookLinks(const std::string& syncGUID, const std::string& desktopGUID,
                                                          const std::stop_token& stop) {
    return Call<bool>("ClearOnlineNoteBookLinks", {{"syncGUID", Text(syncGUID)}, {"desktopGUID", Text(desktopGUID)}},
                      stop);
}

Called<NoteBookInfo> DesktopCommService::SetupLinkWithOnlineNoteBook(const LinkRequest& link,
                                                                     const std::stop_token& stop) {
    return Call<NoteBookInfo>("SetupLinkWithOnlineNoteBook",
                              {{"newOnlineNoteBookID", link.newOnlineNoteBookID},
                               {"prevOnlineNoteBookID", link.prevOnlineNoteBookID},
                               {"desktopGUID", Text(link.desktopGUID)},
                               {"desktopNoteBookGUID", Text(link.desktopNoteBookGUID)},
                               {"desktopNoteBookName", Text(link.desktopNoteBookName)}},
                              stop);
}

Called<ValidationInfo> DesktopCommService::ValidateUserSyncGUID(const std::string& syncGUID,
                                                                const std::stop_token& stop) {
    return Call<ValidationInfo>("ValidateUserSyncGUID", {{"syncGUID", Text(syncGUID)}}, stop);
}

Called<NoteBookInfo> DesktopCommService::GetNoteBookInfo(int32_t noteBookID, const std::stop_token& stop) {
    return Call<NoteBookInfo>("GetNoteBookInfo", {{"NoteBookID", noteBookID}}, stop);
}

Called<ValidationInfo> DesktopCommService::EngageSyncWithOnlineAccount(const std::string& syncGUID,
                                                                       const std::string& desktopGUID,
                                                                       const std::stop_token& stop) {
    return Call<ValidationInfo>("EngageSyncWithOnlineAccount",
                                {{"syncGUID", Text(syncGUID)}, {"desktopGUID", Text(desktopGUID)}}, stop);
}

Called<NoteBookInfo> DesktopCommService::ClearLinkWithOnlineNoteBook(int32_t onlineNoteBookID,
                                                                     const std::string& desktopNoteBookGUID,
                                                                     const std::stop_token& stop) {
    return Call<NoteBookInfo>(
        "ClearLinkWithOnlineNoteBook",
        {{"onlineNoteBookID", onlineNoteBookID}, {"desktopNoteBookGUID", Text(desktopNoteBookGUID)}}, stop);
}

Called<NoteBooksInfo> DesktopCommService::CreateNewNoteBook(const std::string& syncGUID,
                                                            const std::string& newNoteBookName,
                                                            bool onlyUnlinkedNoteBooks, const std::stop_token& stop) {
    return Call<NoteBooksInfo>("CreateNewNoteBook",
                               {{"syncGUID", Text(syncGUID)},
                                {"newNoteBookName", Text(newNoteBookName)},
                                {"onlyUnlinkedNoteBooks", onlyUnlinkedNoteBooks}},
                               stop);
}

}  // namespace lore
