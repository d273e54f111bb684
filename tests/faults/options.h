// What the command line asks of the tests.
#pragma once

// Everything instead of a short form: "--full".
[[nodiscard]] bool IsFull();
