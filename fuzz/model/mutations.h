/* What the fuzzer does to a tree of statements. */
#ifndef KORV_FUZZ_MUTATIONS_H
#define KORV_FUZZ_MUTATIONS_H

#include "random.h"
#include "statement.h"

namespace fuzz {

/* One mutation, chosen at random. */
void Mutate(Statement *root, Random *random);

/* Puts a part of the other tree into the tree: a statement beside one of its kind, or a whole module. */
void Splice(Statement *root, const Statement &other, Random *random);

} // namespace fuzz

#endif // KORV_FUZZ_MUTATIONS_H
