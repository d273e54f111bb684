#include "base/program_folder.h"

#include "base/path_buffer.h"
#include "base/resource_modules.h"

#include <windows.h>
#include <shlwapi.h>

namespace {

std::wstring Appended(PathBuffer folder, const wchar_t* name) {
    ::PathAppendW(folder.Data(), name);
    return folder.Text();
}

}  // namespace

ProgramPath GetProgramPath() {
    wchar_t path[MAX_PATH] = {};
    const DWORD length = ::GetModuleFileNameW(ResourceInstance(), path, MAX_PATH);
    return {path, length >= MAX_PATH};
}

std::wstring ProgramFolder() {
    PathBuffer folder(GetProgramPath().text);
    ::PathRemoveFileSpecW(folder.Data());
    return folder.Text();
}

std::wstring FileInProgramFolder(const wchar_t* name) {
    return Appended(PathBuffer(ProgramFolder()), name);
}

std::wstring FileBeside(const ProgramPath& program, const wchar_t* name) {
    PathBuffer folder(program.text);
    ::PathRemoveExtensionW(folder.Data());
    ::PathRemoveFileSpecW(folder.Data());
    return Appended(std::move(folder), name);
}
