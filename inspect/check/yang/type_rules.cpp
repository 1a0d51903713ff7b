/* Types: what YANG version 1 does not have, and patterns. */
#include "base/excerpt.h"
#include "base/xml_library.h"
#include "check/yang/statement_check.h"

namespace inspect {
namespace {

void CheckMember(StatementCheck &check, const QXYANG_STATEMENT_S &type)
{
    const OwnFile &file = check.File();
    if (file.names.isVersion11 || !IsYang(StatementAt(file.file, type.uiParent), "type"))
        return;
    std::string builtin(check.AllDefinitions().BuiltinOf(file, type));
    if (builtin != "empty" && builtin != "leafref")
        return;
    bool isOwnName = builtin == ArgumentOf(type);
    check.Report("version-1-type",
                 "a union has the member " + HeadText(type) + (isOwnName ? "" : ", which is '" + builtin + "'") +
                     ": that takes yang-version 1.1",
                 type);
}

void CheckRequireInstance(StatementCheck &check, const QXYANG_STATEMENT_S &statement)
{
    const OwnFile &file = check.File();
    if (file.names.isVersion11)
        return;
    QXYANG_STATEMENT_S type = StatementAt(file.file, statement.uiParent);
    if (IsYang(type, "type") && check.AllDefinitions().BuiltinOf(file, type) == "leafref")
        check.Report("version-1-type", "a leafref has require-instance: that takes yang-version 1.1", statement);
}

void CheckPattern(StatementCheck &check, const QXYANG_STATEMENT_S &pattern)
{
    std::string text(ArgumentOf(pattern));
    XmlVerdict verdict = PatternVerdict(text);
    if (verdict.kind == XmlVerdict::Wrong)
        check.Report(
            "bad-pattern",
            HeadText(pattern) + " is no regular expression of XML Schema: it " + UnreadableText(text, verdict.offset),
            pattern);
}

constexpr KeywordRule RULES[] = {
    {"type", CheckMember},
    {"require-instance", CheckRequireInstance},
    {"pattern", CheckPattern},
};

} // namespace

constinit const std::span<const KeywordRule> TYPE_RULES = RULES;

} // namespace inspect
