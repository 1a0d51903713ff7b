#include "diff/module_reader.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>

#include "base/numbers.h"
#include "diff/item_reader.h"
#include "model/module_search.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::diff {
namespace {

uint64_t Mixed(uint64_t hash, std::string_view text)
{
    return hash * 1099511628211U ^ std::hash<std::string_view>()(text);
}

std::string_view OrEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

/* Marks of all statements. YIN writes an extension's argument as an element of its own where the extension's definition says so:
 * such an element counts as the argument. */
class Marking {
  public:
    Marking(const QXYANG_FILE *file, FileNames *files, std::vector<Mark> *marks)
        : file_(file), files_(files), marks_(marks)
    {
    }

    void Run()
    {
        QXYANG_STATEMENT_S statement = {};
        for (uint32_t i = 0; QXYANG_GetStatement(file_, i, &statement) == 0; ++i) {
            if (IsArgument(statement))
                continue;
            uint64_t hash = Mixed(statement.uiLevel, OrEmpty(statement.pcModule));
            hash = Mixed(Mixed(hash, statement.pcKeyword), Smoothed(ArgumentOf(statement)));
            marks_->push_back({hash, files_->Of(file_, statement)});
        }
    }

  private:
    bool IsArgument(const QXYANG_STATEMENT_S &statement) const
    {
        return statement.uiArgumentForm == QXYANG_ARGUMENT_TEXT && statement.uiParent != QXYANG_NO_STATEMENT &&
               StatementAt(file_, statement.uiParent).uiFirstChild == statement.uiIndex;
    }

    std::string_view ArgumentOf(const QXYANG_STATEMENT_S &statement) const
    {
        if (statement.pcArgument != nullptr || statement.uiFirstChild == QXYANG_NO_STATEMENT)
            return OrEmpty(statement.pcArgument);
        QXYANG_STATEMENT_S first = StatementAt(file_, statement.uiFirstChild);
        return IsArgument(first) ? OrEmpty(first.pcArgument) : "";
    }

    const QXYANG_FILE *file_;
    FileNames *files_;
    std::vector<Mark> *marks_;
};

} // namespace

/* What stands at the top of a module or submodule. */
void ModuleReader::ReadStatement(const QXYANG_FILE *file, const QXYANG_STATEMENT_S &statement, ModuleModel *model)
{
    if (statement.pcArgument == nullptr)
        return;
    Where where = files_.Of(file, statement);
    if (StatementAt(file, 0).pcArgument == model->name)
        for (Rule rule : {Rule("namespace"), Rule("prefix"), Rule("yang-version")})
            if (IsYang(statement, rule->name))
                model->facts.push_back({rule, std::string(statement.pcArgument), where});
    for (const char *keyword : {"feature", "identity", "typedef", "grouping", "extension"}) {
        if (!IsYang(statement, keyword))
            continue;
        model->definitions.push_back({keyword, statement.pcArgument, where, {}});
        std::vector<Fact> &facts = model->definitions.back().facts;
        ForEachIn(file, statement, [&](const QXYANG_STATEMENT_S &base) {
            if (IsYang(base, "base") && base.pcArgument != nullptr)
                facts.push_back(
                    {"identity-base", types_.Names()->Qualified(file, base.pcArgument), files_.Of(file, base)});
        });
        for (Fact &fact : FactsIn(file, statement, {Rule("if-feature"), Rule("status")}, &files_))
            facts.push_back(std::move(fact));
        if (model->definitions.back().keyword == "typedef")
            typedefs_.emplace_back(model->definitions.size() - 1, StatementRef{file, statement.uiIndex});
    }
}

void ModuleReader::ReadFile(const QXYANG_FILE *file, const char *path, ModuleModel *model)
{
    files_.Learn(file, path);
    ForEachIn(file, StatementAt(file, 0),
              [&](const QXYANG_STATEMENT_S &statement) { ReadStatement(file, statement, model); });
    Marking(file, &files_, &model->marks).Run();
}

void ModuleReader::ReadFiles(QY_MOD *module, ModuleModel *model)
{
    for (const auto &[name, path] : FilesOf(module))
        if (const QXYANG_FILE *file = QXYANG_GetLoadedFile(instance_.Schema(), name))
            ReadFile(file, path, model);
}

/* Other modules may use them. What leads to a node's type shows there. */
void ModuleReader::ReadUnusedTypedefs(ModuleModel *model)
{
    std::erase_if(typedefs_, [this](const auto &definition) { return types_.IsUsed(definition.second); });
    for (const auto &[index, statement] : typedefs_) {
        const QXYANG_FILE *file = statement.file;
        Definition &definition = model->definitions[index];
        QXYANG_STATEMENT_S around = StatementAt(file, statement.index);
        ForEachIn(file, around, [&, file](const QXYANG_STATEMENT_S &type) {
            if (IsYang(type, "type"))
                definition.type = types_.Of({file, type.uiIndex});
        });
        std::vector<Fact> more = FactsIn(file, around, {Rule("units"), Rule("default")}, &files_);
        definition.facts.insert(definition.facts.begin(), more.begin(), more.end());
    }
    typedefs_.clear();
}

std::unique_ptr<ModuleModel> ModuleReader::Read(const ModuleKey &key, Scope scope)
{
    const ModuleFile &file = Loaded(instance_, key);
    QY_MOD *module = QY_CTX_GetModuleByModName(instance_.Schema(), file.pcModuleName);
    auto model = std::make_unique<ModuleModel>();
    model->name = key.name;
    const char *revision = instance_.Revision(key.name);
    model->revision = revision != nullptr ? revision : "";
    if (module == nullptr)
        return model;
    QXYANG_ORIGIN_S origin = {};
    if (QXYANG_GetModuleOrigin(module, &origin) != 0)
        throw std::bad_alloc();
    model->where = files_.Of(origin);
    ReadFiles(module, model.get());
    if (uint32_t id = TaskId(file); id != 0) {
        Fact task = {"task-id", static_cast<int64_t>(id), model->where};
        for (const Extension &extension : ExtensionsOf(module))
            if (extension.keyword == "aaa-task-id")
                task.where = files_.Of(extension.origin);
        model->facts.push_back(std::move(task));
    }
    std::stable_sort(model->facts.begin(), model->facts.end(),
                     [](const Fact &left, const Fact &right) { return left.rule < right.rule; });
    ClassData classes(instance_, file);
    NodeFacts facts(classes, &files_, &types_);
    model->items = ItemReader(module, &facts).Read(scope == Scope::OwnTree);
    ReadUnusedTypedefs(model.get());
    return model;
}

} // namespace inspect::diff
