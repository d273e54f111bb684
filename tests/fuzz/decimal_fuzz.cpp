// Decimal numbers against those of the library.
#include "tests/fuzz/fuzz_targets.h"

#include "base/decimal.h"
#include "tests/fuzz/fuzz_input.h"

// Lines: the value, the least number of digits, the text before.
void FuzzDecimal(std::string_view input) {
    FuzzInput values(input);
    const std::uint32_t value = values.Number();
    const std::uint32_t minimumDigits = values.Number() % 18;
    const std::wstring before = values.Text();

    std::wstring text = before;
    AppendDecimal(text, value, static_cast<int>(minimumDigits));
    Require(text == before + Digits(value, minimumDigits), "another text");
}
