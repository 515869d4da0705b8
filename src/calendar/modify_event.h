#pragma once

namespace lore {

/// How far a change of one event of a series reaches; the numbers are the results of CModifyEventDlg.
enum class SeriesReach { EntireSeries = 12523, AllFollowing = 23734, OnlyThis = 34933, Cancel = 44837 };

enum class ModifyEventMode { Delete, Modify, Reminders };

/// The texts of CModifyEventDlg in one of its modes.
struct ModifyEventTexts {
    const char *title, *explanation;
    const char *seriesGroup, *entireSeries, *allFollowing;
    const char *singleGroup, *onlyThis;
    const char* cancel;  ///< empty: no such button
};
const ModifyEventTexts& TextsOf(ModifyEventMode mode);

/// CModifyEventDlg: asks how a change is to be distributed over a series.
class SeriesQuestion {
public:
    virtual ~SeriesQuestion() = default;
    virtual SeriesReach Ask(ModifyEventMode mode) = 0;
};

}  // namespace lore
