// The program with its threads in the hands of the test: each can be held at any of its calls while the
// window is asked all the time whether it still answers.
#pragma once

#include "tests/faults/harness/leak_counts.h"
#include "tests/faults/harness/user.h"
#include "tests/faults/threads/gate.h"
#include "tests/faults/threads/pulse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

class ThreadsFixture : public testing::Test {
protected:
    // Quits the program. It must end with 2, leave no handle, and the window must have answered all the time.
    ~ThreadsFixture() override;

    // Starts the program with these files in the list.
    void OpenWith(const std::vector<std::wstring>& paths);
    // Presses "Arrêter " and answers Yes.
    void Stop();
    // The idle look: everything that a batch disables is enabled, button 2 reads "Quitter".
    [[nodiscard]] bool LooksIdle() const;
    [[nodiscard]] std::vector<std::string> Messages() const;
    [[nodiscard]] std::vector<std::string> Starts() const;
    [[nodiscard]] std::vector<std::string> CloseRequests() const;
    // Searches for a console's window, by the converters whose processes were held meanwhile.
    [[nodiscard]] std::vector<std::string> Searches() const;
    // No window was looked for, none was asked, nothing was ended.
    void ExpectNothingSentToAnybody() const;
    [[nodiscard]] std::string Durations() const;  // one line each

    Platform platform;
    CallWatch watch;
    ProgramHost program{platform, watch};
    User user{program};

private:
    std::optional<Pulse> m_pulse;
};

inline constexpr char kQuestion[] =
    "question main Un traitement est en cours.\r\nÊtes-vous sûr de vouloir l'interrompre ?";
inline constexpr char kFinished[] = "information main Conversion terminée !";
