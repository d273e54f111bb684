// Answers in the system's place: converters, their consoles, and the threads that wait for them.
#include "tests/faults/harness/platform.h"
#include "tests/faults/harness/program_host.h"
#include "tests/support/call_text.h"

#include <process.h>
#include <shlwapi.h>

#include <algorithm>
#include <memory>

namespace {

constexpr DWORD kForeignProcess = 4;
constexpr DWORD kFirstProcess = 4242;  // that of converter 0, which there is not
constexpr DWORD kConversionMs = 7000;
constexpr DWORD kClosedByUser = 3;

// As the system: what is not there cannot be started, nor in a folder that is not there.
DWORD WhyNotStarted(const ScriptedConverters::Start& start) {
    if (!::PathFileExistsW(start.interpreter.c_str())) return ERROR_FILE_NOT_FOUND;
    return ::PathIsDirectoryW(start.folder.c_str()) ? ERROR_SUCCESS : ERROR_DIRECTORY;
}

struct WorkerStart {
    void (*start)(void*);
    void* argument;
    std::atomic<int>& workers;
};

void __cdecl RunWorker(void* parameter) {
    const std::unique_ptr<WorkerStart> worker(static_cast<WorkerStart*>(parameter));
    CurrentHost().watch.Happens("worker starts");
    worker->start(worker->argument);
    --worker->workers;
}

}  // namespace

Conversion Platform::PlanFor(const ScriptedConverters::Start& start, int number) {
    Note("starts", (start.startup.wShowWindow == SW_HIDE ? "hidden " : "visible ") + Utf8(start.title) +
                       " in " + Utf8(start.folder) + ": " + Utf8(start.arguments));
    Conversion plan = conversions[std::min(m_requested++, conversions.size() - 1)];
    if (plan.startError == 0) plan.startError = WhyNotStarted(start);
    if (plan.startError == 0) converters.tick += kConversionMs;
    plan.processId = kFirstProcess + static_cast<DWORD>(number);
    return plan;
}

void Platform::PlanConsoles() {
    ScriptedConsoles& consoles = converters.consoles;
    consoles.windows = {{kForeignProcess}};
    consoles.whenSearched = [this] {
        const std::vector<int> held = NumbersOf([](const Converter& one) { return one.isHeld; });
        Note("searches", held.empty() ? "nobody" : Numbers(held, ' '));
    };
    consoles.whenAsked = [this](int converter, const ConsoleWindow& window, bool toClose) {
        const bool isTerminal = window.className == kTerminalClass;
        const std::string name = (isTerminal ? "terminal " : "console ") + std::to_string(converter);
        Note("closing", toClose && converter != 0 ? name : "something else");
        if (toClose && converter != 0 && !isTerminal && !consolesIgnoreClosing) {
            converters.Release(converter, kClosedByUser);
        }
    };
    consoles.whenJobEnds = [this](DWORD exitCode) {
        std::string ended = Hex(exitCode).substr(2) + ':';
        for (const int number : NumbersOf([](const Converter& one) { return one.isInJob && one.end; })) {
            converters.Release(number, exitCode);
            ended += ' ' + std::to_string(number);
        }
        Note("jobs", ended);
    };
}

std::vector<int> Platform::NumbersOf(bool (*fits)(const Converter& converter)) const {
    const std::vector<Converter> all = converters.Converters();
    std::vector<int> numbers;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (fits(all[i])) numbers.push_back(static_cast<int>(i) + 1);
    }
    return numbers;
}

void Platform::AnswerConverters() {
    m_answers.push_back(
        REPLACE_IMPORT(_beginthread, [this](void(__cdecl * start)(void*), unsigned stack, void* argument) {
            ++m_workers;
            return ::_beginthread(&RunWorker, stack, new WorkerStart{start, argument, m_workers});
        }));
}
