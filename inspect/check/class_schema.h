/* Classes in the schema, by the statements on its nodes. */
#pragma once

#include <qxyang.h>

#include <string>
#include <vector>

#include "model/schema_scan.h"

namespace inspect {

/* True of containers and lists. */
bool MayBeClass(QY_NODE *node);

/* 0: the node is no class. */
uint32_t ClassIdOf(QY_NODE *node);

/* The nearest class above the node, or null. */
QY_NODE *ClassAbove(QY_NODE *node);

/* Keys of a list; 0 for any other node. */
uint32_t KeyNum(QY_NODE *node);

/* Keys of all lists above the node. */
uint32_t KeysAbove(QY_NODE *node);

/* The list whose keys a node of the same class further down takes over, or null. */
QY_NODE *KeyedListAbove(QY_NODE *node);

/* The node, or the topmost one above it, that keeps it out of all trees: a top that is no container, or an operation,
 * notification or the like further down. Null for a node that stands in a tree. */
QY_NODE *OutOfTrees(QY_NODE *node);

/* The extension statements in the node's own statement. In the schema, the library replaces the extension statements of a
 * class of class-type 'leafref' and of its leaves. */
std::vector<QXYANG_STATEMENT_S> ExtensionsWritten(const QXYANG_ORIGIN_S &origin);

/* True if these are the statements of a class of class-type 'leafref'. */
bool IsLeafrefClass(const std::vector<QXYANG_STATEMENT_S> &written);

} // namespace inspect
