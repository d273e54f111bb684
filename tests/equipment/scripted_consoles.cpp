// What ScriptedConverters answers to a stop.
#include "tests/equipment/scripted_converters.h"
#include "tests/support/call_text.h"

#include <numeric>

namespace {

// Of windows that are only talked about.
constexpr ULONG_PTR kBeforeFirst = 0x800'0000;
constexpr std::size_t kBeforeConverters = 1000;

std::size_t NumberOf(HWND window) {
    return reinterpret_cast<ULONG_PTR>(window) - kBeforeFirst;
}

}  // namespace

std::optional<ConsoleWindow> ScriptedConverters::WindowOf(std::size_t number) const {
    if (number >= 1 && number <= consoles.windows.size()) return consoles.windows[number - 1];
    const std::vector<Converter> all = Converters();
    const std::size_t converter = number - kBeforeConverters;
    if (converter < 1 || converter > all.size() || !all[converter - 1].plan.console) return std::nullopt;
    const Conversion& plan = all[converter - 1].plan;
    return ConsoleWindow{plan.processId, plan.console};
}

void ScriptedConverters::ReplaceConsoleCalls() {
    m_replaced.push_back(REPLACE_IMPORT(EnumWindows, [this](WNDENUMPROC callback, LPARAM parameter) {
        if (consoles.whenSearched) consoles.whenSearched();
        std::vector<std::size_t> numbers(consoles.windows.size());
        std::iota(numbers.begin(), numbers.end(), 1);
        const std::vector<Converter> all = Converters();
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (all[i].plan.console && all[i].end) numbers.push_back(kBeforeConverters + i + 1);
        }
        for (const std::size_t number : numbers) {
            consoles.requests.Add(CallText("window", number));
            if (!callback(reinterpret_cast<HWND>(kBeforeFirst + number), parameter)) return FALSE;
        }
        return TRUE;
    }));
    m_replaced.push_back(REPLACE_IMPORT(GetWindowThreadProcessId,
                                        [this](auto original, HWND window, LPDWORD processId) -> DWORD {
                                            const auto console = WindowOf(NumberOf(window));
                                            if (!console) return original(window, processId);
                                            if (processId) *processId = console->processId;
                                            return 1;
                                        }));
    m_replaced.push_back(
        REPLACE_IMPORT(GetClassNameW, [this](auto original, HWND window, LPWSTR name, int size) {
            const auto console = WindowOf(NumberOf(window));
            if (!console) return original(window, name, size);
            if (!consoles.reportsClassNames) return 0;
            ::lstrcpynW(name, console->className.c_str(), size);
            return ::lstrlenW(name);
        }));
    m_replaced.push_back(REPLACE_IMPORT(
        SendNotifyMessageW, [this](auto original, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
            const std::size_t number = NumberOf(window);
            const auto console = WindowOf(number);
            if (!console) return original(window, message, wParam, lParam);
            const bool closes = message == WM_SYSCOMMAND && wParam == SC_CLOSE && lParam == 0;
            consoles.requests.Add(
                CallText(closes ? "WM_SYSCOMMAND SC_CLOSE to" : "message " + Hex(message) + " to", number));
            const std::size_t converter = number > kBeforeConverters ? number - kBeforeConverters : 0;
            if (consoles.whenAsked) consoles.whenAsked(static_cast<int>(converter), *console, closes);
            return TRUE;
        }));
    m_replaced.push_back(REPLACE_IMPORT(TerminateJobObject, [this](auto original, HANDLE job, UINT exitCode) {
        consoles.requests.Add("TerminateJobObject " + (job ? Hex(exitCode) : "without a job"));
        if (consoles.whenJobEnds) consoles.whenJobEnds(exitCode);
        return original(job, exitCode);
    }));
}
