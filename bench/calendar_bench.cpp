// How long a long series takes to come into a full calendar, and a month of it to be read and laid out.

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/bench_folder.h"
#include "bench/quiet_world.h"
#include "calendar/event_file.h"
#include "calendar/month_grid.h"
#include "calendar/series.h"
#include "platform/system_sources.h"
#include "ports/silent_progress.h"

namespace lore {
namespace {

CTmEvent Daily(const DateTime& first, int days) {
    CTmEvent event;
    ResetEvent(event, first);
    event.AllDay = 0;
    event.Recurring = 1;
    event.RecurrenceType = kDaily;
    event.DailyPattern = {1, 0, 1};
    event.End = first.PlusSeconds(3600);
    event.RecurrenceEnd = first.PlusDays(days - 1);
    event.Label = "Lesson of a class with a longer name";
    event.Description = std::string(200, 'x');
    return event;
}

/// A calendar file in a folder of its own, which goes with the object.
class CalendarFile {
public:
    CalendarFile(int events, int years) {
        EventList all;
        const int days = years * 365, series = events / days + 1;
        for (int i = 0; i < series && static_cast<int>(all.size()) < events; ++i) {
            EventList more = ExpandSeries(Daily(DateTime(2026, 1, 1, 8 + i % 10, 0, 0), days), guids_).records;
            more.resize(std::min(more.size(), static_cast<size_t>(events) - all.size()));
            all.insert(all.end(), more.begin(), more.end());
        }
        WriteEvents(Path(), all);
    }
    std::filesystem::path Path() const { return folder_.Path() / "Events.dat"; }
    GuidSource& Guids() { return guids_; }

private:
    BenchFolder folder_;
    SystemGuids guids_;
};

void ExpandAndMerge(benchmark::State& state) {
    CalendarFile file(50000, 30);
    const ReadContext context{DateTime(2026, 1, 1), DateTime(2026, 1, 1), &file.Guids()};
    const CTmEvent event = Daily(DateTime(2026, 1, 1, 7, 0, 0), 10000);
    SilentProgress progress;
    const EventList before = LoadAllEvents(file.Path(), context).value;
    for (auto _ : state) {
        MergeSaveEvents(file.Path(), context, ExpandSeries(event, file.Guids()).records, progress,
                        [] { return FileResult{}; });
        state.PauseTiming();
        WriteEvents(file.Path(), before);
        state.ResumeTiming();
    }
}
BENCHMARK(ExpandAndMerge)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadAndLayOutAMonth(benchmark::State& state) {
    CalendarFile file(5000, 1);
    const ReadContext context{DateTime(2026, 1, 1), DateTime(2026, 1, 1), &file.Guids()};
    DateTime month(2026, 1, 1);
    for (auto _ : state) {
        const MonthGrid grid(month);
        const auto loaded = LoadEventsInRange(file.Path(), context, grid.FirstMoment(), grid.LastMoment());
        benchmark::DoNotOptimize(LayOutBars(grid, loaded.value));
        month = DateTime(2026, month.Month() % 12 + 1, 1);
    }
}
BENCHMARK(ReadAndLayOutAMonth)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace lore

BENCHMARK_MAIN();
