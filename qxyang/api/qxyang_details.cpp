/* Functions of qxyang.h about nodes and their statements. No exception leaves them. */
#include <qxyang.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"
#include "schema/context.h"
#include "syntax/statement_file.h"

using namespace qxyang;

namespace {

constexpr uint32_t OK = 0;
constexpr uint32_t FAILED = 1;

using Texts = std::vector<const char *>;

constexpr QXYANG_ORIGIN_S NOT_KNOWN{nullptr, nullptr, nullptr, QXYANG_NO_STATEMENT, {0, 0, 0, 0}};

/* The file's statements, read when somebody asks for the first of them. Only lack of memory makes that fail: the text has
 * been read before. */
QXYANG_FILE &StatementsOf(KeptFile &file)
{
    if (file.statements == nullptr) {
        auto statements = std::make_shared<QXYANG_FILE>(file.path, 0);
        if (!statements->source.Take(file.text).empty())
            throw std::bad_alloc();
        ReadStatements(*statements);
        if (statements->failures.Any())
            throw std::bad_alloc();
        file.statements = std::move(statements);
        file.text = {};
    }
    return *file.statements;
}

/* A statement that details refer to; null: the file is gone. */
struct Found {
    KeptFile *kept = nullptr;
    const QXYANG_STATEMENT_S *statement = nullptr;

    explicit operator bool() const { return statement != nullptr; }
};

Found Find(Details &details, Spot spot)
{
    KeptFile *kept = details.File(spot.file);
    if (kept == nullptr)
        return {};
    const auto &all = StatementsOf(*kept).statements;
    auto at = std::lower_bound(
        all.begin(), all.end(), spot.offset,
        [](const QXYANG_STATEMENT_S &statement, uint32_t offset) { return statement.stPlace.uiOffset < offset; });
    if (at == all.end() || at->stPlace.uiOffset != spot.offset)
        return {};
    return {kept, &*at};
}

QXYANG_ORIGIN_S OriginOf(const Found &found)
{
    if (!found)
        return NOT_KNOWN;
    return {found.kept->statements.get(), found.kept->path.c_str(), found.kept->name.c_str(), found.statement->uiIndex,
            found.statement->stPlace};
}

/* Arguments of the statements with that keyword directly in another one. */
Texts ArgumentsIn(const Found &found, std::string_view keyword)
{
    Texts texts;
    if (!found)
        return texts;
    const auto &all = found.kept->statements->statements;
    for (uint32_t i = found.statement->uiFirstChild; i != QXYANG_NO_STATEMENT; i = all[i].uiNext)
        if (all[i].pcPrefix == nullptr && keyword == all[i].pcKeyword && all[i].pcArgument != nullptr)
            texts.push_back(all[i].pcArgument);
    return texts;
}

/* What a refine or deviate statement makes of a node's values. */
void Change(Texts &values, const Found &change, const Texts &operands)
{
    std::string_view deviate = std::strcmp(change.statement->pcKeyword, "deviate") == 0
                                   ? OrEmpty(change.statement->pcArgument)
                                   : std::string_view();
    if (deviate == "delete") {
        for (const char *operand : operands)
            std::erase_if(values, [operand](const char *value) { return std::strcmp(value, operand) == 0; });
        return;
    }
    if (deviate != "add")
        values.clear();
    values.insert(values.end(), operands.begin(), operands.end());
}

/* Reads what the statements of one node say. */
class NodeReader {
  public:
    NodeReader(Details &details, const QY_NODE *node) : details_(details), node_(node)
    {
        auto known = node->module->details->nodes.find(node);
        if (known != node->module->details->nodes.end())
            origin_ = &known->second;
    }

    QXYANG_ORIGIN_S Statement() const { return origin_ != nullptr ? OriginOf(Own()) : NOT_KNOWN; }
    QXYANG_ORIGIN_S Uses() const { return origin_ != nullptr ? OriginOf(Find(details_, origin_->uses)) : NOT_KNOWN; }

    /* The arguments of the node's statements of that keyword, changes included. */
    Texts Values(std::string_view keyword) const
    {
        if (origin_ == nullptr || IsImplied())
            return {};
        Texts values = ArgumentsIn(Own(), keyword);
        for (Spot spot : origin_->changes) {
            Found change = Find(details_, spot);
            if (Texts operands = ArgumentsIn(change, keyword); !operands.empty())
                Change(values, change, operands);
        }
        return values;
    }

    /* The last of them, or null. */
    const char *Value(std::string_view keyword) const
    {
        Texts values = Values(keyword);
        return values.empty() ? nullptr : values.back();
    }

    /* The same of the nearest typedef of the leaf's type that has one. */
    const char *ValueOfType(std::string_view keyword) const
    {
        for (const QY_TYPE *type = IsLeaf(node_) ? node_->type : nullptr; type != nullptr; type = type->base)
            if (Texts values = ArgumentsIn(DefinitionOf(type), keyword); !values.empty())
                return values.back();
        return nullptr;
    }

  private:
    Found Own() const { return Find(details_, origin_->statement); }

    /* True if the node has no statement, and another's stands for it. */
    bool IsImplied() const
    {
        const char *keyword = nullptr;
        switch (node_->kind) {
            case QY_NODE_TYPE_CASE:
                keyword = "case";
                break;
            case QY_NODE_TYPE_INPUT:
                keyword = "input";
                break;
            case QY_NODE_TYPE_OUTPUT:
                keyword = "output";
                break;
            default:
                return false;
        }
        Found own = Own();
        return own && std::strcmp(own.statement->pcKeyword, keyword) != 0;
    }

    /* The typedef that made the type. Any module of the context may have it. */
    Found DefinitionOf(const QY_TYPE *type) const
    {
        for (const auto &module : node_->module->context->modules) {
            if (module->details == nullptr)
                continue;
            auto known = module->details->typedefs.find(type);
            if (known != module->details->typedefs.end())
                return Find(details_, known->second);
        }
        return {};
    }

    Details &details_;
    const QY_NODE *node_;
    const NodeOrigin *origin_ = nullptr;
};

/* RFC 7950, 7.21.1: a node without config statement has its parent's, and one at the top is configuration. */
bool IsConfig(const QY_NODE *node)
{
    bool isState = false;
    bool isKnown = false;
    for (; node != nullptr && node->kind != ROOT_KIND; node = node->parent) {
        if (node->kind == QY_NODE_TYPE_RPC || node->kind == QY_NODE_TYPE_NOTIFICATION)
            return false;
        if (!isKnown && (node->flags & NODE_HAS_CONFIG) != 0) {
            isState = (node->flags & NODE_IS_STATE) != 0;
            isKnown = true;
        }
    }
    return !isState;
}

uint32_t StatusOf(const char *text)
{
    if (OrEmpty(text) == "deprecated")
        return QXYANG_STATUS_DEPRECATED;
    return OrEmpty(text) == "obsolete" ? QXYANG_STATUS_OBSOLETE : QXYANG_STATUS_CURRENT;
}

Texts DefaultsOf(const NodeReader &reader, const QY_NODE *node)
{
    if ((node->flags & NODE_IS_KEY) != 0)
        return {};
    Texts values = reader.Values("default");
    std::string_view min = OrEmpty(reader.Value("min-elements"));
    bool mustExist = OrEmpty(reader.Value("mandatory")) == "true" || (!min.empty() && min != "0");
    if (const char *value = values.empty() && !mustExist ? reader.ValueOfType("default") : nullptr)
        values.push_back(value);
    return values;
}

uint32_t ScanSet(Details &details, const ExtensionSet *set, QXYANG_EXT_PF callback, void *cookie)
{
    for (uint32_t i = 0; set != nullptr && i < set->count; ++i) {
        QXYANG_ORIGIN_S origin = set->isPlaced != 0 ? OriginOf(Find(details, set->Spots()[i])) : NOT_KNOWN;
        auto *instance = const_cast<QY_EXT *>(set->begin() + i);
        uint32_t result =
            callback(instance, instance->name->module, instance->name->keyword, instance->argument, &origin, cookie);
        if (result != 0)
            return result;
    }
    return OK;
}

/* Runs the part of a function that needs details and memory. */
template <class Run>
uint32_t With(const QY_CTX *context, Run &&run)
{
    if (context->details == nullptr)
        return FAILED;
    try {
        return run(*context->details);
    } catch (...) {
        return FAILED;
    }
}

} // namespace

uint32_t QXYANG_KeepDetails(QY_CTX *pCtx)
{
    if (pCtx->details != nullptr)
        return OK;
    if (pCtx->Latest() == nullptr)
        pCtx->details.reset(new (std::nothrow) Details);
    return pCtx->details != nullptr ? OK : FAILED;
}

uint32_t QXYANG_GetModuleOrigin(const QY_MOD *pMod, QXYANG_ORIGIN_S *pstOrigin)
{
    return With(pMod->context, [=](Details &details) {
        KeptFile *file = details.FileOf(*pMod);
        bool isKnown = file != nullptr && !StatementsOf(*file).statements.empty();
        *pstOrigin = isKnown ? OriginOf({file, &file->statements->statements.front()}) : NOT_KNOWN;
        return OK;
    });
}

const QXYANG_FILE *QXYANG_GetLoadedFile(const QY_CTX *pCtx, const char *pcName)
{
    const QXYANG_FILE *found = nullptr;
    (void)With(pCtx, [&](Details &details) {
        if (KeptFile *file = details.FileNamed(pcName))
            found = &StatementsOf(*file);
        return OK;
    });
    return found;
}

uint32_t QXYANG_GetNodeDetails(const QY_NODE *pNode, QXYANG_NODE_DETAILS_S *pstDetails)
{
    return With(pNode->module->context, [=](Details &details) {
        NodeReader reader(details, pNode);
        const char *units = reader.Value("units");
        *pstDetails = {reader.Statement(),          reader.Uses(),
                       reader.Value("description"), units != nullptr ? units : reader.ValueOfType("units"),
                       IsConfig(pNode) ? 1u : 0u,   StatusOf(reader.Value("status"))};
        return OK;
    });
}

uint32_t QXYANG_ScanNodeDefaults(const QY_NODE *pNode, QXYANG_TEXT_PF pfnCb, void *pvCookie)
{
    return With(pNode->module->context, [=](Details &details) {
        for (const char *text : DefaultsOf(NodeReader(details, pNode), pNode))
            if (uint32_t result = pfnCb(text, pvCookie); result != 0)
                return result;
        return OK;
    });
}

uint32_t QXYANG_ScanNodeExtInsts(QY_NODE *pNode, QXYANG_EXT_PF pfnCb, void *pvCookie)
{
    return With(pNode->module->context,
                [=](Details &details) { return ScanSet(details, pNode->extensions, pfnCb, pvCookie); });
}

uint32_t QXYANG_ScanModuleExtInsts(QY_MOD *pMod, QXYANG_EXT_PF pfnCb, void *pvCookie)
{
    return With(pMod->context, [=](Details &details) { return ScanSet(details, pMod->extensions, pfnCb, pvCookie); });
}

uint32_t QXYANG_ScanChildExtInsts(QY_CTX *pCtx, QY_EXT *pExt, QXYANG_EXT_PF pfnCb, void *pvCookie)
{
    return With(pCtx, [=](Details &details) { return ScanSet(details, pExt->nested, pfnCb, pvCookie); });
}
