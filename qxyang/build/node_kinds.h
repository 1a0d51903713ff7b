/* Node types: which statements make nodes of which type, and how failures describe nodes. */
#pragma once

#include <array>
#include <string>

#include "schema/model.h"
#include "syntax/statement.h"

namespace qxyang {

constexpr std::array<uint8_t, KW_COUNT> MakeNodeKinds()
{
    std::array<uint8_t, KW_COUNT> kinds{};
    auto set = [&kinds](Kw keyword, uint8_t kind) { kinds[static_cast<size_t>(keyword)] = kind; };
    set(Kw::Container, QY_NODE_TYPE_CONTAINER);
    set(Kw::Leaf, QY_NODE_TYPE_LEAF);
    set(Kw::LeafList, QY_NODE_TYPE_LEAF_LIST);
    set(Kw::List, QY_NODE_TYPE_LIST);
    set(Kw::Choice, QY_NODE_TYPE_CHOICE);
    set(Kw::Case, QY_NODE_TYPE_CASE);
    set(Kw::Anyxml, QY_NODE_TYPE_ANYXML);
    set(Kw::Anydata, QY_NODE_TYPE_ANYDATA);
    set(Kw::Rpc, QY_NODE_TYPE_RPC);
    set(Kw::Action, QY_NODE_TYPE_RPC);
    set(Kw::Input, QY_NODE_TYPE_INPUT);
    set(Kw::Output, QY_NODE_TYPE_OUTPUT);
    set(Kw::Notification, QY_NODE_TYPE_NOTIFICATION);
    return kinds;
}

inline constexpr std::array<uint8_t, KW_COUNT> NODE_KINDS = MakeNodeKinds();
static_assert(QY_NODE_TYPE_NONE == 0); // the type of those that are not set

/* The type of the node that a statement makes, or QY_NODE_TYPE_NONE. */
inline uint8_t KindOf(Kw keyword)
{
    return NODE_KINDS[static_cast<size_t>(keyword)];
}

/* The name of the node that a statement makes. */
inline const char *NodeNameOf(const Statement *statement)
{
    if (statement->keyword == Kw::Input)
        return "input";
    return statement->keyword == Kw::Output ? "output" : statement->argument;
}

/* "container 'c'", "module 'm'", "grouping 'g'", "input of 'reset'". */
std::string DescribeNode(const QY_NODE *node);

} // namespace qxyang
