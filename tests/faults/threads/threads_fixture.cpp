#include "tests/faults/threads/threads_fixture.h"

#include "tests/faults/harness/window_facts.h"

#include "res/resource.h"

#include <cstdio>

ThreadsFixture::~ThreadsFixture() {
    user.WaitForWorkers();
    EXPECT_TRUE(LooksIdle());
    EXPECT_TRUE(m_pulse->Stop()) << "the window did not answer";
    EXPECT_GT(m_pulse->Answers(), 0);
    std::printf("    %d answers of the window, the slowest after %llu ms\n", m_pulse->Answers(),
                m_pulse->SlowestMs());
    user.Quit();
    EXPECT_TRUE(program.WaitForEnd(std::chrono::seconds(15)));
    EXPECT_EQ(program.State(), ProgramHost::Life::Ended);
    EXPECT_EQ(program.ExitCode(), 2);
    EXPECT_EQ(platform.Blocks(), 0);
    EXPECT_EQ(platform.Timers(), "");
    EXPECT_EQ(platform.AwakeThreads(), 0) << "the machine is still kept awake";
    EXPECT_EQ(platform.TaskbarShows(), "");
    EXPECT_EQ(platform.ComObjects(), 0);
}

void ThreadsFixture::OpenWith(const std::vector<std::wstring>& paths) {
    program.Start();
    user.WaitForWindow();
    user.Drop(paths);
    user.Press(IDC_ADD);
    m_pulse.emplace(user.Window());
}

void ThreadsFixture::Stop() {
    user.Press(IDCANCEL);
    EXPECT_TRUE(LooksIdle()) << "after the stop";
}

bool ThreadsFixture::LooksIdle() const {
    Facts facts;
    AddControlFacts(user, "now", facts);
    return facts["now.1"] == "ES" && facts["now.1040"] == "ES" && facts["now.2"] == "ES Quitter";
}

std::vector<std::string> ThreadsFixture::Messages() const {
    return platform.Requests(Platform::Request::Message);
}

std::vector<std::string> ThreadsFixture::Starts() const {
    return platform.Requests(Platform::Request::Start);
}

std::vector<std::string> ThreadsFixture::CloseRequests() const {
    return platform.Requests(Platform::Request::Close);
}

std::vector<std::string> ThreadsFixture::Searches() const {
    return platform.Requests(Platform::Request::Search);
}

void ThreadsFixture::ExpectNothingSentToAnybody() const {
    EXPECT_THAT(Searches(), testing::IsEmpty());
    EXPECT_THAT(CloseRequests(), testing::IsEmpty());
    EXPECT_THAT(platform.Requests(Platform::Request::Job), testing::IsEmpty());
}

std::string ThreadsFixture::Durations() const {
    Facts facts;
    AddListFacts(user, "now", facts);
    return facts["now.durations"];
}
