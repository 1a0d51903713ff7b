#include "build/new_nodes.h"

namespace qxyang {

QY_NODE *AppendNode(Build &build, const Statement *statement, const Site &site, QY_NODE *parent, uint8_t kind,
                    const char *name)
{
    if (parent->kind == QY_NODE_TYPE_CHOICE && kind != QY_NODE_TYPE_CASE)
        parent = AppendNode(build, statement, site, parent, QY_NODE_TYPE_CASE, name);
    if (++build.load.nodes > limits::SCHEMA_NODES) {
        build.Fail(site.File(), statement,
                   "the load needs more than " + std::to_string(limits::SCHEMA_NODES) + " schema nodes");
        throw LoadStopped{};
    }
    QY_MOD &module = build.module;
    QY_NODE *node = site.isOfGrouping ? module.templates.Make() : module.nodes.Make();
    node->kind = kind;
    node->name = name;
    node->module = &module;
    node->parent = parent;
    (parent->last != nullptr ? parent->last->next : parent->first) = node;
    parent->last = node;
    build.NoteOrigin(node, site.File(), statement);
    return node;
}

void ShowExtensions(Build &build, const Statement *statement, const Site &site, QY_NODE *node, const ExtensionSet *set)
{
    node->extensions = set;
    if (set == nullptr || (build.load.extensions += set->total) <= limits::EXTENSION_STATEMENTS)
        return;
    build.Fail(site.File(), statement,
               "the load needs more than " + std::to_string(limits::EXTENSION_STATEMENTS) +
                   " extension statements of schema nodes");
    throw LoadStopped{};
}

void FailDepth(Build &build, const Statement *statement, Unit &unit)
{
    build.Fail(unit, statement,
               "schema nodes are nested deeper than " + std::to_string(limits::SCHEMA_DEPTH) + " levels");
    throw LoadStopped{};
}

} // namespace qxyang
