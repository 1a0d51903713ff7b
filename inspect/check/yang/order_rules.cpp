/* The order of a module's sections and of its revisions. */
#include <algorithm>
#include <array>

#include "check/yang/statement_check.h"

namespace inspect {
namespace {

enum Section : uint8_t {
    HEADER,
    LINKAGE,
    META,
    REVISIONS,
    BODY
};

struct Row {
    std::string_view keyword;
    Section section;
};

/* What the sections in front of the body hold. */
constexpr std::array<Row, 11> SECTIONS = {{
    {"yang-version", HEADER},
    {"namespace", HEADER},
    {"prefix", HEADER},
    {"belongs-to", HEADER},
    {"import", LINKAGE},
    {"include", LINKAGE},
    {"organization", META},
    {"contact", META},
    {"description", META},
    {"reference", META},
    {"revision", REVISIONS},
}};

Section SectionOf(const QXYANG_STATEMENT_S &statement)
{
    const auto *row = std::find_if(SECTIONS.begin(), SECTIONS.end(),
                                   [&statement](const Row &entry) { return entry.keyword == statement.pcKeyword; });
    return row != SECTIONS.end() ? row->section : BODY;
}

/* Reports the first statement that is out of order. */
void CheckSections(StatementCheck &check, const QXYANG_STATEMENT_S &root)
{
    std::array<uint32_t, BODY + 1> firsts; /* statement of each section */
    firsts.fill(QXYANG_NO_STATEMENT);
    bool isReported = false;
    ForEachIn(check.File().file, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (statement.pcPrefix != nullptr || isReported)
            return;
        Section section = SectionOf(statement);
        if (firsts[section] == QXYANG_NO_STATEMENT)
            firsts[section] = statement.uiIndex;
        if (section == BODY)
            return;
        uint32_t later = *std::min_element(firsts.begin() + section + 1, firsts.end());
        if (later == QXYANG_NO_STATEMENT)
            return;
        isReported = true;
        QXYANG_STATEMENT_S before = StatementAt(check.File().file, later);
        check.Report("statement-order",
                     std::string(statement.pcKeyword) + " should stand in front of " + before.pcKeyword +
                         check.SeeText(check.File(), before),
                     statement);
    });
}

void CheckRevisions(StatementCheck &check, const QXYANG_STATEMENT_S &root)
{
    std::string before;
    ForEachIn(check.File().file, root, [&](const QXYANG_STATEMENT_S &statement) {
        if (!IsYang(statement, "revision"))
            return;
        std::string date(ArgumentOf(statement));
        if (!before.empty() && date >= before)
            check.Report(
                "revision-order",
                "revision " + date +
                    (date == before ? " is there already" : " is newer than the one in front of it, " + before),
                statement);
        before = date;
    });
}

void CheckRoot(StatementCheck &check, const QXYANG_STATEMENT_S &root)
{
    if (root.uiLevel != 0)
        return;
    CheckSections(check, root);
    CheckRevisions(check, root);
}

constexpr KeywordRule RULES[] = {
    {"module", CheckRoot},
    {"submodule", CheckRoot},
};

} // namespace

constinit const std::span<const KeywordRule> ORDER_RULES = RULES;

} // namespace inspect
