// What a drop of many new paths takes: against a bare list that takes the same drop, and Talvenor's own share
// for each row of small and large drops.

#include "benchmarks/drop/compared_drops.h"
#include "benchmarks/drop/indexed_drop.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"

namespace {

constexpr int kPaths = 10'000;
constexpr double kGoal = 1.30;

constexpr int kFewPaths = 1'000;
constexpr int kManyPaths = 20'000;
// Twenty times the rows no longer fit the processor's nearest cache, whatever the program does.
constexpr double kFlat = 1.50;

void CompareWithBareList(int rounds) {
    const ComparedDrops drops = CompareDrops(PdfPaths(kPaths), Before::Nothing, Until::Painted, rounds);
    Print({.what = "10,000 new paths dropped in one action",
           .limit = "bare `DragQueryFileW` calls and `LVM_INSERTITEMW` with redraw off",
           .talvenor = WithUnit(drops.talvenor.Median(), "ms"),
           .bare = WithUnit(drops.bare.Median(), "ms"),
           .ratio = Times(drops.Ratio()),
           .goal = "≤ " + Times(kGoal),
           .met = drops.Ratio() <= kGoal});
}

// Microseconds a row that Talvenor takes more than the bare list.
double OwnShare(int paths, int rounds) {
    const IndexedDrop indexed;
    const ComparedDrops drops = CompareDrops(PdfPaths(paths), Before::Nothing, Until::Taken, rounds);
    const double own = (drops.talvenor.Median() - drops.bare.Median()) * 1000 / paths;
    Print({.what = "the same with " + std::to_string(paths) +
                   " paths, read for nothing and before the list is drawn",
           .limit = "the same",
           .talvenor = WithUnit(drops.talvenor.Median() * 1000 / paths, "µs a row", 2),
           .bare = WithUnit(drops.bare.Median() * 1000 / paths, "µs a row", 2),
           .ratio = Times(drops.Ratio()),
           .goal = "",
           .met = true});
    return own;
}

void CompareFewWithMany(int rounds) {
    const double few = OwnShare(kFewPaths, rounds * 4);
    const double many = OwnShare(kManyPaths, rounds);
    Print({.what = "Talvenor's own share of it, a row of 20,000",
           .limit = "a row of 1,000",
           .talvenor = WithUnit(many, "µs", 2),
           .bare = WithUnit(few, "µs", 2),
           .ratio = Times(many / few),
           .goal = "flat: ≤ " + Times(kFlat),
           .met = many <= few * kFlat});
}

void Benchmark(const Arguments& arguments) {
    const int rounds = arguments.Get("rounds", 11);
    CompareWithBareList(rounds);
    CompareFewWithMany(rounds);
}

}  // namespace

int main(int argc, char** argv) {
    return RunDropBenchmark(argc, argv, &Benchmark);
}
