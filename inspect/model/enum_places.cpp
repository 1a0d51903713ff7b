#include "model/enum_places.h"

#include <new>
#include <vector>

#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect {
namespace {

using Origins = std::vector<QXYANG_ORIGIN_S>;

uint32_t AddOrigin(const QXYANG_ORIGIN_S *origin, void *origins)
try {
    static_cast<Origins *>(origins)->push_back(*origin);
    return 0;
} catch (const std::bad_alloc &) {
    return 1;
}

/* The statements of that keyword in the one given. */
Origins Within(const QXYANG_ORIGIN_S &around, std::string_view keyword)
{
    Origins found;
    if (around.pstFile == nullptr)
        return found;
    ForEachIn(
        around.pstFile, StatementAt(around.pstFile, around.uiStatement), [&](const QXYANG_STATEMENT_S &statement) {
            if (IsYang(statement, keyword))
                found.push_back({around.pstFile, around.pcFile, around.pcModule, statement.uiIndex, statement.stPlace});
        });
    return found;
}

/* The type statements that the leaf's type leads through, the nearest first. */
Origins TypesOf(QY_NODE *leaf)
{
    Origins types;
    Origins typedefs;
    if (QXYANG_ScanNodeStatements(leaf, "type", AddOrigin, &types) != 0 ||
        QXYANG_ScanNodeTypedefs(leaf, AddOrigin, &typedefs) != 0)
        throw std::bad_alloc();
    for (const QXYANG_ORIGIN_S &origin : typedefs) {
        Origins within = Within(origin, "type");
        types.insert(types.end(), within.begin(), within.end());
    }
    return types;
}

} // namespace

std::map<std::string, Position> EnumPlaces(QY_NODE *leaf, Places *places)
{
    std::map<std::string, Position> found;
    QY_NODE *end = LeafrefEnd(leaf);
    if (end == nullptr)
        return found;
    for (const QXYANG_ORIGIN_S &type : TypesOf(end)) {
        for (const QXYANG_ORIGIN_S &value : Within(type, "enum")) {
            const char *name = StatementAt(value.pstFile, value.uiStatement).pcArgument;
            std::optional<Position> position = places->Of(value);
            if (name != nullptr && position)
                found.emplace(name, *position);
        }
        if (!found.empty())
            break;
    }
    return found;
}

} // namespace inspect
