// Runs every target on its corpus, without the fuzzer: the targets stay true while the rules change.
#include "tests/fuzz/fuzz_targets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> EntriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) entries.push_back(entry.path());
    return entries;
}

TEST(FuzzCorpus, HoldsForEveryFileAndForNoInput) {
    for (const FuzzTarget& target : kFuzzTargets) {
        SCOPED_TRACE(target.name);
        const std::vector<fs::path> files = EntriesOf(fs::path(TALVENOR_FUZZ_CORPUS) / target.name);
        EXPECT_THAT(files, testing::Not(testing::IsEmpty()));
        for (const fs::path& file : files) {
            std::ifstream stream(file, std::ios::binary);
            const std::string bytes(std::istreambuf_iterator<char>(stream), {});
            EXPECT_NO_THROW(target.run(FuzzInput(bytes))) << file;
        }
        EXPECT_NO_THROW(target.run(FuzzInput("")));
    }
}

TEST(FuzzCorpus, HasAFolderForEachTargetAndNoOther) {
    std::vector<std::string> targets;
    for (const FuzzTarget& target : kFuzzTargets) targets.emplace_back(target.name);
    std::vector<std::string> folders;
    for (const fs::path& folder : EntriesOf(TALVENOR_FUZZ_CORPUS)) folders.push_back(folder.filename());
    EXPECT_THAT(folders, testing::UnorderedElementsAreArray(targets));
}

}  // namespace
