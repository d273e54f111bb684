// The main window with batches that go on until the test ends them.
#pragma once

#include "tests/window/batch_fixture.h"

class HeldBatchFixture : public BatchFixture {
protected:
    HeldBatchFixture() { converters.HoldAll(); }

    // Starts a batch of the rows in the list and waits for its first converter.
    void StartBatch() {
        const int before = converters.Started();
        Command(IDOK, BN_CLICKED);
        ASSERT_TRUE(WaitFor([&] { return converters.Started() > before; })) << "no converter was started";
    }
    // Lets every converter end with `exitCode` and waits for the batch's end.
    void FinishBatch(DWORD exitCode = 0) {
        converters.ReleaseAll(exitCode);
        WaitForEnd();
    }
};
