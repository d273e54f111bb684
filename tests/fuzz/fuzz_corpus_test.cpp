// Runs every target on its corpus, without the fuzzer: the targets stay true while the rules change.
#include "tests/fuzz/fuzz_targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

// In the message of a test that fails.
static void PrintTo(const FuzzTarget& target, std::ostream* out) {
    *out << target.name;
}

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> EntriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) entries.push_back(entry.path());
    return entries;
}

std::string BytesOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class FuzzCorpusTest : public testing::TestWithParam<FuzzTarget> {};

TEST_P(FuzzCorpusTest, HoldsForEveryFileAndForNoInput) {
    const std::vector<fs::path> files = EntriesOf(fs::path(TALVENOR_FUZZ_CORPUS) / GetParam().name);
    EXPECT_THAT(files, testing::Not(testing::IsEmpty()));
    for (const fs::path& file : files) {
        const std::string bytes = BytesOf(file);
        EXPECT_NO_THROW(GetParam().run(FuzzInput(bytes))) << file;
    }
    EXPECT_NO_THROW(GetParam().run(FuzzInput("")));
}

INSTANTIATE_TEST_SUITE_P(All, FuzzCorpusTest, testing::ValuesIn(kFuzzTargets),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FuzzCorpus, HasAFolderForEachTargetAndNoOther) {
    std::vector<std::string> targets;
    for (const FuzzTarget& target : kFuzzTargets) targets.emplace_back(target.name);
    std::vector<std::string> folders;
    for (const fs::path& folder : EntriesOf(TALVENOR_FUZZ_CORPUS)) folders.push_back(folder.filename());
    EXPECT_THAT(folders, testing::UnorderedElementsAreArray(targets));
}

}  // namespace
