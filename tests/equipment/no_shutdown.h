// No test may switch off the machine that it runs on, whatever goes wrong in it.
#pragma once

namespace driver {

// Takes the right to shut the system down from this process and from all that it starts, for good: a request
// then fails before it is made. Throws Failure when the right is still there afterwards.
void GiveUpShutdown();

// Whether the right can be used.
bool MayShutDown();

}  // namespace driver
