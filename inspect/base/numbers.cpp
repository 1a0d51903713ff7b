#include "base/numbers.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <sstream>

namespace inspect {

Number ReadNumber(const std::string &text)
{
    char *end = nullptr;
    const unsigned long long value = std::strtoull(text.c_str(), &end, 0);
    bool negative = text.find('-') != std::string::npos;
    auto read = static_cast<size_t>(end - text.c_str());
    bool rest = read == 0 || text.find_first_not_of(" \t\r\n", read) != std::string::npos;
    return {!rest && !negative, value <= std::numeric_limits<uint32_t>::max(),
            value == std::numeric_limits<unsigned long long>::max(), static_cast<uint32_t>(value)};
}

std::string IntegerText(std::string_view text)
{
    std::string number(text.substr(text.starts_with('-') || text.starts_with('+') ? 1 : 0));
    std::string digits = std::to_string(std::strtoull(number.c_str(), nullptr, 0));
    return (text.starts_with('-') && digits != "0" ? "-" : "") + digits;
}

std::string DecimalText(std::string_view text)
{
    std::string sign = text.starts_with('-') ? "-" : "";
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
    std::string number(text);
    if (number.find('.') != std::string::npos)
        number.erase(number.find_last_not_of('0') + 1);
    return number == "." || number.empty() ? "." : sign + number + (number.find('.') == std::string::npos ? "." : "");
}

std::vector<std::string> Words(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

} // namespace inspect
