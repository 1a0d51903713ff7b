#include "paths/path_walk.h"

#include <cstring>

#include "model/schema_scan.h"
#include "model/trees.h"

namespace inspect {
namespace {

bool IsLeafKind(uint32_t kind)
{
    return kind == QY_NODE_TYPE_LEAF || kind == QY_NODE_TYPE_LEAF_LIST;
}

bool IsChoiceKind(uint32_t kind)
{
    return kind == QY_NODE_TYPE_CHOICE || kind == QY_NODE_TYPE_CASE;
}

bool HasTreeNode(uint32_t kind)
{
    return kind == QY_NODE_TYPE_CONTAINER || kind == QY_NODE_TYPE_LIST || IsChoiceKind(kind);
}

/* The library's leaves in the schema's order: each search goes on where the last one ended. */
class LeafCursor {
  public:
    explicit LeafCursor(const VEC_VECTOR_S *list) : list_(list) {}

    const KorvTreeLeaf *Find(const QY_NODE *leaf)
    {
        uint32_t count = list_ != nullptr ? list_->uiCount : 0;
        for (uint32_t i = 0; i < count; ++i) {
            uint32_t at = (next_ + i) % count;
            const auto *one = static_cast<const KorvTreeLeaf *>(list_->ppvItem[at]);
            if (one->pYinNode != leaf)
                continue;
            next_ = at + 1;
            return one;
        }
        return nullptr;
    }

  private:
    const VEC_VECTOR_S *list_;
    uint32_t next_ = 0;
};

/* The same for nodes. */
class NodeCursor {
  public:
    explicit NodeCursor(const KorvTreeNode *first) : next_(first) {}

    const KorvTreeNode *Find(QY_NODE *node)
    {
        const char *name = QY_NODE_GetNodeName(node);
        const char *module = ModuleNameOf(node);
        for (const KorvTreeNode *one = next_; one != nullptr; one = one->pstNextSibling) {
            if (std::strcmp(one->pcName, name) != 0 || std::strcmp(one->pcModuleName, module) != 0)
                continue;
            next_ = one->pstNextSibling;
            return one;
        }
        return nullptr;
    }

  private:
    const KorvTreeNode *next_;
};

/* True if the node or one above it is the module's: the walk from there comes by. */
bool IsBelow(QY_NODE *node, const QY_MOD *module)
{
    while (node != nullptr && QY_NODE_GetModule(node) != module)
        node = QY_NODE_GetParentNode(node);
    return node != nullptr;
}

std::optional<uint32_t> IndexOf(const ModuleFile &file, const QY_NODE *augment)
{
    for (uint32_t i = 0; i < file.ucAugmentNum; ++i)
        if (file.astAugment[i].pAugNode == augment)
            return i;
    return std::nullopt;
}

} // namespace

bool PathNode::IsLeaf() const
{
    return IsLeafKind(QY_NODE_GetNodeType(node));
}

bool PathNode::IsKey() const
{
    return place.leaf != nullptr ? place.leaf->ucIsKey != 0 : IsLeaf() && (QY_NODE_IsKey(node) & 1U) != 0;
}

uint32_t PathNode::ClassId() const
{
    if (place.leaf != nullptr)
        return place.leaf->uiClassId;
    return place.node != nullptr ? place.node->uiClassId : 0;
}

uint32_t PathNode::SampleId() const
{
    return place.leaf == nullptr && place.node != nullptr ? place.node->uiSampleId : 0;
}

std::optional<uint32_t> PathNode::FieldId() const
{
    if (place.leaf == nullptr || !Has(*place.leaf, KORV_MASK_FIELD_ID))
        return std::nullopt;
    return place.leaf->uiFieldId;
}

/* A node of the schema whose children are visited, or the top. */
struct PathWalk::Level {
    Level(PathPattern::Progress fits, const KorvTreeNode *made, Level *around)
        : progress(fits),
          node(made),
          holder(made == nullptr || IsOrdinary(*made) ? this : around),
          nodes(made != nullptr ? made->pstFirstChild : nullptr),
          leaves(made != nullptr ? made->pstLeafList : nullptr),
          caseLeaves(made != nullptr ? made->pstCaseLeafList : nullptr)
    {
    }
    Level(PathPattern::Progress fits, const KorvTreeNode *first)
        : progress(fits), node(nullptr), holder(this), nodes(first), leaves(nullptr), caseLeaves(nullptr)
    {
    }
    Level(const Level &) = delete;
    Level &operator=(const Level &) = delete;

    /* The leaf as its class has it: that of a case has its ids there alone. */
    Place PlaceOf(const std::optional<uint32_t> &augment, const QY_NODE *leaf)
    {
        const KorvTreeLeaf *own = leaves.Find(leaf);
        const KorvTreeLeaf *ofClass = holder != this && own != nullptr ? holder->caseLeaves.Find(leaf) : nullptr;
        if (ofClass != nullptr)
            return {augment, holder->node, ofClass};
        return {augment, own != nullptr ? node : nullptr, own};
    }

    PathPattern::Progress progress; /* of the path up to here */
    const KorvTreeNode *node;       /* null: the library has none */
    Level *holder;                  /* of the nearest node that is no choice and no case */
    NodeCursor nodes;
    LeafCursor leaves;
    LeafCursor caseLeaves;
};

PathPattern::Progress PathWalk::After(PathPattern::Progress before, QY_NODE *node)
{
    if (pattern_ == nullptr || before == 0)
        return before;
    const char *module = ModuleNameOf(node);
    auto prefix = prefixOf_.find(module);
    if (prefix == prefixOf_.end())
        prefix = prefixOf_.emplace(module, prefixes_.Of(module)).first;
    return pattern_->After(before, {QY_NODE_GetNodeName(node), module, prefix->second});
}

void PathWalk::Report(QY_NODE *node, const Place &place, PathPattern::Progress progress)
{
    if (pattern_ != nullptr && !pattern_->Fits(progress))
        return;
    at_.node = node;
    at_.place = place;
    (*visit_)(at_);
}

void PathWalk::VisitLeaf(QY_NODE *node, Level *level)
{
    PathPattern::Progress progress = After(level->progress, node);
    Place place = level->PlaceOf(augment_, node);
    Report(node, place, progress);
}

void PathWalk::Visit(QY_NODE *node, Level *level)
{
    if (QY_NODE_GetModule(node) != module_ || (QY_NODE_IsEnabled(node) & 1U) == 0)
        return;
    uint32_t kind = QY_NODE_GetNodeType(node);
    size_t length = at_.path.size();
    PathPattern::Progress progress = level->progress;
    if (!IsChoiceKind(kind))
        at_.path.append("/").append(QY_NODE_GetNodeName(node));
    if (IsLeafKind(kind)) {
        VisitLeaf(node, level);
    } else {
        const KorvTreeNode *made = HasTreeNode(kind) ? level->nodes.Find(node) : nullptr;
        if (!IsChoiceKind(kind)) {
            progress = After(progress, node);
            Report(node, {augment_, made, nullptr}, progress);
        }
        Level below(progress, made, level->holder);
        ForEachChild(node, [&](QY_NODE *child) { Visit(child, &below); });
    }
    at_.path.resize(length);
}

/* What the module adds to its own nodes is visited with these. */
void PathWalk::VisitAugment(QY_NODE *augment)
{
    QY_NODE *target = QY_NODE_GetAugmentTargetNode(augment);
    if (target == nullptr || IsBelow(target, module_))
        return;
    std::vector<QY_NODE *> way;
    for (QY_NODE *node = target; node != nullptr; node = QY_NODE_GetParentNode(node))
        way.insert(way.begin(), node);
    augment_ = IndexOf(*at_.file, augment);
    at_.path.clear();
    std::vector<std::unique_ptr<Level>> levels;
    levels.push_back(std::make_unique<Level>(pattern_ != nullptr ? pattern_->Begin() : 0,
                                             augment_ ? at_.file->astAugment[*augment_].pstTargetTree : nullptr));
    for (QY_NODE *step : way) {
        Level &above = *levels.back();
        bool isNamed = !IsChoiceKind(QY_NODE_GetNodeType(step));
        if (isNamed)
            at_.path.append("/").append(QY_NODE_GetNodeName(step));
        levels.push_back(std::make_unique<Level>(isNamed ? After(above.progress, step) : above.progress,
                                                 above.nodes.Find(step), above.holder));
    }
    ForEachChild(augment, [&](QY_NODE *child) { Visit(child, levels.back().get()); });
    augment_.reset();
}

void PathWalk::Walk(const ModuleFile &file, const Visitor &visit)
{
    module_ = QY_CTX_GetModuleByModName(schema_, file.pcModuleName);
    if (module_ == nullptr)
        return;
    visit_ = &visit;
    at_ = {&file, nullptr, "", {}};
    Level top(pattern_ != nullptr ? pattern_->Begin() : 0, file.pstOriginTree);
    ForEachTop(module_, [&](QY_NODE *node) { Visit(node, &top); });
    ForEachAugment(module_, [this](QY_NODE *augment) { VisitAugment(augment); });
}

} // namespace inspect
