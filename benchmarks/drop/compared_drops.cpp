#include "benchmarks/drop/compared_drops.h"

#include "benchmarks/drop/bare_list.h"
#include "benchmarks/drop/talvenor_list.h"
#include "benchmarks/support/stopwatch.h"
#include "tests/equipment/failure.h"
#include "tests/support/dropped_files.h"
#include "tests/support/replaced_imports.h"
#include "framework/app_module.h"

#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

namespace {

int g_beeps = 0;

BOOL WINAPI CountBeep(DWORD, DWORD) {
    ++g_beeps;
    return TRUE;
}

std::vector<std::wstring> PathsBefore(const std::vector<std::wstring>& paths, Before before) {
    std::vector<std::wstring> there;
    if (before == Before::Nothing) return there;
    for (std::size_t i = 0; i < paths.size(); i += 2) there.push_back(paths[i]);
    return there;
}

void Require(bool condition, const char* what) {
    if (!condition) throw driver::Failure(std::string("not so: ") + what);
}

// The drops of one comparison, made once.
struct Drops {
    Drops(const std::vector<std::wstring>& paths, Before state)
        : count(static_cast<int>(paths.size())),
          known(static_cast<int>(PathsBefore(paths, state).size())),
          before(PathsBefore(paths, state)),
          measured(paths) {}

    const int count;
    const int known;  // of these, in the list before
    const DroppedFiles before;
    const DroppedFiles measured;
};

double MeasureTalvenor(const Drops& drops, Until until) {
    const TalvenorList list;
    list.Drop(drops.before.Get());
    list.Paint();
    g_beeps = 0;
    const Stopwatch stopwatch;
    list.Drop(drops.measured.Get());
    if (until == Until::Painted) list.Paint();
    const double milliseconds = stopwatch.Milliseconds();
    Require(list.RowCount() == drops.count, "every path has its row in Talvenor");
    Require(g_beeps == drops.known, "every path that is there already beeps");
    return milliseconds;
}

double MeasureBare(const Drops& drops, Until until) {
    BareList list;
    list.Drop(drops.before.Get());
    list.Paint();
    const Stopwatch stopwatch;
    list.Drop(drops.measured.Get(), drops.known == 0 ? BareList::Rows::All : BareList::Rows::Odd);
    if (until == Until::Painted) list.Paint();
    const double milliseconds = stopwatch.Milliseconds();
    Require(list.RowCount() == drops.count, "every path has its row in the bare list");
    return milliseconds;
}

}  // namespace

ComparedDrops CompareDrops(const std::vector<std::wstring>& paths, Before before, Until until, int rounds) {
    const Drops drops(paths, before);
    ComparedDrops compared;
    for (int round = 0; round < rounds; ++round) {
        compared.talvenor.Add(MeasureTalvenor(drops, until));
        compared.bare.Add(MeasureBare(drops, until));
    }
    return compared;
}

int RunDropBenchmark(int count, char** values, void (*benchmark)(const Arguments&)) {
    static_cast<void>(::CoInitialize(nullptr));
    const INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&controls);
    CAppModule::Instance().Init(::GetModuleHandleW(nullptr));
    int result = 0;
    {
        const ReplacedImport beep("Beep", &CountBeep);
        result = RunBenchmark(count, values, benchmark);
    }
    CAppModule::Instance().Term();
    ::CoUninitialize();
    return result;
}
