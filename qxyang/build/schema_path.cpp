#include "build/schema_path.h"

#include <algorithm>

#include "build/node_kinds.h"

namespace qxyang {

namespace {

std::string PathTitle(const Statement *statement)
{
    return std::string(KeywordOf(statement->keyword).name) + " " + Quoted(statement->argument);
}

} // namespace

bool SchemaPath::Parse(Build &build, Unit &unit, const Statement *statement, bool absolute)
{
    absolute_ = absolute;
    std::string_view rest = statement->argument;
    if (rest.starts_with('/') != absolute) {
        build.Fail(unit, statement,
                   PathTitle(statement) + ": the path must " + (absolute ? "begin with '/'" : "not begin with '/'"));
        return false;
    }
    if (absolute)
        rest.remove_prefix(1);
    for (;;) {
        size_t end = std::min(rest.find('/'), rest.size());
        std::string_view text = Trim(rest.substr(0, end));
        if (!IsReference(text)) {
            build.Fail(unit, statement, PathTitle(statement) + ": " + Quoted(text) + " is no name of a node");
            return false;
        }
        if (steps_.size() == limits::PATH_STEPS) {
            build.Fail(unit, statement,
                       PathTitle(statement) + ": more than " + std::to_string(limits::PATH_STEPS) + " steps");
            return false;
        }
        Reference reference = SplitReference(text);
        QY_MOD *module = build.ModuleOf(unit, statement, reference);
        if (module == nullptr)
            return false;
        steps_.push_back({module, reference.name});
        if (end == rest.size())
            return true;
        rest.remove_prefix(end + 1);
    }
}

QY_NODE *SchemaPath::Follow(Build &build, Unit &unit, const Statement *statement, QY_NODE *parent) const
{
    QY_NODE *at = absolute_ ? &steps_.front().module->root : parent;
    for (const SchemaStep &step : steps_) {
        QY_NODE *child = build.load.finder.SchemaChild(at, step.module, step.name);
        if (child == nullptr) {
            FailStep(build, unit, statement, at, step);
            return nullptr;
        }
        at = child;
    }
    return at;
}

/* The hint is a prefix if the step has none and an imported module has such a node. */
void SchemaPath::FailStep(Build &build, Unit &unit, const Statement *statement, QY_NODE *at,
                          const SchemaStep &step) const
{
    bool isTop = absolute_ && &step == &steps_.front(); // where each module has nodes of its own
    std::string sentence = PathTitle(statement) + ": " + DescribeNode(at) + " has no node " + Quoted(step.name);
    if (at != &step.module->root)
        sentence += " of module " + Quoted(step.module->name);
    build.load.failures.Add(unit.source, statement->offset, sentence, [&] {
        for (const PrefixBinding *binding : unit.bindings) {
            QY_NODE *above = isTop ? &binding->module->root : at;
            if (step.module == unit.module && binding->module != unit.module &&
                build.load.finder.SchemaChild(above, binding->module, step.name) != nullptr)
                return PrefixHint(binding->name, step.name);
        }
        return build.NearestHint({{}, step.name}, [at, &step](auto &&offer) {
            for (const QY_NODE *other = FirstChild(at); other != nullptr; other = other->next)
                if (other->module == step.module)
                    offer(other->name);
        });
    });
}

} // namespace qxyang
