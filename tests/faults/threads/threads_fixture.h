// The program with its threads in the hands of the test: each can be held at any of its calls while the
// window is asked all the time whether it still answers.
#pragma once

#include "tests/faults/scenarios/scenarios.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

// Holds a thread of the program at one of its calls until the test lets it go on.
class Gate {
public:
    // Closed for the `nth` call from now with this label.
    Gate(CallWatch& watch, const std::string& label, int nth = 1) {
        watch.At(label, nth, [this] {
            m_arrived = true;
            m_open.wait(false);
        });
    }

    void WaitForArrival() const {
        driver::Await("a thread of the program arrives", [this] { return m_arrived.load(); });
    }
    void Open() {
        m_open = true;
        m_open.notify_all();
    }

private:
    std::atomic<bool> m_arrived{false};
    std::atomic<bool> m_open{false};
};

class ThreadsFixture : public testing::Test, protected Stage {
protected:
    // Quits the program. It must end with 2 and hold nothing, and the window must have answered all the time.
    ~ThreadsFixture() override {
        user.WaitForWorkers();
        EXPECT_TRUE(LooksIdle());
        m_pulse.request_stop();
        m_pulse.join();
        EXPECT_EQ(m_answers, m_questions) << "the window did not answer";
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
        m_pulse = std::jthread([this](const std::stop_token& over) { AskUntil(over); });
    }
    // Presses "Arrêter " and answers Yes.
    void Stop() {
        user.Press(IDCANCEL);
        EXPECT_TRUE(LooksIdle()) << "after the stop";
    }
    // Workers end in their own time; this is the moment when only one is left.
    void WaitForOneToEnd() const {
        driver::Await("one worker has ended", [&] { return platform.Workers() == 1; });
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
    // Asks the window whether it still answers, once at least.
    void AskUntil(const std::stop_token& over) {
        constexpr UINT kLimitMs = 5000;  // what anybody would call hanging, on a busy machine
        const HWND window = user.Window();
        do {
            DWORD_PTR answer = 0;
            ++m_questions;
            if (::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kLimitMs, &answer)) ++m_answers;
            ::Sleep(10);  // the pace of the questions; nothing is waited for here
        } while (!over.stop_requested());
    }

    int m_questions = 0;  // these two are the asking thread's, until it is joined
    int m_answers = 0;
    std::jthread m_pulse;
};
