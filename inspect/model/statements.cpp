#include "model/statements.h"

namespace inspect {

QXYANG_STATEMENT_S StatementAt(const QXYANG_FILE *file, uint32_t index)
{
    QXYANG_STATEMENT_S statement = {};
    (void)QXYANG_GetStatement(file, index, &statement);
    return statement;
}

bool IsYang(const QXYANG_STATEMENT_S &statement, std::string_view keyword)
{
    return statement.pcPrefix == nullptr && keyword == statement.pcKeyword;
}

std::string ArgumentIn(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &around, std::string_view keyword)
{
    for (uint32_t i = around.uiFirstChild; i != QXYANG_NO_STATEMENT;) {
        QXYANG_STATEMENT_S statement = StatementAt(file, i);
        if (IsYang(statement, keyword) && statement.pcArgument != nullptr)
            return statement.pcArgument;
        i = statement.uiNext;
    }
    return "";
}

} // namespace inspect
