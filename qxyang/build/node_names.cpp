#include "build/node_names.h"

#include <algorithm>
#include <unordered_set>

#include "build/definitions.h"
#include "build/node_kinds.h"

namespace qxyang {

/* RFC 7950, 6.2.1: the names of all nodes of one parent are in one identifier space; those within its choices and cases
 * are among them, since choices and cases have no nodes in data. */
void NodeNames::CheckChildren(QY_NODE *parent, const Statement *statement, Scope *scope)
{
    if (const QY_NODE *twice = names_.FindTwice(parent, &build_.module))
        FailTwice(twice, parent, scope, statement);
}

void NodeNames::CheckCases(QY_NODE *choice, const Statement *statement, Scope *scope)
{
    if (const QY_NODE *twice = names_.FindTwiceAmongCases(choice, &build_.module))
        FailTwice(twice, choice, scope, statement);
}

void NodeNames::CheckModule()
{
    QY_NODE &root = build_.module.root;
    const QY_NODE *twice = names_.FindTwice(&root, &build_.module);
    if (twice == nullptr)
        return;
    Unit *where = build_.units.back();
    for (Unit *unit : build_.units) {
        std::vector<const Statement *> found;
        FindStatements(unit->root, build_.UnitScope(*unit), twice->name, found);
        if (!found.empty())
            where = unit;
    }
    FailTwice(twice, &root, build_.UnitScope(*where), where->root);
}

void NodeNames::CheckAdditions(size_t since, const QY_NODE *unfinished)
{
    if (since == added_.size())
        return;
    std::unordered_set<const QY_NODE *> checked;
    for (size_t i = since; i < added_.size(); ++i) {
        QY_NODE *target = added_[i].target;
        QY_NODE *parent = NameScope(target);
        if (parent == unfinished)
            continue;
        const QY_NODE *twice = nullptr;
        if (target->kind == QY_NODE_TYPE_CHOICE && checked.insert(target).second)
            twice = names_.FindTwiceAmongCases(target, &build_.module);
        if (twice == nullptr && checked.insert(parent).second)
            twice = names_.FindTwice(parent, &build_.module);
        if (twice != nullptr)
            FailAddedTwice(*twice, *parent, since, i);
    }
    auto isChecked = [unfinished](const Addition &addition) { return NameScope(addition.target) != unfinished; };
    auto begin = added_.begin() + static_cast<std::ptrdiff_t>(since);
    added_.erase(std::remove_if(begin, added_.end(), isChecked), added_.end());
}

/* Reports the name at the last of the augments that bring it. A case stands twice in one choice. */
void NodeNames::FailAddedTwice(const QY_NODE &node, const QY_NODE &parent, size_t first, size_t met)
{
    const Addition *last = &added_[met];
    bool isCase = node.kind == QY_NODE_TYPE_CASE;
    for (size_t i = first; i < added_.size(); ++i) {
        std::vector<const Statement *> found;
        QY_NODE *target = added_[i].target;
        if (isCase ? target == node.parent : NameScope(target) == &parent)
            FindStatements(added_[i].augment, added_[i].scope, node.name, found);
        if (!found.empty())
            last = &added_[i];
    }
    FailTwice(&node, &parent, last->scope, last->augment);
}

/* Reports the name at the second of the statements that bring it, or at the only one, or at the one around. */
void NodeNames::FailTwice(const QY_NODE *node, const QY_NODE *parent, Scope *scope, const Statement *where)
{
    std::vector<const Statement *> found;
    FindStatements(where, scope, node->name, found);
    if (!found.empty())
        where = found[std::min<size_t>(1, found.size() - 1)];
    build_.Fail(*scope->unit, where, "second node " + Quoted(node->name) + " in " + DescribeNode(parent));
}

/* The statements directly in a statement, or in choices and cases there, that make or bring a node of that name. */
void NodeNames::FindStatements(const Statement *statement, Scope *scope, std::string_view name,
                               std::vector<const Statement *> &found)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword == Kw::Uses) {
            const Grouping *grouping = FindGrouping(build_, scope, child);
            if (grouping != nullptr && grouping->root != nullptr &&
                build_.load.finder.DataChild(grouping->root, grouping->root->module, name) != nullptr)
                found.push_back(child);
            continue;
        }
        if (KindOf(child->keyword) == QY_NODE_TYPE_NONE)
            continue;
        if (name == NodeNameOf(child))
            found.push_back(child);
        else if (child->keyword == Kw::Choice || child->keyword == Kw::Case)
            FindStatements(child, scope, name, found);
    }
}

} // namespace qxyang
