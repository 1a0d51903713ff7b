#include "base/numbers.h"

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

std::vector<std::string> Words(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

} // namespace inspect
