/* Statements to put into others, modules to put beside others, and chains of definitions. */
#ifndef KORV_FUZZ_SNIPPETS_H
#define KORV_FUZZ_SNIPPETS_H

#include "random.h"
#include "statement.h"

namespace fuzz {

/* Puts a statement that may stand there into the parent; false if none is known for its keyword. */
bool InsertSnippet(Statement *parent, Random *random);

/* A module that imports the extensions, and what is below it. */
Statement NewModule(const std::string &name);

/* Puts a chain of definitions into the module, each in terms of the one before (or the one behind, or in a circle), with
 * something that uses its end. Chains of modules and submodules go into the root. */
void InsertChain(Statement *root, Statement *module, Random *random);

} // namespace fuzz

#endif // KORV_FUZZ_SNIPPETS_H
