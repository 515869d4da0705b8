#include "notebooks/data_upgrade.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "base/file_copy.h"
#include "base/file_descriptor.h"
#include "base/record_file.h"
#include "notes/category_conversion.h"
#include "notes/notebook_list.h"

namespace lore {

namespace fs = std::filesystem;

namespace {

constexpr double kFirstVersionWithNoteBooks = 10.0;

/// In the new folder: the paths below "Data Files" of what it holds, one a line. While it stands there the new folder
/// is whole, and the old files may still be there.
constexpr char kDoneList[] = "Upgrade.done";
/// Names beside the main NoteBook that no reader picks up.
constexpr char kStaging[] = "_LBMAIN_.upgrade";
constexpr char kAside[] = "_LBMAIN_.before";

constexpr char kUnwritten[] = "The upgraded folder could not be written";

constexpr const char* kLists[] = {"Sources.dat",    "Authors.dat",      "SourceTypes.dat",
                                  "Categories.dat", "Empty1Cats.dat",   "Empty2Cats.dat",
                                  "Empty3Cats.dat", "LastViewList.dat", "Sync.dat"};
constexpr const char* kFolders[] = {"Notes", "Attachments"};

/// A file of the old layout and its place in the NoteBook, both below their folders.
struct OldFile {
    fs::path from, to;
};

bool IsNoteFileName(const std::string& name) {
    return (name.starts_with("SRC") || name.starts_with("DAY")) && name.ends_with(".dat");
}

class Upgrade {
public:
    explicit Upgrade(const UpgradeJob& job)
        : job_(job),
          main_(job.data, kMainNoteBookFolder),
          staging_(job.data, kStaging),
          aside_(job.data.Databases() / kAside) {}

    bool Run();

private:
    bool Tell(const char* what, const fs::path& path, const FileResult& result);
    bool IsOccupied() const;
    bool Fill(const std::vector<OldFile>& files);
    bool Bring(const OldFile& file);
    bool FlushAll(const std::set<fs::path>& folders);
    bool Publish();
    void RemoveOld();

    const UpgradeJob& job_;
    NoteBookPaths main_, staging_;
    fs::path aside_;
};

void AddFolder(const fs::path& root, const fs::path& folder, std::vector<OldFile>& files) {
    std::error_code error;
    for (fs::recursive_directory_iterator it(root / folder, error), end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        if (!it->is_directory(ignored)) {
            const fs::path below = it->path().lexically_relative(root);
            files.push_back({below, below});
        }
    }
}

/// Note files that lie between the lists get a name that none in the folder of notes has.
void AddLooseNotes(const fs::path& root, std::vector<OldFile>& files) {
    std::set<fs::path> taken;
    for (const OldFile& file : files)
        taken.insert(file.to);
    for (const std::string& name : ListDatFiles(root)) {
        if (!IsNoteFileName(name))
            continue;
        fs::path to = fs::path("Notes") / name;
        while (!taken.insert(to).second)
            to.replace_filename(to.stem().string() + "-2.dat");
        files.push_back({name, to});
    }
}

std::vector<OldFile> OldFiles(const fs::path& root) {
    std::vector<OldFile> files;
    std::error_code error;
    for (const char* name : kLists)
        if (fs::is_regular_file(root / name, error))
            files.push_back({name, name});
    for (const char* folder : kFolders)
        AddFolder(root, folder, files);
    AddLooseNotes(root, files);
    return files;
}

/// Whether a line of the list names a file of the old layout; the list may have been tampered with.
bool IsOldPlace(const fs::path& path) {
    if (path.is_absolute() || path != path.lexically_normal())
        return false;
    const std::string first = path.begin()->string();
    if (std::distance(path.begin(), path.end()) == 1)
        return IsNoteFileName(first) || std::find(std::begin(kLists), std::end(kLists), first) != std::end(kLists);
    return std::find(std::begin(kFolders), std::end(kFolders), first) != std::end(kFolders);
}

std::string ListOf(const std::vector<OldFile>& files) {
    std::string list;
    for (const OldFile& file : files)
        list += file.from.string() + '\n';
    return list;
}

bool Upgrade::Tell(const char* what, const fs::path& path, const FileResult& result) {
    if (!result.Ok())
        job_.faults.Tell({what, path.string(), result.Reason()});
    return result.Ok();
}

/// Whether a file is what the mere opening of a NoteBook leaves there.
bool IsFromOpening(const fs::path& file) {
    constexpr std::string_view kWritten[] = {"Sources.dat", "Authors.dat", "SourceTypes.dat", "LastViewList.dat"};
    const std::string name = file.filename().string();
    if (name == "Categories.dat") {
        CProCategoryList forest;
        return forest.Load(file).Ok() && forest.Roots().size() <= 1;
    }
    std::error_code error;
    return std::find(std::begin(kWritten), std::end(kWritten), name) != std::end(kWritten) &&
           fs::file_size(file, error) <= kEmptyFileSize;
}

bool Upgrade::IsOccupied() const {
    std::error_code error;
    for (fs::recursive_directory_iterator it(main_.Folder(), error), end; !error && it != end; it.increment(error)) {
        std::error_code ignored;
        if (!it->is_directory(ignored) && !IsFromOpening(it->path()))
            return true;
    }
    return error && error != std::errc::no_such_file_or_directory;
}

bool Upgrade::Bring(const OldFile& file) {
    const fs::path from = job_.data.DataFiles() / file.from, to = staging_.Folder() / file.to;
    std::error_code error;
    fs::create_directories(to.parent_path(), error);
    // A second name costs neither time nor room, and writers replace files as a whole, so that the old one keeps its
    // bytes. Where there are no second names, and for links, the content is copied.
    if (!fs::is_symlink(from, error) && ::link(from.c_str(), to.c_str()) == 0)
        return true;
    return Tell("A file of the older data could not be brought to its new place", from, CopyFileAtomically(from, to));
}

bool Upgrade::FlushAll(const std::set<fs::path>& folders) {
    return std::all_of(folders.begin(), folders.end(),
                       [this](const fs::path& folder) { return Tell(kUnwritten, folder, FlushFolder(folder)); });
}

bool Upgrade::Fill(const std::vector<OldFile>& files) {
    std::error_code error;
    fs::remove_all(staging_.Folder(), error);
    if (!Tell(kUnwritten, staging_.Folder(), CreateNoteBookFolders(staging_)))
        return false;
    std::set<fs::path> folders = {staging_.Folder(), staging_.Notes(), staging_.Attachments()};
    for (const OldFile& file : files) {
        if (!Bring(file))
            return false;
        folders.insert((staging_.Folder() / file.to).parent_path());
    }
    if (NeedsCategoryConversion(staging_) &&
        !ConvertCategories(staging_, job_.maxCategoryID, job_.context, job_.faults))
        return false;
    return FlushAll(folders) &&
           Tell(kUnwritten, staging_.Folder(), WriteFileAtomically(staging_.Folder() / kDoneList, ListOf(files)));
}

bool Upgrade::Publish() {
    std::error_code error;
    fs::remove_all(aside_, error);
    if (::rename(main_.Folder().c_str(), aside_.c_str()) != 0 && errno != ENOENT)
        return Tell("The folder of the main NoteBook could not be renamed", main_.Folder(), LastError());
    if (::rename(staging_.Folder().c_str(), main_.Folder().c_str()) != 0)
        return Tell("The upgraded folder could not be renamed", staging_.Folder(), LastError());
    const bool flushed = Tell(kUnwritten, job_.data.Databases(), FlushFolder(job_.data.Databases()));
    fs::remove_all(aside_, error);
    return flushed;
}

/// Takes out the old files that the new place holds, and their folders once they are empty. What can't be removed is
/// told and does no harm.
void Upgrade::RemoveOld() {
    const fs::path list = main_.Folder() / kDoneList, root = job_.data.DataFiles();
    std::string lines;
    if (!Tell("The list of upgraded files could not be read", list, ReadFile(list, lines)))
        return;
    std::set<fs::path, std::greater<>> folders;
    for (size_t at = 0, end = 0; (end = lines.find('\n', at)) != std::string::npos; at = end + 1) {
        const fs::path line = lines.substr(at, end - at);
        if (line.empty() || !IsOldPlace(line))
            continue;
        const fs::path old = root / line;
        if (::unlink(old.c_str()) != 0 && errno != ENOENT)
            Tell("A file of the older data could not be removed; it has been brought to the main NoteBook", old,
                 LastError());
        for (fs::path folder = old.parent_path(); folder != root && folder.has_relative_path();
             folder = folder.parent_path())
            folders.insert(folder);
    }
    std::error_code ignored;
    for (const char* folder : kFolders)
        folders.insert(root / folder);
    // The deepest come first.
    for (const fs::path& folder : folders)
        if (fs::is_empty(folder, ignored))
            fs::remove(folder, ignored);
    FlushFolder(root);
    Tell("The list of upgraded files could not be removed", list, RemoveFile(list));
}

bool Upgrade::Run() {
    std::error_code error;
    if (fs::exists(main_.Folder() / kDoneList, error)) {
        RemoveOld();
        return true;
    }
    const std::vector<OldFile> files = OldFiles(job_.data.DataFiles());
    const bool isFilled = fs::exists(staging_.Folder() / kDoneList, error);
    if (files.empty() && !isFilled)
        return true;
    if (IsOccupied()) {
        job_.faults.Tell({"Older data lie where they were, since the main NoteBook has notes of its own",
                          job_.data.DataFiles().string(), "Move them or the folder of the main NoteBook away"});
        return false;
    }
    if (!isFilled && !Fill(files)) {
        fs::remove_all(staging_.Folder(), error);
        return false;
    }
    if (!Publish())
        return false;
    RemoveOld();
    return true;
}

}  // namespace

bool NeedsDataUpgrade(double progVersion) {
    return progVersion > 0 && progVersion < kFirstVersionWithNoteBooks;
}

bool UpgradeDataFolder(const UpgradeJob& job) {
    job.progress.ShowStandBy("Running File Upgrade...(may take a few moments)");
    const bool done = Upgrade(job).Run();
    job.progress.HideStandBy();
    return done;
}

bool HasOlderData(const DataPaths& data) {
    std::error_code error;
    return !OldFiles(data.DataFiles()).empty() || fs::exists(data.Databases() / kStaging / kDoneList, error) ||
           fs::exists(data.Databases() / kMainNoteBookFolder / kDoneList, error);
}

}  // namespace lore
