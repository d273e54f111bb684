// Runs the packed tests on the Windows that it is started on and writes down what came out. It is started by
// run.cmd, is in one folder with it, and needs nothing but that folder:
//
//   run_tests.exe [--only BEGINNING]    only the suites whose names begin like this
//
// Ends with 0 when every test passed, 1 when not, 2 when it could not run them.
#include <windows.h>

#include <chrono>
#include <cstdio>

#include "tests/equipment/failure.h"
#include "tests/equipment/no_shutdown.h"
#include "tests/equipment/text.h"
#include "tests/portable/interruption.h"
#include "tests/portable/results.h"
#include "tests/portable/suite_list.h"
#include "tests/portable/temporary_place.h"
#include "tests/portable/test_run.h"
#include "tests/portable/this_system.h"

namespace {

constexpr int kAllPassed = 0;
constexpr int kNotAllPassed = 1;
constexpr int kCouldNotRun = 2;

// GoogleTest knows its own program by a path in the system's code page.
void RequireFolderOfTheCodePage(const std::wstring& folder) {
    BOOL lacked = FALSE;
    ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, folder.c_str(), -1, nullptr, 0, nullptr,
                          ::GetACP() == CP_UTF8 ? nullptr : &lacked);
    if (lacked)
        throw driver::Failure("this folder's path has characters that the code page of this Windows lacks");
}

class Runner {
public:
    explicit Runner(const std::string& beginning) : m_suites(ReadSuites(m_folder)) {
        RequireFolderOfTheCodePage(m_folder);
        std::erase_if(m_suites, [&](const Suite& suite) { return !suite.name.starts_with(beginning); });
        if (m_suites.empty()) throw driver::Failure("no suite begins with " + beginning);
    }

    int Run() {
        std::puts("Talvenor " TALVENOR_VERSION
                  ": the tests. They open windows and send them keys and clicks, so\n"
                  "leave keyboard and mouse alone until the end. It takes five to fifteen minutes.\n");
        WriteBeginning();
        for (const Suite& suite : m_suites)
            if (!Interruption::HasCome()) RunSuite(suite);
        const std::string summary = m_results.Summary(m_suites.size());
        m_results.Write("\n" + summary + "\n");
        std::printf("\n%s\nPlease send back results.txt; it is beside run.cmd.\n", summary.c_str());
        return m_results.AreGood(m_suites.size()) ? kAllPassed : kNotAllPassed;
    }

private:
    void WriteBeginning() {
        m_results.Write("Talvenor " TALVENOR_VERSION
                        ": results of the tests. What came of all is at the end.\n\n");
        m_results.Write(DescribeThisSystem());
        m_results.Write("\n===== Left out, and why\n");
        for (const std::string& line : m_leftOut) m_results.Write(line + "\n");
    }

    void RunSuite(const Suite& suite) {
        std::printf("[%2td/%zu] %s ", &suite - m_suites.data() + 1, m_suites.size(), suite.name.c_str());
        std::fflush(stdout);
        SuiteResult result;
        result.name = suite.name;
        const auto begin = std::chrono::steady_clock::now();
        try {
            RunTests(suite, result);
        } catch (const std::exception& failure) {
            result.problems.emplace_back(failure.what());
        }
        result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        std::printf("%s\n", m_results.Add(result).c_str());
        for (const TestResult& test : result.tests)
            if (test.IsWrong()) std::printf("        not passed: %s\n", test.name.c_str());
    }

    void RunTests(const Suite& suite, SuiteResult& result) {
        for (const std::string& name : TestsOf(suite, m_leftOut)) {
            result.tests.push_back(RunTest(suite, name));
            if (const int left = result.tests.back().leftRunning; left != 0)
                result.problems.push_back(name + " left " + std::to_string(left) + " processes running");
            for (const std::wstring& file : m_place.TakeLeftovers())
                result.problems.push_back(name + " left in the temporary folder: " + driver::ToUtf8(file));
            if (Interruption::HasCome()) throw driver::Failure("interrupted");
        }
    }

    const std::wstring m_folder = driver::OwnPath().parent_path() / "";
    // Each a pattern of names of tests, as GoogleTest takes it, or "entry " and one of entries of ctest; then
    // ": " and the reason.
    const std::vector<std::string> m_leftOut = LinesOf(m_folder + L"left_out.txt");
    std::vector<Suite> m_suites;
    Results m_results{m_folder + L"results.txt"};
    const TemporaryPlace m_place;
};

int Main(int argc, wchar_t** argv) {
    driver::GiveUpShutdown();
    // A test that crashes is a line in the results and not a box that waits for a person. Inherited.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    // A screen that goes dark takes no clicks.
    ::SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED | ES_DISPLAY_REQUIRED);
    if (::GetKeyState(VK_CAPITAL) & 1)
        throw driver::Failure("Caps Lock is on: what the tests type would come out in capitals");
    Interruption::Watch();
    const bool some = argc == 3 && std::wstring(argv[1]) == L"--only";
    if (argc != 1 && !some) throw driver::Failure("usage: run_tests [--only BEGINNING]");
    return Runner(some ? driver::ToUtf8(argv[2]) : "").Run();
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    int outcome = kCouldNotRun;
    try {
        outcome = Main(argc, argv);
    } catch (const std::exception& failure) {
        std::printf("The tests cannot be run: %s\n", failure.what());
    }
    Interruption::AllowEnd();
    return outcome;
}
