/* What libxml2 says of expressions. It prints nothing. */
#pragma once

#include <cstdint>
#include <string>

namespace inspect {

struct XmlVerdict {
    enum Kind : uint8_t {
        Right,
        Wrong,
        TooLarge /* not looked at */
    };

    Kind kind;
    size_t offset = 0; /* bytes in front of what is wrong */
};

/* Whether the text is an XPath 1.0 expression. Which functions, prefixes and variables there are is not looked at. */
XmlVerdict XPathVerdict(const std::string &text);

/* Whether the text is a regular expression of XML Schema. */
XmlVerdict PatternVerdict(const std::string &text);

} // namespace inspect
