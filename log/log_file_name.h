#pragma once

// Name of the conversion log, which is in the program's folder. The interpreter, which runs in that folder,
// is given the bare name.
inline constexpr wchar_t kLogFileName[] = L"TalvenorLog.txt";
