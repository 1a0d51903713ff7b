/* Extension statements that stand on no node. What the library makes of nodes shows nothing of these. */
#include <array>
#include <string>
#include <string_view>

#include "check/statement_words.h"
#include "check/yang/statement_check.h"

namespace inspect {
namespace {

/* What the library reads statements on, and what hands them on to nodes. */
constexpr std::array<std::string_view, 15> NODES = {"action",    "anydata",      "anyxml", "case", "choice",
                                                    "container", "deviate",      "input",  "leaf", "list",
                                                    "output",    "notification", "refine", "rpc",  "leaf-list"};

/* True of a statement of the extension module that the library reads anywhere at all. */
bool IsOurs(const QXYANG_STATEMENT_S &statement)
{
    std::string_view keyword = statement.pcKeyword;
    return statement.pcPrefix != nullptr && statement.pcModule != nullptr &&
           statement.pcModule == std::string_view(EXTENSION_MODULE_NAME) &&
           (keyword == TASK_ID || IsOneOf(CLASS_STATEMENTS, keyword) || IsOneOf(LEAF_STATEMENTS, keyword));
}

/* True if the statement may be read in the one around it. Which nodes it is read on is looked at with the nodes. */
bool IsReadIn(const QXYANG_STATEMENT_S &around, std::string_view keyword)
{
    if (around.pcPrefix != nullptr)
        return around.pcKeyword == std::string_view(ANCESTOR_KEY) && keyword == "field-id";
    if (IsYang(around, "module") || IsYang(around, "submodule"))
        return keyword == TASK_ID;
    return IsOneOf(NODES, around.pcKeyword);
}

void CheckFile(StatementCheck &check, const QXYANG_FILE *file)
{
    uint32_t outside = QXYANG_NO_STATEMENT; /* level of another module's extension statement around */
    QXYANG_STATEMENT_S statement = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file, i, &statement) == 0; ++i) {
        if (statement.uiLevel > outside)
            continue;
        bool isOurs = IsOurs(statement);
        outside = statement.pcPrefix != nullptr && !isOurs ? statement.uiLevel : QXYANG_NO_STATEMENT;
        if (!isOurs || statement.uiParent == QXYANG_NO_STATEMENT)
            continue;
        QXYANG_STATEMENT_S around = StatementAt(file, statement.uiParent);
        if (!IsReadIn(around, statement.pcKeyword))
            check.Report("no-effect",
                         HeadText(around) + ": " + statement.pcKeyword + " has no effect " +
                             (IsOurs(around) ? "in " : "on ") + WithArticle(around.pcKeyword),
                         statement);
    }
}

} // namespace

void CheckExtensionPlaces(StatementCheck &check)
{
    if (QXYANG_GetLoadedFile(check.Schema(), EXTENSION_MODULE_NAME) != nullptr)
        check.ForEachFile([&check](const OwnFile &file) { CheckFile(check, file.file); });
}

} // namespace inspect
