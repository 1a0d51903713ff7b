/* YANG statements as a tree, and the text in which inputs of the model target are kept.
 *
 * A line is a statement: its depth in pairs of blanks, its keyword, a blank, its argument up to the end of the line. Other
 * bytes than printable ASCII stand as \xHH, a backslash is doubled. At the outermost level stand the modules of one input
 * and what is done with them. Statements that no module has:
 *
 *     # ...             a comment
 *     %file NAME        its module goes into a file of that name instead of MODULE.yin
 *     %repeat N         its statements, N times; in names {i} counts from 0, {d} down to 0, {i+1} is the next number,
 *                       {i+1%} the next one around a circle of N, {j} the {i} of the enclosing repetition
 *     %nest N           its first statement N times, each within the one before, and the others in the innermost
 *     {*N}              in an argument: N letters
 *     %load NAME [REV]  load, instead of every module of the input in order
 *     %unload NAME [REV]
 *     %levels BITS      which log levels are open (all)
 *     %fail-host N      once more, with allocation N of the host failing during the loads
 *     %fail-schema N    the same with the schema layer's own memory */
#ifndef KORV_FUZZ_STATEMENT_H
#define KORV_FUZZ_STATEMENT_H

#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

struct Statement {
    std::string keyword; /* with a prefix: a statement of an extension */
    std::string argument;
    std::vector<Statement> children;
};

/* The root, which has no keyword. Any text is a tree: a line that is indented too far stands one level below the line
 * before. */
Statement ParseStatements(std::string_view text);

/* The text of the root's statements. */
std::string ToText(const Statement &root);

/* The first child with the keyword, or null; its argument, or "". */
const Statement *FindChild(const Statement &parent, std::string_view keyword);
std::string ChildArgument(const Statement &parent, std::string_view keyword);

bool IsPseudo(const Statement &statement);

} // namespace fuzz

#endif // KORV_FUZZ_STATEMENT_H
