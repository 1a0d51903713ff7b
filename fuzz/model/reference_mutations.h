/* Mutations that know what names refer to. */
#ifndef KORV_FUZZ_REFERENCE_MUTATIONS_H
#define KORV_FUZZ_REFERENCE_MUTATIONS_H

#include "random.h"
#include "statement.h"

namespace fuzz {

/* A name or path in an argument becomes that of something which is there. */
void Rewire(Statement *root, Random *random);

/* A definition gets another name, and most of the time what refers to it as well. */
void RenameBoth(Statement *root, Random *random);

/* A prefix in an argument or keyword becomes another one, or goes. */
void ChangePrefix(Statement *root, Random *random);

/* An augment, deviation, leafref or refine of a node that is there. */
void AddTargeting(Statement *root, Random *random);

/* A node becomes a grouping, with a "uses" in its place. */
void IntoGrouping(Statement *root, Random *random);

} // namespace fuzz

#endif // KORV_FUZZ_REFERENCE_MUTATIONS_H
