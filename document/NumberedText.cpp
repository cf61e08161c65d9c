#include "NumberedText.h"

#include <algorithm>

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// The decimal digits plus add, by hand, so that no length of digits overflows.
std::string DigitsPlus(std::string digits, int add)
{
    int carry = add;
    for (std::size_t i = digits.size(); i-- > 0 && carry != 0;) {
        const int sum = (digits[i] - '0') + carry;
        digits[i] = static_cast<char>('0' + sum % 10);
        carry = sum / 10;
    }
    return carry == 0 ? digits : std::to_string(carry) + digits;
}

}  // namespace

std::string NumberedText(std::string_view text, int add, bool appendWhenNone)
{
    const auto last = std::find_if(text.rbegin(), text.rend(), IsDigit);
    if (last == text.rend())
        return appendWhenNone ? std::string(text) + ' ' + std::to_string(add + 1)
                              : std::string(text);
    const std::size_t end = static_cast<std::size_t>(text.rend() - last);
    std::size_t begin = end - 1;
    while (begin > 0 && IsDigit(text[begin - 1]))
        --begin;
    return std::string(text.substr(0, begin)) +
           DigitsPlus(std::string(text.substr(begin, end - begin)), add) +
           std::string(text.substr(end));
}
