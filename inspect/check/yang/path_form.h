/* The form of a leafref's path. */
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

struct PathFault {
    std::string text; /* follows the path: "has blanks between its steps" */
    size_t offset;
};

/* What keeps the text, an XPath expression, from being a path-arg (RFC 7950, 9.9.2 and 14); nothing if it is one. */
std::optional<PathFault> FaultOfPath(std::string_view text);

} // namespace inspect
