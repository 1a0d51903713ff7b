/* Functions of qxyang.h about nodes and their statements. No exception leaves them. */
#include <qxyang.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/text.h"
#include "build/leafref_path.h"
#include "schema/context.h"
#include "syntax/statement_file.h"

using namespace qxyang;

namespace {

constexpr uint32_t OK = 0;
constexpr uint32_t FAILED = 1;

constexpr QXYANG_ORIGIN_S NOT_KNOWN{nullptr, nullptr, nullptr, QXYANG_NO_STATEMENT, {0, 0, 0, 0}};

/* The file's statements, read when somebody asks for the first of them. The text has been loaded, so that only lack of memory
 * makes that fail. Statements beyond those that are listed are not known. */
QXYANG_FILE &StatementsOf(KeptFile &file)
{
    if (file.statements == nullptr) {
        auto statements = std::make_shared<QXYANG_FILE>(file.path, 0);
        if (!statements->source.Take(file.text).empty())
            throw std::bad_alloc();
        ReadStatements(*statements);
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

using Statements = std::vector<Found>;

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

const char *ArgumentOf(const Found &found)
{
    return found ? found.statement->pcArgument : nullptr;
}

/* The statements with that keyword directly in another one. */
Statements StatementsIn(const Found &found, std::string_view keyword)
{
    Statements statements;
    if (!found)
        return statements;
    const auto &all = found.kept->statements->statements;
    for (uint32_t i = found.statement->uiFirstChild; i != QXYANG_NO_STATEMENT; i = all[i].uiNext)
        if (all[i].pcPrefix == nullptr && keyword == all[i].pcKeyword && all[i].pcArgument != nullptr)
            statements.push_back({found.kept, &all[i]});
    return statements;
}

/* How a node can have the statements of a keyword. */
enum class Plurality : uint8_t {
    One, /* a refine or deviate takes its place. The load compares no texts when it deletes it: it is gone, whatever the
               deviate says. */
    Several /* a deviate deletes those with the same text; a refine adds to them, defaults excepted */
};

Plurality PluralityOf(const QY_NODE *node, std::string_view keyword)
{
    bool several = keyword == "must" || keyword == "unique" || keyword == "if-feature" ||
                   (keyword == "default" && node->kind == QY_NODE_TYPE_LEAF_LIST);
    return several ? Plurality::Several : Plurality::One;
}

/* What a refine or deviate statement makes of a node's statements of a keyword. */
void Change(Statements &statements, const Found &change, std::string_view keyword, Plurality plurality)
{
    Statements operands = StatementsIn(change, keyword);
    if (operands.empty())
        return;
    bool isRefine = std::strcmp(change.statement->pcKeyword, "refine") == 0;
    std::string_view deviate = isRefine ? std::string_view() : OrEmpty(change.statement->pcArgument);
    if (deviate == "delete" && plurality == Plurality::Several) {
        for (const Found &operand : operands)
            std::erase_if(statements, [&operand](const Found &found) {
                return std::strcmp(ArgumentOf(found), ArgumentOf(operand)) == 0;
            });
        return;
    }
    bool adds = deviate == "add" || (isRefine && plurality == Plurality::Several && keyword != "default");
    if (!adds)
        statements.clear();
    if (deviate != "delete")
        statements.insert(statements.end(), operands.begin(), operands.end());
}

/* A refine may have that argument as well, since nodes have names of all kinds. */
bool IsRemoval(const Found &change)
{
    return std::strcmp(change.statement->pcKeyword, "deviate") == 0 && OrEmpty(ArgumentOf(change)) == "not-supported";
}

/* The first deviate statement that leaves the node out. */
Found RemovalOf(Details &details, const QY_NODE *node)
{
    auto known = node->module->details->nodes.find(node);
    if (known == node->module->details->nodes.end())
        return {};
    for (Spot spot : known->second.changes)
        if (Found change = Find(details, spot); change && IsRemoval(change))
            return change;
    return {};
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

    /* The node's statements of that keyword, changes included. */
    Statements All(std::string_view keyword) const
    {
        if (origin_ == nullptr || IsImplied())
            return {};
        Statements statements = StatementsIn(Own(), keyword);
        for (Spot spot : origin_->changes)
            if (Found change = Find(details_, spot))
                Change(statements, change, keyword, PluralityOf(node_, keyword));
        return statements;
    }

    /* The argument of the last of them, or null. */
    const char *Value(std::string_view keyword) const { return LastArgument(All(keyword)); }

    /* Calls visit(typedef statement) for each typedef that the leaf's type leads through, the nearest first, until it answers
     * nonzero. */
    template <class Visit>
    uint32_t ForEachTypedef(Visit &&visit) const
    {
        for (const QY_TYPE *type = IsLeaf(node_) ? node_->type : nullptr; type != nullptr; type = type->base)
            if (Found definition = DefinitionOf(type))
                if (uint32_t result = visit(definition); result != OK)
                    return result;
        return OK;
    }

    /* The argument of that statement in the nearest typedef that has one, or null. */
    const char *ValueOfType(std::string_view keyword) const
    {
        const char *value = nullptr;
        ForEachTypedef([&](const Found &definition) {
            value = LastArgument(StatementsIn(definition, keyword));
            return value != nullptr ? FAILED : OK;
        });
        return value;
    }

  private:
    static const char *LastArgument(const Statements &statements)
    {
        return statements.empty() ? nullptr : ArgumentOf(statements.back());
    }

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

    /* The typedef that made the type. */
    Found DefinitionOf(const QY_TYPE *type) const
    {
        auto known = details_.typedefs.find(type);
        return known != details_.typedefs.end() ? Find(details_, known->second) : Found{};
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

std::vector<const char *> DefaultsOf(const NodeReader &reader, const QY_NODE *node)
{
    if ((node->flags & NODE_IS_KEY) != 0)
        return {};
    std::vector<const char *> values;
    for (const Found &statement : reader.All("default"))
        values.push_back(ArgumentOf(statement));
    bool hasMinimum = OrEmpty(reader.Value("min-elements")).find_first_not_of('0') != std::string_view::npos;
    bool mustExist = hasMinimum || OrEmpty(reader.Value("mandatory")) == "true";
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

uint32_t QXYANG_ScanNodeStatements(const QY_NODE *pNode, const char *pcKeyword, QXYANG_ORIGIN_PF pfnCb, void *pvCookie)
{
    return With(pNode->module->context, [=](Details &details) {
        for (const Found &statement : NodeReader(details, pNode).All(pcKeyword)) {
            QXYANG_ORIGIN_S origin = OriginOf(statement);
            if (uint32_t result = pfnCb(&origin, pvCookie); result != OK)
                return result;
        }
        return OK;
    });
}

uint32_t QXYANG_ScanNodeTypedefs(const QY_NODE *pNode, QXYANG_ORIGIN_PF pfnCb, void *pvCookie)
{
    return With(pNode->module->context, [=](Details &details) {
        return NodeReader(details, pNode).ForEachTypedef([=](const Found &definition) {
            QXYANG_ORIGIN_S origin = OriginOf(definition);
            return pfnCb(&origin, pvCookie);
        });
    });
}

uint32_t QXYANG_ScanLostTargets(const QY_CTX *pCtx, QXYANG_LOST_TARGET_PF pfnCb, void *pvCookie)
{
    return With(pCtx, [=](Details &details) {
        std::unordered_map<const QY_NODE *, QXYANG_ORIGIN_S> removals;
        return VisitLostTargets(*pCtx, [&](const LostTarget &lost) {
            auto [removal, isNew] = removals.try_emplace(lost.removed);
            if (isNew)
                removal->second = OriginOf(RemovalOf(details, lost.removed));
            QXYANG_LOST_TARGET_S reported{lost.leaf, lost.path->text, lost.target, lost.removed, removal->second};
            return pfnCb(&reported, pvCookie);
        });
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
