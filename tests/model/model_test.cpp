// The real window against the model, over seeded random users.
#include "tests/model/model_run.h"

#include <cstdlib>

namespace {

// How many users, from the environment: more for a long run, or one seed that is to be looked at.
int FromEnvironment(const char* name, int otherwise) {
    const char* const value = std::getenv(name);
    return value ? std::atoi(value) : otherwise;
}

TEST_F(ModelRun, WindowDoesWhatTheModelSaysForRandomUsers) {
    const int users = FromEnvironment("TALVENOR_MODEL_USERS", 20);
    const int firstSeed = FromEnvironment("TALVENOR_MODEL_SEED", 1);
    constexpr int kSteps = 50;
    for (int seed = firstSeed; seed < firstSeed + users; ++seed) {
        const std::vector<Action> actions = RandomActions(static_cast<std::uint32_t>(seed), kSteps);
        if (!Play(actions)) continue;
        const std::vector<Action> shortest = Shrink(actions);
        const auto difference = Play(shortest);
        FAIL() << "seed " << seed << "\n"
               << (difference ? *difference : "(gone when played again: a matter of timing)")
               << "\nshortest sequence:\n"
               << Describe(shortest);
    }
    std::printf(
        "model: %d users, %d steps each, %d effective actions, %d conversions, %d keys of disabled "
        "controls\n",
        users, kSteps, effective, conversions, keysOfDisabled);
    // Half of what is tried must be possible, or the users prove little.
    EXPECT_GT(effective, users * kSteps / 2);
    EXPECT_GT(conversions, users / 2);
    EXPECT_GT(keysOfDisabled, users / 2);
}

}  // namespace
