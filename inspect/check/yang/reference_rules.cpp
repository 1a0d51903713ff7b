/* Definitions that refer to deprecated and obsolete ones of their module. */
#include <algorithm>
#include <set>

#include "check/yang/statement_check.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

const char *StatusText(uint32_t status)
{
    return status == QXYANG_STATUS_OBSOLETE     ? "an obsolete"
           : status == QXYANG_STATUS_DEPRECATED ? "a deprecated"
                                                : "a current";
}

/* "type 't' of a current definition refers to an obsolete one (line 3)" */
std::string ReferenceText(const std::string &from, uint32_t fromStatus, uint32_t status, const std::string &see)
{
    return from + " of " + StatusText(fromStatus) + " definition refers to " + StatusText(status) + " one" + see;
}

void CheckReference(StatementCheck &check, DefinitionKind kind, std::string_view name, const QXYANG_STATEMENT_S &from)
{
    const Definitions &definitions = check.AllDefinitions();
    std::optional<Definition> definition = definitions.Find(kind, check.File(), from, name);
    if (!definition)
        return;
    uint32_t status = definitions.StatusOf(*definition->file, definition->statement);
    uint32_t fromStatus = definitions.StatusOf(check.File(), from.uiIndex);
    if (fromStatus >= status)
        return;
    QXYANG_STATEMENT_S to = StatementAt(definition->file->file, definition->statement);
    check.Report("obsolete-reference",
                 ReferenceText(HeadText(from), fromStatus, status, check.SeeText(*definition->file, to)), from);
}

template <DefinitionKind KIND>
void CheckName(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    CheckReference(check, KIND, ArgumentOf(statement), statement);
}

/* Each feature of the expression; a feature may have no operator's name there. */
void CheckFeatures(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    constexpr std::string_view BETWEEN = " \t\r\n()";
    std::string_view rest = ArgumentOf(statement);
    for (size_t start; (start = rest.find_first_not_of(BETWEEN)) != std::string_view::npos;) {
        rest.remove_prefix(start);
        std::string_view word = rest.substr(0, rest.find_first_of(BETWEEN));
        if (word != "and" && word != "or" && word != "not")
            CheckReference(check, DefinitionKind::Feature, word, statement);
        rest.remove_prefix(word.size());
    }
}

constexpr KeywordRule RULES[] = {
    {"type", CheckName<DefinitionKind::Typedef>},
    {"uses", CheckName<DefinitionKind::Grouping>},
    {"base", CheckName<DefinitionKind::Identity>},
    {"if-feature", CheckFeatures},
};

/* The status of a node or of a node above it, whichever is greater. */
uint32_t StatusOf(QY_NODE *node)
{
    uint32_t status = QXYANG_STATUS_CURRENT;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        QXYANG_NODE_DETAILS_S details = {};
        if (QXYANG_GetNodeDetails(node, &details) != 0)
            throw std::bad_alloc();
        status = std::max(status, details.uiStatus);
    }
    return status;
}

} // namespace

constinit const std::span<const KeywordRule> REFERENCE_RULES = RULES;

void CheckLeafrefStatus(StatementCheck &check)
{
    std::set<std::pair<const QXYANG_FILE *, uint32_t>> seen;
    ForEachOwnNode(check.Module(), [&](QY_NODE *node) {
        QY_NODE *target = QY_NODE_GetLeafrefTargetNode(node, 0);
        if (target == nullptr || ModuleNameOf(target) != std::string_view(QY_MOD_GetModuleName(check.Module())))
            return;
        uint32_t status = StatusOf(target);
        if (status == QXYANG_STATUS_CURRENT)
            return;
        uint32_t fromStatus = StatusOf(node);
        QXYANG_ORIGIN_S origin = OriginOf(node);
        if (fromStatus >= status || !seen.emplace(origin.pstFile, origin.uiStatement).second)
            return;
        check.ForEachFile([&](const OwnFile &file) {
            if (file.file != origin.pstFile)
                return;
            check.Report("obsolete-reference",
                         ReferenceText("leafref '" + NameOf(node) + "'", fromStatus, status, ", " + DataPath(target)),
                         StatementAt(file.file, origin.uiStatement));
        });
    });
}

} // namespace inspect
