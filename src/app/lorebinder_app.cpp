#include "app/lorebinder_app.h"

#include <algorithm>
#include <unordered_set>

#include "base/text.h"
#include "notebooks/data_upgrade.h"
#include "notes/file_faults.h"
#include "notes/note_cleaner.h"
#include "notes/note_finder.h"
#include "notes/note_list_add.h"
#include "notes/note_list_citations.h"
#include "notes/sort_order.h"
#include "settings/installation.h"

namespace lore {

namespace {

/// Versions from this one on give the search controls more room.
constexpr double kWideSearchVersion = 11.37035;
constexpr int32_t kWideSearchControls = 377;
constexpr size_t kShortList = 4000;  // notes that are sorted in less time than a window needs to paint
constexpr size_t kNamedFiles = 3;    // of those that are damaged
constexpr size_t kMebibyte = size_t{1} << 20;

size_t CacheBudget(const Settings& settings) {
    return static_cast<size_t>(std::max(settings.Int(Option::TextCacheMB), 0)) * kMebibyte;
}

}  // namespace

CLorebinderApp::CLorebinderApp(std::filesystem::path dataRoot, const AppPorts& ports)
    : ports_(ports), data_{std::move(dataRoot)} {}

CLorebinderApp::~CLorebinderApp() = default;

ReadContext CLorebinderApp::Context() const {
    return {.now = ports_.clock.Now(), .nowUtc = ports_.clock.NowUtc(), .guids = &ports_.guids};
}

bool CLorebinderApp::FlushStore(FaultNotice& faults) {
    isUnstored_ = !FlushTold(ports_.store, faults);
    return !isUnstored_;
}

void CLorebinderApp::LoadOptions() {
    settings_.LoadOptions(ports_.store);
    texts_.SetBudget(CacheBudget(settings_));
}

void CLorebinderApp::SelectStartNoteBook() {
    TellFailedWrite(ports_.faults, kDataFolderUnmade, data_.DataFiles(), ComputeFolders(data_.root));
    FileResult result;
    const CDatabase noteBook =
        lore::SelectStartNoteBook(data_.DatabasesFile(), Context(), settings_, noteBooks_, result);
    TellFailedRead(ports_.faults, kNoteBooksUnread, data_.DatabasesFile(), result);
    settings_.Save(ports_.store, Option::LocalGUID);
    settings_.Save(ports_.store, Option::Database);
    FlushStore();
    UseNoteBook(noteBook);
}

void CLorebinderApp::UseNoteBook(const CDatabase& noteBook) {
    book_ = OpenNoteBook::At(data_, noteBook);
    closed_ = Closed::No;
    isUnread_ = isListUnread_ = false;
    unfound_.RemoveAll();
    damaged_.clear();
    settings_.Set(Option::Database, noteBook.guid);
}

void CLorebinderApp::StartAgent() {
    Agent* const agent = ports_.agent;
    const bool isFirstRun = settings_.ProgVersion() <= 0;
    if (isFirstRun) {
        settings_.Set(Option::StartupAgent, kAgentOn);
        settings_.Save(ports_.store, Option::StartupAgent);
    }
    if (!agent || !agent->IsInstalled())
        return;
    if (isFirstRun)
        agent->StartWithSession(true);
    if ((isFirstRun || settings_.Int(Option::RunAgent) == kAgentOn) && !agent->IsRunning())
        agent->Launch();
}

bool CLorebinderApp::UpgradeData() {
    if (!NeedsDataUpgrade(settings_.ProgVersion()))
        return true;
    IdCounters counters = Counters();
    const ReadContext context = Context();
    const bool done = UpgradeDataFolder({.data = data_,
                                         .maxCategoryID = counters.MaxCategoryID,
                                         .context = context,
                                         .progress = ports_.progress,
                                         .faults = ports_.faults});
    if (done)
        StoreCounters(counters);
    return done;
}

void CLorebinderApp::FinishStartup() {
    StartAgent();
    if (closed_ == Closed::Deleted)
        return;
    closed_ = Closed::NotUpgraded;  // until it is known, so that what is told can be tried again
    if (!UpgradeData())
        return;
    closed_ = Closed::No;
    // A first run has the version -1, which counts as older too.
    if (settings_.ProgVersion() < kWideSearchVersion)
        settings_.Set(Option::SrchCtrlsWidth, kWideSearchControls);
    settings_.Set(Option::ProgVersion, std::string(kDataVersionText));
    settings_.Save(ports_.store, Option::ProgVersion);
    FlushStore();
    LoadNoteBook();
    // Here alone beside the user's thread: no board shows anything yet that the new list would change under it.
    ShowNotes(ReadLastViewList(), ports_.background);
}

void CLorebinderApp::StoreCounters(const IdCounters& counters) {
    PutCounters(counters, settings_, ports_.store);
    FlushStore();
}

void CLorebinderApp::LoadNoteBook() {
    isUnread_ = false;
    HeardFaults faults(ports_.faults, isUnread_);
    CleanNoteFiles(book_.paths, faults, &ports_.progress);
    IdCounters counters = Counters();
    texts_.Clear();
    lore::LoadOptions options;
    options.progress = &ports_.progress;
    options.texts = &texts_;
    const LoadReport report = lore::LoadNoteBook(book_, counters, Context(), faults, options);
    std::vector<std::string> paths;
    for (const std::string& file : report.files)
        paths.push_back(book_.paths.NoteFile(file).string());
    texts_.Attach(paths);
    StoreCounters(counters);
    TellDamaged(report.damaged);
}

/// They are shown as far as they go, so that nothing but these words says that something is missing. Said once, not at
/// each load.
void CLorebinderApp::TellDamaged(const std::vector<std::string>& files) {
    if (files == damaged_)
        return;
    damaged_ = files;
    if (files.empty())
        return;
    const bool one = files.size() == 1;
    std::string names = files.front();
    for (size_t i = 1; i < std::min(files.size(), kNamedFiles); ++i)
        names += ", " + files[i];
    if (files.size() > kNamedFiles)
        names += " and " + std::to_string(files.size() - kNamedFiles) + " more";
    ports_.faults.Tell({names + (one ? " is damaged or missing, and was not read whole"
                                     : " are damaged or missing, and were not read whole"),
                        book_.paths.Folder().string(),
                        std::string("what could be read is shown; ") + (one ? "the" : "each") +
                            " file is kept beside it before it is changed; restore a backup, or see what "
                            "\"lorebinder-cli check\" says",
                        true});
}

void CLorebinderApp::ShowNotes(const LongList& ids, Background* background) {
    list_ = CNoteList();
    CNoteList shown;
    KeptForLater faults;
    HeardFaults told(ports_.faults, isUnread_);
    // Stopped, it shows the notes that it had come to.
    RunBeside(background, "Loading Notes...", [&](const std::stop_token& stop) {
        LoadNotesToList(book_, ids, kNoSort, Context(), faults, shown, stop);
    });
    faults.TellAll(told);
    list_ = std::move(shown);
    list_.Select(-1);
    if (!isUnread_)
        return unfound_.RemoveAll();
    for (const int32_t id : ids) {
        if (!list_.Contains(id))
            unfound_.AddUnique(id);
    }
}

LongList CLorebinderApp::ReadLastViewList() {
    isListUnread_ = false;
    HeardFaults load(ports_.faults, isUnread_);
    HeardFaults faults(load, isListUnread_);
    return LoadLastViewList(book_.paths, faults);
}

void CLorebinderApp::KeepViewList(FaultNotice& faults) const {
    if (closed_ != Closed::No || isListUnread_)
        return;
    LongList ids = list_.GetNoteIDs();
    ids.Merge(unfound_);
    SaveLastViewList(book_.paths, ids, faults);
}

void CLorebinderApp::ReloadNotes(const LongList& listed) {
    LoadNoteBook();
    LongList wanted = listed;
    wanted.Merge(unfound_);
    if (isListUnread_)
        wanted.Merge(ReadLastViewList());
    ShowNotes(wanted);
}

bool CLorebinderApp::TryAgain() {
    if (isUnstored_)
        FlushStore();
    if (closed_ == Closed::NotUpgraded)
        FinishStartup();
    else if (isUnread_)
        ReloadNotes(list_.GetNoteIDs());
    else
        return false;
    return true;
}

IdCounters CLorebinderApp::Counters() const {
    return CountersOf(settings_);
}

void CLorebinderApp::StoreSettings(FaultNotice& faults) {
    settings_.SaveOptions(ports_.store);
    FlushStore(faults);
}

void CLorebinderApp::SaveOptions(FaultNotice& faults) {
    StoreSettings(faults);
    KeepViewList(faults);
}

void CLorebinderApp::ExitInstance(FaultNotice& faults) {
    SaveOptions(faults);
    if (ports_.agent && settings_.Int(Option::RunAgent) == kAgentOn)
        ports_.agent->Send(kAgentClose);
}

void CLorebinderApp::SwitchNoteBook(const CDatabase& noteBook) {
    if (closed_ == Closed::NotUpgraded) {
        TellIfClosed();
        return;
    }
    KeepViewList(ports_.faults);
    list_ = CNoteList();
    UseNoteBook(noteBook);
    LoadNoteBook();
    ShowNotes(ReadLastViewList());
    SaveOptions();
}

void CLorebinderApp::ReloadNoteBooks() {
    TellFailedRead(ports_.faults, kNoteBooksUnread, data_.DatabasesFile(),
                   LoadDatabases(data_.DatabasesFile(), Context(), noteBooks_));
    if (const auto listed = FindByGuid(noteBooks_, settings_.Text(Option::LocalGUID), book_.database.guid))
        book_.database = *listed;
}

void CLorebinderApp::CloseDeletedNoteBook() {
    const CDatabase deleted = book_.database;
    list_ = CNoteList();
    texts_.Clear();
    UseNoteBook(deleted);
    closed_ = Closed::Deleted;
}

bool CLorebinderApp::TellIfClosed() {
    if (closed_ == Closed::NotUpgraded)
        ports_.prompts.Message(
            "The data of an older version could not be upgraded, so that nothing can be written yet. Please see the "
            "details above the board, and try again.",
            "Data Not Upgraded", PromptIcon::Warning);
    else if (closed_ == Closed::Deleted)
        ports_.prompts.Message(
            "The NoteBook \"" + book_.database.name + "\" has been deleted. Please change to another NoteBook first.",
            "NoteBook Deleted", PromptIcon::Warning);
    return closed_ != Closed::No;
}

std::vector<CDatabase> CLorebinderApp::NoteBookChoices() const {
    std::vector<CDatabase> choices = noteBooks_;
    std::stable_sort(choices.begin(), choices.end(),
                     [](const CDatabase& a, const CDatabase& b) { return CompareNoCase(a.name, b.name) < 0; });
    choices.insert(choices.begin(), MainNoteBook(settings_.Text(Option::LocalGUID)));
    return choices;
}

SearchOutcome CLorebinderApp::Search(std::string_view text, SearchScope scope,
                                     const std::function<void()>& listChanged) {
    const ReadContext context = Context();
    SearchBox box({book_, texts_, list_, ports_.prompts, ports_.progress, ports_.faults, context, ports_.background,
                   listChanged});
    return box.Run(text, scope, SortOrder());
}

// Long lists are ordered beside the window. A save sorts at once: whoever saves a note goes on typing, and keys wait
// for a sort, but are lost to a window that takes no input.
void CLorebinderApp::SetSortOrder(int32_t id) {
    std::vector<uint32_t> order;
    Background* const background = IsSortingId(id) && list_.Count() > kShortList ? ports_.background : nullptr;
    if (!RunBeside(background, "Sorting Notes....", [&](const std::stop_token&) { order = list_.OrderBy(id); }))
        return;
    settings_.Set(Option::NoteSortID, id);
    list_.SetOrder(order);
}

size_t CLorebinderApp::Gather(const LongList& ids) {
    list_.ClearNewFlags();
    CNoteList next = list_;
    KeptForLater faults;
    size_t added = 0;
    const bool done = RunBeside(ports_.background, "Loading Notes...", [&](const std::stop_token& stop) {
        added = LoadNotesToList(book_, ids, SortOrder(), Context(), faults, next, stop);
    });
    faults.TellAll(ports_.faults);
    if (!done)
        return 0;
    list_ = std::move(next);
    return added;
}

int32_t CLorebinderApp::SelectFirstNew() {
    const auto& notes = list_.Notes();
    const auto first =
        std::find_if(notes.begin(), notes.end(), [](const ListedNote& entry) { return entry.note->newlyAdded; });
    const int32_t id = first == notes.end() ? -1 : first->Id();
    list_.Select(id);
    return id;
}

void CLorebinderApp::TakeOut(const LongList& ids) {
    list_.RemoveNotes(std::unordered_set<int32_t>(ids.begin(), ids.end()));
}

void CLorebinderApp::ClearList() {
    list_.RemoveAll();
}

void CLorebinderApp::MoveNote(int32_t id, int32_t target) {
    const int from = list_.PositionOf(id);
    const int to = list_.PositionOf(target);
    // Taking the note out moves what stands behind it up, so that its place is the target's in both directions.
    if (from >= 0 && to >= 0 && from != to)
        list_.MoveNote(static_cast<size_t>(from), static_cast<size_t>(to));
}

void CLorebinderApp::RefreshNote(int32_t id) {
    std::optional<CNote> note = FindNote(book_.index, id, Context(), ports_.faults);
    if (!note)
        return;
    CitationTexts citations(book_.sources, book_.authors);
    auto texts = citations.For(*note);
    list_.ReplaceNote(std::move(*note), std::move(texts));
}

}  // namespace lore
