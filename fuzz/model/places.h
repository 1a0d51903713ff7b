/* Where statements stand in a tree, and by which names others refer to them. */
#ifndef KORV_FUZZ_PLACES_H
#define KORV_FUZZ_PLACES_H

#include <functional>
#include <string>
#include <vector>

#include "statement.h"

namespace fuzz {

/* A statement with those above it, from its module down. It is good until the tree changes. */
struct Place {
    Statement *parent;
    size_t index;
    std::vector<Statement *> above; /* without the root; the last one is the parent */

    Statement &Self() const { return parent->children[index]; }
    Statement *Module() const;
};

/* Every statement below the root that the filter takes. */
std::vector<Place> PlacesOf(Statement *root, const std::function<bool(const Statement &)> &filter);
std::vector<Place> AllPlaces(Statement *root);

/* "p:name" as the module `from` refers to a definition of the module `to`: its own definitions without prefix or with its
 * own, others with the prefix of the import, or with a prefix that may be wrong when there is none. */
std::string PrefixOf(const Statement &from, const Statement &to);

bool IsDataNode(const Statement &statement);

/* "/p:a/p:b" for a node, as the module `from` refers to it. */
std::string PathOf(const Place &node, const Statement &from);

/* The keyword of what a statement's argument names ("typedef" for "type"), or "". */
std::string Referred(const std::string &keyword);

} // namespace fuzz

#endif // KORV_FUZZ_PLACES_H
