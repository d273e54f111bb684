// Ctrl+C, or the close box of the console: what runs ends, nothing more is begun, and what there is is
// written down.
#pragma once

// From now on the console's end is noticed and no longer ends the process at once.
void WatchForInterruption();

// Whether a person has had enough.
bool IsInterrupted();

// Called when all is tidied up: the system waits for that, though not for long.
void AllowEnd();
