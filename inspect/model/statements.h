/* Statements of a file that the schema layer has read. */
#pragma once

#include <qxyang.h>

#include <string>
#include <string_view>

namespace inspect {

QXYANG_STATEMENT_S StatementAt(const QXYANG_FILE *file, uint32_t index);

/* True if the statement is YANG's own one of that keyword. */
bool IsYang(const QXYANG_STATEMENT_S &statement, std::string_view keyword);

/* Calls visit(statement) for each statement directly in the one given. */
template <class Visit>
void ForEachIn(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &around, Visit visit)
{
    for (uint32_t i = around.uiFirstChild; i != QXYANG_NO_STATEMENT;) {
        QXYANG_STATEMENT_S statement = StatementAt(file, i);
        visit(statement);
        i = statement.uiNext;
    }
}

/* "grouping g > leaf x > type string": the statement and those around it, but for the one that begins the file. Long
 * arguments are cut. */
std::string StatementPath(const QXYANG_FILE *file, uint32_t index);

/* The argument of the first of YANG's own statements with that keyword directly in the one given, or "". */
std::string ArgumentIn(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &around, std::string_view keyword);

} // namespace inspect
