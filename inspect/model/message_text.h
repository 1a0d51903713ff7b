/* What the library's level-0 messages of a failed load mean to the author of the model. */
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

struct Explanation {
    std::string text;
    std::string node;         /* name of the node or leaf whose statement is at fault; "" when the messages name none */
    std::string within;       /* name of the node with which the library was busy, or "" */
    std::string keyword = {}; /* of the statement that is wrong, or "" */
    std::string argument = {}; /* its argument, if the messages quote it, or "" */
};

/* The explanation of a chain of messages, innermost first. Of a chain that is not known, the first message that is not known
 * is quoted. */
Explanation Explain(const std::vector<std::string> &errors);

/* True if the number of a built-in type stands for a leafref that leads nowhere. */
bool TypeIsMissing(uint32_t type);

/* Built-in type number of "Get Default Type By YangType", when that is what the chain begins with. */
std::optional<uint32_t> TypeWithoutDefault(const std::vector<std::string> &errors);

/* What a message means that the library says while a load goes on. Nothing for those whose reasons the rules of `check`
 * find by themselves, and for those without one. */
std::optional<Explanation> RemarkOf(const std::string &error);

/* True of the messages that end every load though nothing is wrong: the library tries to print trees that are not there. */
bool IsAboutPrinting(const std::string &error);

/* True of what the library says on the way to a key's attribute id. When no way leads there, it says more. */
bool IsOfAttempt(const std::string &error);

/* True if the library says that the schema library has refused a module. */
bool IsSchemaFailure(const std::string &error);

/* All messages that the functions above know, with "*" for each value in them. A test compares them with the library's. */
const std::vector<std::string_view> &KnownMessages();

} // namespace inspect
