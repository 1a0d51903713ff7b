/* The schema's nodes and what their statements say, with the scans of the contract as loops. */
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include <qxyang.h>

namespace inspect {

using NodeVisitor = std::function<void(QY_NODE *)>;

void ForEachTop(QY_MOD *module, const NodeVisitor &visit);
void ForEachChild(QY_NODE *node, const NodeVisitor &visit);
void ForEachAugment(QY_MOD *module, const NodeVisitor &visit);

/* The node and everything below it, parents first. */
void ForEachBelow(QY_NODE *node, const NodeVisitor &visit);

/* Every node of the trees that the library reads for the modules, each once: a module's own, then those to which its
 * augments add. */
void ForEachNode(std::span<QY_MOD *const> modules, const NodeVisitor &visit);
inline void ForEachNode(QY_MOD *module, const NodeVisitor &visit)
{
    ForEachNode(std::span(&module, 1), visit);
}

/* Every node that the module defines, each once, wherever its augments put it. */
void ForEachOwnNode(QY_MOD *module, const NodeVisitor &visit);

/* The node at the top of the schema above the node, or the node itself. */
QY_NODE *TopOf(QY_NODE *node);

std::string NameOf(QY_NODE *node);
const char *ModuleNameOf(QY_NODE *node);

/* "leaf", "action" */
const char *KindOf(QY_NODE *node);

/* "leaf 'x'" */
std::string Described(QY_NODE *node);

/* Statements of the extension module, in their order. */
struct Extension {
    QY_EXT *instance;
    std::string keyword;
    std::string argument;
    QXYANG_ORIGIN_S origin; /* its statement */
};
std::vector<Extension> ExtensionsOf(QY_NODE *node);
std::vector<Extension> ExtensionsOf(QY_MOD *module);

/* The statements in one that the context's node or module has. */
std::vector<Extension> ExtensionsWithin(QY_CTX *schema, QY_EXT *instance);

/* Arguments of the leaf's or node's statements with this keyword. */
std::vector<std::string> ExtensionArguments(QY_NODE *node, const std::string &keyword);

/* The leaf's type, or null. */
QY_TYPE *OwnType(QY_NODE *leaf);

/* The last leaf of the leaf's chain of leafrefs, or the leaf itself; null beyond the number of leafrefs that the library
 * follows. */
QY_NODE *LeafrefEnd(QY_NODE *leaf);

/* The type that a leaf's values have, with leafrefs followed to their end; null when a target is missing, or when there are
 * more leafrefs than the library follows. */
QY_TYPE *FinalType(QY_NODE *leaf);

/* The leafref without target that the leaf is, or at which its leafrefs end; null for any other leaf. */
QY_NODE *BrokenLeafref(QY_NODE *leaf);

/* Leafrefs that the library follows from a leaf to its type. */
inline constexpr int MAX_LEAFREF_HOPS = 64;

/* True if the leaf leads through more leafrefs than that. */
bool LeadsThroughTooMany(QY_NODE *leaf);

} // namespace inspect
