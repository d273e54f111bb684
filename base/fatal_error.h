// The end of a program that cannot go on.
#pragma once

// Ends the process at once and without a word: memory has run out, or a text does not fit where it has to.
[[noreturn]] void EndByFatalError() noexcept;
