// Whole small files, for tests and tools. Each throws driver::Failure when it cannot do its work.
#pragma once
#include <string>
#include <string_view>

namespace driver {

bool FileExists(const std::wstring& path);
std::string ReadFileBytes(const std::wstring& path);
void WriteFileBytes(const std::wstring& path, std::string_view bytes);  // in place of what was there
void AppendFileBytes(const std::wstring& path,
                     std::string_view bytes);  // in one write, others may append too

}  // namespace driver
