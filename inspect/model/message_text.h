/* What the library's level-0 messages of a failed load mean to the author of the model. */
#ifndef KORV_INSPECT_MESSAGE_TEXT_H
#define KORV_INSPECT_MESSAGE_TEXT_H

#include <optional>
#include <string>
#include <vector>

namespace inspect {

struct Explanation {
    std::string text;
    std::string node;         /* name of the node or leaf whose statement is at fault; "" when the messages name none */
    std::string within;       /* name of the node with which the library was busy, or "" */
    std::string keyword = {}; /* of the extension statement that the messages quote, or "" */
    std::string argument = {};
};

/* The explanation of a chain of messages, innermost first. A chain that is not known explains itself: its first message
 * is the text. */
Explanation Explain(const std::vector<std::string> &errors);

/* A built-in type number that stands for a leafref that leads nowhere. */
bool TypeIsMissing(uint32_t type);

/* Built-in type number of "Get Default Type By YangType", when that is what the chain begins with. */
std::optional<uint32_t> TypeWithoutDefault(const std::vector<std::string> &errors);

/* What the library says while a load goes on, and why. */
enum class Remark {
    OTHER,
    ANCESTOR_KEY, /* it cannot map an ancestor key */
    FIELD_ID,     /* it finds a leaf without attribute id on its way */
};
Remark RemarkOf(const std::string &error);

} // namespace inspect

#endif // KORV_INSPECT_MESSAGE_TEXT_H
