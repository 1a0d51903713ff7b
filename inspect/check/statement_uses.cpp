#include "check/statement_uses.h"

#include <string_view>

#include "model/statements.h"

namespace inspect {
namespace {

/* The name of the module whose file, or whose submodule's, it is. */
std::string ModuleOf(const QXYANG_FILE *file)
{
    QXYANG_STATEMENT_S root = StatementAt(file, 0);
    return IsYang(root, "submodule") ? ArgumentIn(file, root, "belongs-to") : root.pcArgument;
}

} // namespace

void StatementUses::NotRead(const QXYANG_ORIGIN_S &statement, Finding finding)
{
    if (statement.pstFile != nullptr)
        findings_.emplace_back(KeyOf(statement), std::move(finding));
}

std::vector<Finding> StatementUses::TakeFindings(const std::set<std::string> &modules)
{
    std::vector<Finding> findings;
    for (auto &[key, finding] : findings_)
        if (!read_.contains(key) && modules.contains(ModuleOf(key.first)))
            findings.push_back(std::move(finding));
    findings_.clear();
    return findings;
}

} // namespace inspect
