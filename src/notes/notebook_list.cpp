#include "notes/notebook_list.h"

#include <algorithm>
#include <memory>

#include "base/record_file.h"
#include "base/text.h"
#include "settings/installation.h"

namespace lore {

// "Databases.dat":
//
//   FixedDouble    version
//   FixedInt       count, then count x:
//     FixedInt       id
//     CountedString  guid, name, folder, extra
//     DateField      created

namespace {

/// `extra` stands in files whose version is above this. On disk; never change.
constexpr double kExtraGate = 10.98005;

void ReadDatabase(RecordReader* stream, double version, const ReadContext& context, CDatabase& entry) {
    entry.id = ReadFixedInt(stream);
    ReadCountedString(stream, entry.guid);
    ReadCountedString(stream, entry.name);
    ReadCountedString(stream, entry.folder);
    if (version > kExtraGate)
        ReadCountedString(stream, entry.extra);
    ReadDateField(stream, entry.created);
    if (entry.guid.empty())
        entry.guid = context.guids->NewGuid();
}

void WriteDatabase(RecordWriter* stream, const CDatabase& entry) {
    WriteFixedInt(stream, entry.id);
    for (const std::string* text : {&entry.guid, &entry.name, &entry.folder, &entry.extra})
        WriteCountedString(stream, *text);
    WriteDateField(stream, entry.created);
}

/// The main NoteBook if it fits, otherwise the first of the list that does.
template <typename Fits>
std::optional<CDatabase> FindWhere(const std::vector<CDatabase>& list, const std::string& localGUID, Fits fits) {
    if (CDatabase main = MainNoteBook(localGUID); fits(main))
        return main;
    const auto hit = std::find_if(list.begin(), list.end(), fits);
    return hit == list.end() ? std::nullopt : std::optional(*hit);
}

}  // namespace

FileResult LoadDatabases(const std::filesystem::path& file, const ReadContext& context, std::vector<CDatabase>& list,
                         double& version, RecordFileState* state) {
    list.clear();
    version = 0.0;
    std::unique_ptr<RecordReader> stream;
    const FileResult result = OpenRecordFile(file, stream);
    if (!stream)
        return result;
    version = ReadFixedDouble(stream.get());
    ReadCounted(stream.get(), [&] { ReadDatabase(stream.get(), version, context, list.emplace_back()); });
    if (state)
        *state = stream->State();
    return result;
}

FileResult LoadDatabases(const std::filesystem::path& file, const ReadContext& context, std::vector<CDatabase>& list) {
    double version = 0.0;
    return LoadDatabases(file, context, list, version);
}

FileResult SaveDatabases(const std::filesystem::path& file, const std::vector<CDatabase>& list) {
    RecordWriter writer;
    WriteFixedDouble(&writer, kDataVersion);
    WriteFixedInt(&writer, static_cast<int32_t>(list.size()));
    for (const CDatabase& entry : list)
        WriteDatabase(&writer, entry);
    return SaveRecordFile(file, writer);
}

CDatabase MainNoteBook(const std::string& localGUID) {
    CDatabase main;
    main.id = kMainNoteBookID;
    main.name = kMainNoteBookName;
    main.folder = kMainNoteBookFolder;
    main.guid = localGUID;
    return main;
}

std::optional<CDatabase> FindByGuid(const std::vector<CDatabase>& list, const std::string& localGUID,
                                    std::string_view guid) {
    return FindWhere(list, localGUID, [&](const CDatabase& entry) { return entry.guid == guid; });
}

std::optional<CDatabase> FindById(const std::vector<CDatabase>& list, const std::string& localGUID, int32_t id) {
    return FindWhere(list, localGUID, [&](const CDatabase& entry) { return entry.id == id; });
}

std::optional<CDatabase> FindNoteBook(const std::vector<CDatabase>& list, const std::string& localGUID,
                                      std::string_view text) {
    if (text.empty())
        return std::nullopt;
    for (const std::string CDatabase::*field : {&CDatabase::name, &CDatabase::folder, &CDatabase::guid}) {
        if (auto hit =
                FindWhere(list, localGUID, [&](const CDatabase& entry) { return IsSameText(entry.*field, text); }))
            return hit;
    }
    return std::nullopt;
}

CDatabase StartNoteBook(const std::vector<CDatabase>& list, const StartSettings& settings) {
    return FindByGuid(list, settings.LocalGUID, settings.Database).value_or(MainNoteBook(settings.LocalGUID));
}

CDatabase SelectStartNoteBook(const std::filesystem::path& databasesFile, const ReadContext& context,
                              Settings& settings, std::vector<CDatabase>& list, FileResult& result) {
    EnsureLocalGuid(settings, *context.guids);
    result = LoadDatabases(databasesFile, context, list);
    CDatabase chosen = StartNoteBook(list, {settings.Text(Option::LocalGUID), settings.Text(Option::Database)});
    settings.Set(Option::Database, chosen.guid);
    return chosen;
}

}  // namespace lore
