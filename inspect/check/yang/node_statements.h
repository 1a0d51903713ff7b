/* The statements that hold for a node of the schema: its own, as refine and deviate statements have changed them. */
#pragma once

#include <qxyang.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/* A statement of YANG and its argument, which is empty for one without. Both live as long as the schema's modules. */
struct NodeStatement {
    QXYANG_ORIGIN_S origin;
    std::string_view argument;
};

/* The node's statements of that keyword in their order. */
std::vector<NodeStatement> StatementsOf(const QY_NODE *node, const char *keyword);

/* The last of them, which is the only one where a node can have but one. */
std::optional<NodeStatement> StatementOf(const QY_NODE *node, const char *keyword);

/* The statements of that keyword that stand directly in the one given. */
std::vector<NodeStatement> StatementsWithin(const QXYANG_ORIGIN_S &around, std::string_view keyword);
std::optional<NodeStatement> StatementWithin(const QXYANG_ORIGIN_S &around, std::string_view keyword);

/* The typedef statements that the type of a leaf or leaf-list leads through, the nearest first. */
std::vector<NodeStatement> TypedefsOf(const QY_NODE *leaf);

/* The type statements of a leaf or leaf-list: its own, then those of its typedefs, down to the built-in type. */
std::vector<NodeStatement> TypesOf(const QY_NODE *leaf);

bool IsConfig(const QY_NODE *node);
bool IsSameStatement(const QXYANG_ORIGIN_S &left, const QXYANG_ORIGIN_S &right);

/* The outermost uses statement that brought the node; without file when none did. */
QXYANG_ORIGIN_S UsesOf(const QY_NODE *node);

} // namespace inspect
