#include "check/findings.h"

#include "model/statements.h"

namespace inspect {

void PlaceAt(const std::optional<Position> &position, Finding *finding)
{
    PlaceAt(position, &finding->cause);
    if (position && position->statement.pstFile != nullptr)
        finding->statement = StatementPath(position->statement.pstFile, position->statement.uiStatement);
}

std::string TextOf(const Finding &finding)
{
    return finding.cause.text +
           (finding.places == 1 ? ""
                                : " (in " + std::to_string(finding.places) + " places, first " + finding.path + ")");
}

} // namespace inspect
