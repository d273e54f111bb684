// The main window with batches that go on until the test ends them.
#pragma once

#include "tests/window/main_window_fixture.h"
#include "tests/equipment/scripted_converters.h"

class HeldBatchFixture : public MainWindowFixture {
protected:
    HeldBatchFixture() {
        converters.HoldAll();
        Create();
    }
    ~HeldBatchFixture() override {
        // Stopped while its converter still holds it: a batch that ended meanwhile would make this quit.
        if (dialog && dialog->Handle() && dialog->IsRunning()) StopBatch();
        converters.ReleaseAll(1);
        Destroy();
    }

    // Starts a batch of the rows in the list and waits for its first converter.
    void StartBatch() {
        const int before = converters.Started();
        Command(IDOK, BN_CLICKED);
        ASSERT_TRUE(WaitFor([&] { return converters.Started() > before; })) << "no converter was started";
    }
    // Starts a batch of an empty list, which runs until it is stopped. Its worker ends at once.
    void StartEmptyBatch() {
        ASSERT_EQ(RowCount(), 0);
        Command(IDOK, BN_CLICKED);
        ASSERT_TRUE(WaitFor([&] { return dialog->IsRunning() && !dialog->HasWorker(); }))
            << "the batch did not come to rest";
    }
    // Asks for a stop and confirms. The worker goes on waiting for its converter.
    void StopBatch() {
        messageAnswer = IDYES;
        Click(IDCANCEL);
    }
    void WaitForEnd() {
        ASSERT_TRUE(WaitFor([&] { return !dialog->HasWorker(); })) << "the batch did not end";
    }
    // Lets every converter end with `exitCode` and waits for the batch's end.
    void FinishBatch(DWORD exitCode = 0) {
        converters.ReleaseAll(exitCode);
        WaitForEnd();
    }

    WorkerCalls worker;
    ScriptedConverters converters{worker};
};
