/* Fields of CSV. */
#pragma once

#include <string>

namespace inspect {

/* The field with the quotes that RFC 4180 asks for. */
inline std::string CsvField(const std::string &field)
{
    if (field.find_first_of(",\"\r\n") == std::string::npos)
        return field;
    std::string quoted = "\"";
    for (char c : field)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

} // namespace inspect
