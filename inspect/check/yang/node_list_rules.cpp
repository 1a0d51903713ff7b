/* Keys and unique statements. */
#include <algorithm>

#include "base/numbers.h"
#include "check/yang/node_rules.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

bool IsEmptyType(QY_NODE *leaf)
{
    QY_TYPE *type = OwnType(leaf);
    return type != nullptr && QY_TYPE_GetBuiltInBaseType(type) == QY_TYPE_EMPTY;
}

/* RFC 7950, 7.21.5: neither the key nor the uses statement that puts it into the list has a `when`. */
void CheckKeyCondition(NodeCheck &check, QY_NODE *list, QY_NODE *key)
{
    std::optional<NodeStatement> when = StatementOf(key, "when");
    if (QXYANG_ORIGIN_S uses = UsesOf(key); !when && !IsSameStatement(uses, UsesOf(list)))
        when = check.WhenIn(uses);
    if (when && check.NamesOf(*when).isVersion11)
        check.Report("conditional-key", "key '" + NameOf(key) + "' of " + Described(list) + " has a 'when'",
                     {when->origin});
}

void CheckKey(NodeCheck &check, QY_NODE *list, QY_NODE *key, bool listIsConfig)
{
    std::optional<NodeStatement> names = StatementOf(list, "key");
    if (!names)
        return;
    std::string which = "key '" + NameOf(key) + "' of " + Described(list);
    if (IsEmptyType(key) && !check.NamesOf(*names).isVersion11)
        check.Report("empty-key", which + " has type 'empty', which keys of YANG version 1 cannot have",
                     {OriginOf(key), names->origin});
    if (IsConfig(key) != listIsConfig) {
        QXYANG_ORIGIN_S none = {};
        std::optional<NodeStatement> config = StatementOf(key, "config");
        std::optional<NodeStatement> listConfig = StatementOf(list, "config");
        check.Report("key-config",
                     which + (listIsConfig ? " is state, while the list is configuration"
                                           : " is configuration, while the list is state"),
                     {config ? config->origin : none, listConfig ? listConfig->origin : none, OriginOf(list)});
    }
    CheckKeyCondition(check, list, key);
}

/* The leaf that a path of a unique statement leads to, or null. Names without prefix are those of the list's module. */
QY_NODE *LeafAt(NodeCheck &check, QY_NODE *list, const NodeStatement &unique, std::string_view path)
{
    QY_NODE *at = list;
    while (at != nullptr && !path.empty()) {
        std::string_view step = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(step.size() + 1, path.size()));
        PrefixedName name = SplitName(step);
        at = check.ChildOf(at, name.prefix.empty() ? ModuleNameOf(list) : check.NamesOf(unique).ModuleOf(name.prefix),
                           name.name);
    }
    return at;
}

} // namespace

/* RFC 7950, 7.8.2. */
void CheckKeys(NodeCheck &check, QY_NODE *list)
{
    bool isConfig = IsConfig(list);
    if (isConfig && !StatementOf(list, "key"))
        check.Report("list-without-key", Described(list) + " is configuration and has no key",
                     {OriginOf(list), UsesOf(list)});
    ForEachChild(list, [&](QY_NODE *child) {
        if (QY_NODE_GetNodeType(child) == QY_NODE_TYPE_LEAF && (QY_NODE_IsKey(child) & 1U) != 0)
            CheckKey(check, list, child, isConfig);
    });
}

/* RFC 7950, 7.8.3. */
void CheckUnique(NodeCheck &check, QY_NODE *list)
{
    for (const NodeStatement &unique : StatementsOf(list, "unique")) {
        QY_NODE *config = nullptr;
        QY_NODE *state = nullptr;
        for (const std::string &path : Words(std::string(unique.argument)))
            if (QY_NODE *leaf = LeafAt(check, list, unique, path))
                (IsConfig(leaf) ? config : state) = leaf;
        if (config != nullptr && state != nullptr)
            check.Report("unique-config",
                         "unique '" + std::string(unique.argument) + "' of " + Described(list) +
                             " refers to configuration ('" + NameOf(config) + "') and to state ('" + NameOf(state) +
                             "')",
                         {unique.origin, OriginOf(list)});
    }
}

} // namespace inspect
