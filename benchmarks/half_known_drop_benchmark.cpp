// What a drop takes when every other path of it is in the list already. The beeps are replaced: each would
// take a tenth of a second.

#include "benchmarks/drop/compared_drops.h"
#include "benchmarks/support/installation.h"
#include "benchmarks/support/result.h"

namespace {

constexpr int kPaths = 10'000;
constexpr double kGoal = 1.30;

void Benchmark(const Arguments& arguments) {
    const int rounds = arguments.Get("rounds", 11);
    const ComparedDrops drops =
        CompareDrops(PdfPaths(kPaths), Before::EveryOtherPath, Until::Painted, rounds);
    Print({.what = "10,000 paths dropped of which half are there already, beeps replaced",
           .limit = "the same bare calls, inserting the new half",
           .talvenor = WithUnit(drops.talvenor.Median(), "ms"),
           .bare = WithUnit(drops.bare.Median(), "ms"),
           .ratio = Times(drops.Ratio()),
           .goal = "≤ " + Times(kGoal),
           .met = drops.Ratio() <= kGoal});
}

}  // namespace

int main(int argc, char** argv) {
    return RunDropBenchmark(argc, argv, &Benchmark);
}
