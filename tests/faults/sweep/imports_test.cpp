// Nothing that the built program imports is left out of the sweep without a reason.
#include "tests/equipment/file_bytes.h"
#include "tests/faults/harness/failure_table.h"
#include "tests/faults/scenarios/scenarios.h"
#include "tests/faults/sweep/sweep.h"
#include "tests/support/replaced_imports.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

std::set<std::string> ImportsOfTheProgram() {
    const std::wstring program = driver::OwnPath().parent_path() / TALVENOR_PROGRAM;
    // Mapped as an image and nothing more: none of its code runs.
    const HMODULE image = ::LoadLibraryExW(program.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
    if (!image) throw std::runtime_error("the built program cannot be mapped");
    std::set<std::string> names;
    for (const ImportSlot& slot : ImportSlots(image)) names.insert(slot.name);
    ::FreeLibrary(image);
    return names;
}

std::set<std::string> FunctionsCalledInScenarios() {
    std::set<std::string> functions;
    for (const Scenario& scenario : AllScenarios()) {
        for (const std::string& call : CallsOf(scenario).calls) functions.insert(FunctionOf(call));
    }
    return functions;
}

TEST(FaultSweepImports, AreAllSweptOrHaveAReasonWhyNot) {
    const std::set<std::string> called = FunctionsCalledInScenarios();
    std::set<std::string> imported = ImportsOfTheProgram();
    ASSERT_GT(imported.size(), 100u) << "the import table was not read";
    // Found while the program runs, because of where their library must come from, and methods of objects.
    imported.insert({"GetFileVersionInfoSizeW", "GetFileVersionInfoW", "GetOpenFileNameW",
                     "IAccPropServices::ClearHwndProps", "IAccPropServices::SetHwndPropStr",
                     "ITaskbarList3::HrInit", "ITaskbarList3::SetProgressState",
                     "ITaskbarList3::SetProgressValue", "SetDefaultDllDirectories", "VerQueryValueW"});
    for (const std::string& function : imported) {
        const bool swept = called.contains(function);
        EXPECT_TRUE(swept || WhyNotFailed(function))
            << function << (FindFailure(function) ? " is called in no scenario" : " is not known");
        EXPECT_FALSE(swept && WhyNotFailed(function)) << function << " is swept in spite of a reason not to";
    }
}

}  // namespace
