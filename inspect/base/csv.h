/* Fields of CSV. */
#pragma once

#include <algorithm>
#include <string>

namespace inspect {

/* The field with the quotes that RFC 4180 asks for. */
inline std::string CsvField(const std::string &field)
{
    auto isSpecial = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
    if (std::none_of(field.begin(), field.end(), isSpecial))
        return field;
    std::string quoted = "\"";
    for (char c : field)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

} // namespace inspect
