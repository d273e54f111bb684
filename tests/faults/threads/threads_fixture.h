// The program with its threads in the hands of the test: each can be held at any of its calls while the
// window is asked all the time whether it still answers.
#pragma once

#include "tests/faults/harness/user.h"
#include "tests/faults/harness/window_facts.h"
#include "tests/faults/scenarios/usual.h"
#include "tests/faults/threads/gate.h"
#include "tests/faults/threads/pulse.h"

#include "res/resource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

class ThreadsFixture : public testing::Test, protected Stage {
protected:
    // Quits the program. It must end with 2 and hold nothing, and the window must have answered all the time.
    ~ThreadsFixture() override {
        user.WaitForWorkers();
        EXPECT_TRUE(LooksIdle());
        EXPECT_TRUE(m_pulse->Stop()) << "the window did not answer";
        EXPECT_GT(m_pulse->Answers(), 0);
        std::printf("    %d answers of the window, the slowest after %llu ms\n", m_pulse->Answers(),
                    m_pulse->SlowestMs());
        user.Quit();
        EXPECT_TRUE(program.WaitForEnd());
        EXPECT_EQ(program.State(), ProgramHost::Life::Ended);
        EXPECT_EQ(program.ExitCode(), 2);
        EXPECT_EQ(platform.Held().at("blocks"), 0);
        EXPECT_EQ(platform.Held().at("objects"), 0);
        EXPECT_EQ(platform.Fact("timers"), "");
        EXPECT_EQ(platform.Fact("awake"), "0") << "the machine is still kept awake";
        EXPECT_EQ(platform.Fact("shown"), "");
    }

    // Starts the program with these files in the list.
    void OpenWith(const std::vector<std::wstring>& paths) {
        OpenWithFiles(user, paths);
        m_pulse.emplace(user.Window());
    }
    // Presses "Arrêter " and answers Yes.
    void Stop() {
        user.Press(IDCANCEL);
        EXPECT_TRUE(LooksIdle()) << "after the stop";
    }
    // The idle look: everything that a batch disables is enabled, button 2 reads "Quitter".
    [[nodiscard]] bool LooksIdle() const {
        Facts facts;
        AddControlFacts(user, "now", facts);
        return facts["now.OK"] == "ES" && facts["now.FILE_LIST"] == "ES" &&
               facts["now.CANCEL"] == "ES Quitter";
    }
    [[nodiscard]] std::string Durations() const {  // one line each
        Facts facts;
        AddListFacts(user, "now", facts);
        return facts["now.durations"];
    }
    [[nodiscard]] std::vector<std::string> Messages() const { return platform.Requests("messages"); }

private:
    std::optional<Pulse> m_pulse;
};
