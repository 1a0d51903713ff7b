#include "model/statements.h"

#include "base/excerpt.h"

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

std::string StatementPath(const QXYANG_FILE *file, uint32_t index)
{
    std::string path;
    while (index != QXYANG_NO_STATEMENT) {
        QXYANG_STATEMENT_S statement = StatementAt(file, index);
        index = statement.uiParent;
        if (index == QXYANG_NO_STATEMENT && !path.empty())
            break;
        std::string step = statement.pcPrefix != nullptr ? statement.pcPrefix + std::string(":") : "";
        step += statement.pcKeyword;
        if (statement.pcArgument != nullptr)
            step.append(" ").append(Shortened(statement.pcArgument, MAX_SHOWN));
        path.insert(0, path.empty() ? step : step + " > ");
    }
    return path;
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
