/* XPath expressions of must and when, and paths of leafrefs. */
#include <algorithm>
#include <set>

#include "base/excerpt.h"
#include "base/text.h"
#include "base/xpath.h"
#include "check/yang/path_form.h"
#include "check/yang/statement_check.h"

namespace inspect {
namespace {

constexpr size_t ANY = SIZE_MAX;

struct FunctionRow {
    std::string_view name;
    size_t least;
    size_t most;
    bool isVersion11 = false;
};

/* The core function library of XPath 1.0, and the functions of RFC 7950, 10. YANG version 1 has current() alone of these. */
constexpr FunctionRow FUNCTIONS[] = {
    {"last", 0, 0},
    {"position", 0, 0},
    {"count", 1, 1},
    {"id", 1, 1},
    {"local-name", 0, 1},
    {"namespace-uri", 0, 1},
    {"name", 0, 1},
    {"string", 0, 1},
    {"concat", 2, ANY},
    {"starts-with", 2, 2},
    {"contains", 2, 2},
    {"substring-before", 2, 2},
    {"substring-after", 2, 2},
    {"substring", 2, 3},
    {"string-length", 0, 1},
    {"normalize-space", 0, 1},
    {"translate", 3, 3},
    {"boolean", 1, 1},
    {"not", 1, 1},
    {"true", 0, 0},
    {"false", 0, 0},
    {"lang", 1, 1},
    {"number", 0, 1},
    {"sum", 1, 1},
    {"floor", 1, 1},
    {"ceiling", 1, 1},
    {"round", 1, 1},
    {"current", 0, 0},
    {"re-match", 2, 2, true},
    {"deref", 1, 1, true},
    {"derived-from", 2, 2, true},
    {"derived-from-or-self", 2, 2, true},
    {"enum-value", 1, 1, true},
    {"bit-is-set", 2, 2, true},
};

std::string NumberText(const FunctionRow &row)
{
    if (row.most == ANY)
        return Count(row.least, "argument") + " or more";
    if (row.least != row.most)
        return std::to_string(row.least) + " or " + Count(row.most, "argument") + (row.most == 1 ? "s" : "");
    return row.most == 0 ? "no argument" : Count(row.most, "argument");
}

/* What is wrong with a call, or nothing. */
std::string FaultOf(StatementCheck &check, const XPathFacts::Function &function)
{
    const auto *row = std::find_if(std::begin(FUNCTIONS), std::end(FUNCTIONS),
                                   [&](const FunctionRow &entry) { return entry.name == function.name; });
    if (row == std::end(FUNCTIONS))
        return "there is no function '" + Shortened(function.name, MAX_SHOWN) + "'";
    if (row->isVersion11 && !check.File().names.isVersion11)
        return "function '" + function.name + "' takes yang-version 1.1";
    if (function.arguments >= row->least && function.arguments <= row->most)
        return "";
    return "function '" + function.name + "' takes " + NumberText(*row) + ", and has " +
           (function.arguments == 0 ? "none" : std::to_string(function.arguments));
}

/* What one expression has been reported for: it is told once, where it stands first. */
using Told = std::set<std::string>;

void CheckFunctions(StatementCheck &check, const XPathFacts &facts, const QXYANG_STATEMENT_S &statement)
{
    Told told;
    for (const XPathFacts::Function &function : facts.functions) {
        std::string text = FaultOf(check, function);
        if (!text.empty() && told.insert(text).second)
            check.ReportIn("xpath-function", std::string(statement.pcKeyword) + ": " + text, statement,
                           function.offset);
    }
}

void CheckPrefixes(StatementCheck &check, const XPathFacts &facts, const QXYANG_STATEMENT_S &statement)
{
    Told told;
    for (const XPathFacts::Prefix &prefix : facts.prefixes)
        if (check.File().names.ModuleOf(prefix.name).empty() && told.insert(prefix.name).second)
            check.ReportIn("xpath-prefix",
                           std::string(statement.pcKeyword) + ": prefix '" + Shortened(prefix.name, MAX_SHOWN) +
                               "' stands for no module in this file",
                           statement, prefix.offset);
}

void CheckFaults(StatementCheck &check, const XPathFacts &facts, const QXYANG_STATEMENT_S &statement)
{
    Told told;
    for (const XPathFacts::Fault &fault : facts.faults)
        if (told.insert(fault.text).second)
            check.ReportIn("xpath-syntax", std::string("the expression of ") + statement.pcKeyword + " " + fault.text,
                           statement, fault.offset);
}

void CheckExpression(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    XPathFacts facts = ReadXPath(std::string(ArgumentOf(statement)));
    CheckFaults(check, facts, statement);
    CheckPrefixes(check, facts, statement);
    CheckFunctions(check, facts, statement);
}

void CheckPath(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    XPathFacts facts = ReadXPath(std::string(ArgumentOf(statement)));
    CheckFaults(check, facts, statement);
    CheckPrefixes(check, facts, statement);
    if (!facts.faults.empty() || facts.tooLarge)
        return;
    if (std::optional<PathFault> fault = FaultOfPath(ArgumentOf(statement)))
        check.ReportIn("leafref-path", "the path of a leafref " + fault->text, statement, fault->offset);
}

constexpr KeywordRule RULES[] = {
    {"must", CheckExpression},
    {"when", CheckExpression},
    {"path", CheckPath},
};

} // namespace

constinit const std::span<const KeywordRule> EXPRESSION_RULES = RULES;

} // namespace inspect
