#include "ids/assign/file_facts.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <map>
#include <string_view>

#include "base/numbers.h"
#include "ids/assign/statement_names.h"
#include "model/model_file.h"

namespace inspect::ids {
namespace {

using Prefixes = std::map<std::string, std::string, std::less<>>; /* names of imported modules */

Prefixes PrefixesIn(const ModelFile &file)
{
    Prefixes prefixes;
    file.ForEachIn(file.Root(), [&](const QXYANG_STATEMENT_S &statement) {
        if (IsYang(statement, "import") && statement.pcArgument != nullptr)
            prefixes.emplace(file.ArgumentIn(statement, "prefix"), statement.pcArgument);
    });
    return prefixes;
}

/* The prefix of a name, or of a path's first step. */
std::string_view PrefixOf(std::string_view argument)
{
    if (argument.starts_with('/'))
        argument.remove_prefix(1);
    size_t colon = argument.substr(0, argument.find('/')).find(':');
    return colon != std::string_view::npos ? argument.substr(0, colon) : std::string_view();
}

void Add(const QXYANG_STATEMENT_S &statement, const Prefixes &prefixes, FileFacts *facts)
{
    constexpr std::array<std::string_view, 6> OWN = {"container", "list", "choice", "uses", "augment", "grouping"};
    if (statement.pcPrefix != nullptr && IsExtension(statement, CLASS_ID) && statement.pcArgument != nullptr)
        facts->classIds.push_back(ReadNumber(statement.pcArgument).value);
    if (IsYang(statement, "deviation"))
        facts->deviates = true;
    if (statement.uiLevel == 1 && statement.pcPrefix == nullptr &&
        std::find(OWN.begin(), OWN.end(), statement.pcKeyword) != OWN.end())
        facts->hasNodes = true;
    if ((!IsYang(statement, "augment") && !IsYang(statement, "uses")) || statement.pcArgument == nullptr)
        return;
    if (auto found = prefixes.find(PrefixOf(statement.pcArgument)); found != prefixes.end())
        facts->extended.insert(found->second);
}

} // namespace

bool IsPlainModule(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    for (std::string_view word :
         {std::string_view("submodule"), std::string_view("deviation"), std::string_view("\0", 1)})
        if (text.find(word) != std::string::npos)
            return false;
    return !text.empty();
}

FileFacts FactsIn(const std::string &path)
{
    FileFacts facts;
    ModelFile file = ModelFile::Read(path, path);
    if (!file.HasRoot())
        return facts;
    if (IsYang(file.Root(), "submodule"))
        facts.belongsTo = file.ArgumentIn(file.Root(), "belongs-to");
    Prefixes prefixes = PrefixesIn(file);
    QXYANG_STATEMENT_S statement = {};
    for (uint32_t i = 0; QXYANG_GetStatement(file.Handle(), i, &statement) == 0; ++i)
        Add(statement, prefixes, &facts);
    return facts;
}

} // namespace inspect::ids
