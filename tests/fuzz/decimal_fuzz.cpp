// Decimal numbers against those of the library.
#include "tests/fuzz/fuzz_targets.h"

#include "base/decimal.h"

// Lines: the value, the least number of digits, the text before.
void FuzzDecimal(FuzzInput input) {
    const std::uint32_t value = input.Number();
    const std::uint32_t minimumDigits = input.Number() % 18;
    const std::wstring before = input.Text();

    std::wstring text = before;
    AppendDecimal(text, value, static_cast<int>(minimumDigits));
    Require(text == before + Digits(value, minimumDigits), "another text");
}
