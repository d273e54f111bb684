// Decimal numbers, read back.
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
    TextReader reader(text);
    Require(reader.Take(before), "the text before has changed");
    Require(reader.TakeNumber(minimumDigits) == value, "another number");
    Require(reader.AtEnd(), "something follows the number");
}
