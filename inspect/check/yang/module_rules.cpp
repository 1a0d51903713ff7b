/* Rules for a module's files as a whole: namespaces and includes. */
#include <deque>
#include <set>

#include "check/yang/statement_check.h"

namespace inspect {
namespace {

/* Calls visit(keyword's argument) for the statements of that keyword at the top of a file. */
template <class Visit>
void ForEachAtTop(const QXYANG_FILE *file, std::string_view keyword, Visit visit)
{
    ForEachIn(file, StatementAt(file, 0), [&](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, keyword))
            visit(statement);
    });
}

/* What the module needs, over any number of imports and includes. */
class Needed {
  public:
    explicit Needed(QY_CTX *schema) : schema_(schema) {}

    void Add(std::string_view name)
    {
        if (names_.emplace(name).second)
            queue_.emplace_back(name);
    }

    /* The next file, or null. */
    const QXYANG_FILE *Next()
    {
        while (!queue_.empty()) {
            std::string name = queue_.front();
            queue_.pop_front();
            const QXYANG_FILE *file = QXYANG_GetLoadedFile(schema_, name.c_str());
            if (file == nullptr)
                continue;
            for (const char *keyword : {"import", "include"})
                ForEachAtTop(file, keyword,
                             [this](const QXYANG_STATEMENT_S &statement) { Add(ArgumentOf(statement)); });
            return file;
        }
        return nullptr;
    }

  private:
    QY_CTX *schema_;
    std::set<std::string, std::less<>> names_;
    std::deque<std::string> queue_;
};

} // namespace

void CheckNamespace(StatementCheck &check, NamespaceUses *uses)
{
    if (check.Files().empty())
        return;
    const OwnFile &own = check.Files().back();
    std::string_view module = own.name;
    Needed needed(check.Schema());
    needed.Add(own.name);
    while (const QXYANG_FILE *file = needed.Next()) {
        std::string_view name = ArgumentOf(StatementAt(file, 0));
        ForEachAtTop(file, "namespace", [&](const QXYANG_STATEMENT_S &statement) {
            if (name != module)
                uses->try_emplace(std::string(ArgumentOf(statement)), NamespaceUse{std::string(name), std::nullopt});
        });
    }
    check.ForEachFile([&](const OwnFile &file) {
        ForEachAtTop(file.file, "namespace", [&](const QXYANG_STATEMENT_S &statement) {
            NamespaceUse use = {std::string(module), check.PlaceOf(file, statement)};
            const NamespaceUse &first = uses->try_emplace(std::string(ArgumentOf(statement)), use).first->second;
            if (first.module == module)
                return;
            check.Report("duplicate-namespace",
                         HeadText(statement) + " is that of module '" + first.module + "'" +
                             SeeText(first.position, std::nullopt),
                         statement);
        });
    });
}

/* A submodule of version 1 may include what its module does not. */
void CheckIncludes(StatementCheck &check)
{
    if (check.Files().empty() || !check.Files().back().names.isVersion11)
        return;
    std::set<std::string, std::less<>> included;
    ForEachAtTop(check.Files().back().file, "include",
                 [&](const QXYANG_STATEMENT_S &statement) { included.emplace(ArgumentOf(statement)); });
    check.ForEachFile([&](const OwnFile &file) {
        if (!file.isSubmodule)
            return;
        ForEachAtTop(file.file, "include", [&](const QXYANG_STATEMENT_S &statement) {
            if (included.emplace(ArgumentOf(statement)).second)
                check.Report("submodule-not-included",
                             "module '" + check.Files().back().name + "' does not include '" +
                                 std::string(ArgumentOf(statement)) + "', as it should include all its submodules",
                             statement);
        });
    });
}

} // namespace inspect
