#include "schema_path.h"

namespace qxyang {

namespace {

std::string pathTitle(const Statement *statement)
{
    return std::string(keywordOf(statement->keyword).name) + " " + quoted(statement->argument);
}

}  // namespace

bool SchemaPath::parse(Build &build, Unit &unit, const Statement *statement, bool absolute)
{
    absolute_ = absolute;
    std::string_view rest = statement->argument;
    if (rest.starts_with('/') != absolute) {
        build.fail(unit, statement,
                   pathTitle(statement) + ": the path must " + (absolute ? "begin with '/'" : "not begin with '/'"));
        return false;
    }
    if (absolute)
        rest.remove_prefix(1);
    for (;;) {
        size_t end = std::min(rest.find('/'), rest.size());
        std::string_view text = trim(rest.substr(0, end));
        if (!isReference(text)) {
            build.fail(unit, statement, pathTitle(statement) + ": " + quoted(text) + " is no name of a node");
            return false;
        }
        if (steps_.size() == limits::kPathSteps) {
            build.fail(unit, statement,
                       pathTitle(statement) + ": more than " + std::to_string(limits::kPathSteps) + " steps");
            return false;
        }
        Reference reference = splitReference(text);
        QY_MOD *module = build.moduleOf(unit, statement, reference);
        if (module == nullptr)
            return false;
        steps_.push_back({module, reference.name});
        if (end == rest.size())
            return true;
        rest.remove_prefix(end + 1);
    }
}

QY_NODE *SchemaPath::follow(Build &build, Unit &unit, const Statement *statement, QY_NODE *parent) const
{
    QY_NODE *at = absolute_ ? &steps_.front().module->root : parent;
    for (const SchemaStep &step : steps_) {
        QY_NODE *child = build.load.finder.schemaChild(at, step.module, step.name);
        if (child == nullptr) {
            NearestName nearest(step.name);
            for (child = firstChild(at); child != nullptr; child = child->next)
                if (child->module == step.module)
                    nearest.offer(child->name);
            build.fail(unit, statement,
                       pathTitle(statement) + ": " + describeNode(at) + " has no node " + quoted(step.name) +
                           " of module " + quoted(step.module->name) + nearest.hint());
            return nullptr;
        }
        at = child;
    }
    return at;
}

std::string_view kindName(uint8_t kind)
{
    switch (kind) {
        case QY_NODE_TYPE_CONTAINER:
            return "container";
        case QY_NODE_TYPE_LEAF:
            return "leaf";
        case QY_NODE_TYPE_LEAF_LIST:
            return "leaf-list";
        case QY_NODE_TYPE_LIST:
            return "list";
        case QY_NODE_TYPE_CHOICE:
            return "choice";
        case QY_NODE_TYPE_CASE:
            return "case";
        case QY_NODE_TYPE_ANYXML:
            return "anyxml";
        case QY_NODE_TYPE_ANYDATA:
            return "anydata";
        case QY_NODE_TYPE_RPC:
            return "operation";
        case QY_NODE_TYPE_NOTIFICATION:
            return "notification";
        default:
            return "node";
    }
}

std::string describeNode(const QY_NODE *node)
{
    if (node->kind == kRootKind)
        return node->name != nullptr ? "grouping " + quoted(node->name) : "module " + quoted(node->module->name);
    if (node->kind == QY_NODE_TYPE_INPUT || node->kind == QY_NODE_TYPE_OUTPUT)
        return std::string(node->name) + " of " + quoted(node->parent->name);
    return std::string(kindName(node->kind)).append(" ").append(quoted(node->name));
}

}  // namespace qxyang
