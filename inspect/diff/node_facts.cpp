#include "diff/node_facts.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <set>
#include <sstream>

#include "base/text.h"
#include "model/schema_scan.h"
#include "model/statements.h"

namespace inspect::diff {
namespace {

std::string QualifiedPathOf(QY_NODE *node)
{
    std::string path;
    for (; node != nullptr; node = QY_NODE_GetParentNode(node)) {
        uint32_t kind = QY_NODE_GetNodeType(node);
        if (kind != QY_NODE_TYPE_CHOICE && kind != QY_NODE_TYPE_CASE)
            path.insert(0, std::string("/") + ModuleNameOf(node) + ":" + NameOf(node));
    }
    return path;
}

bool IsSame(const QXYANG_ORIGIN_S &left, const QXYANG_ORIGIN_S &right)
{
    return left.pstFile == right.pstFile && left.uiStatement == right.uiStatement;
}

/* The leaf at which a chain of leafrefs ends. */
QY_NODE *EndOfLeafrefs(QY_NODE *leaf)
{
    for (int hop = 0; hop < MAX_LEAFREF_HOPS; ++hop) {
        QY_NODE *target = QY_NODE_GetLeafrefTargetNode(leaf, 1);
        if (target == nullptr)
            return leaf;
        leaf = target;
    }
    return leaf;
}

/* The statements of the extension module on a node, each of which is a reason for an id. */
class Reasons {
  public:
    explicit Reasons(QY_NODE *node) : extensions_(ExtensionsOf(node)) {}

    const QXYANG_ORIGIN_S *Find(std::string_view keyword) const
    {
        auto found = std::find_if(extensions_.begin(), extensions_.end(),
                                  [keyword](const Extension &extension) { return extension.keyword == keyword; });
        return found != extensions_.end() ? &found->origin : nullptr;
    }

  private:
    std::vector<Extension> extensions_;
};

/* The words of a text whose order means nothing. */
std::string SortedWords(const std::string &text)
{
    std::istringstream stream(text);
    std::set<std::string> words(std::istream_iterator<std::string>(stream), {});
    return Join({words.begin(), words.end()}, " ");
}

Where PlaceOf(const QXYANG_ORIGIN_S *origin, FileNames *files, const Item &item)
{
    Where where = origin != nullptr ? files->Of(*origin) : Where{};
    return where.file != nullptr ? where : item.where;
}

} // namespace

void NodeFacts::AddIds(QY_NODE *node, Item *item)
{
    const KorvTreeNode *made = classes_.NodeOf(node);
    if (made == nullptr)
        return;
    Reasons reasons(node);
    auto add = [&](Rule rule, Value value, const QXYANG_ORIGIN_S *reason) {
        item->facts.push_back({rule, std::move(value), PlaceOf(reason, files_, *item)});
    };
    item->classId = made->uiClassId;
    if (made->uiClassId != 0)
        add("class-id", HexId{made->uiClassId}, reasons.Find("class-id"));
    if (made->uiSampleId != 0)
        add("sample-id", HexId{made->uiSampleId}, reasons.Find("tlmt-sample-id"));
    std::vector<QXYANG_ORIGIN_S> keys = StatementsOf(node, "key");
    if (std::vector<uint32_t> own = KeyIds(made->aucSelfNodeKey); !own.empty())
        add("keys", std::move(own), keys.empty() ? nullptr : &keys.front());
    if (std::vector<uint32_t> ancestor = KeyIds(made->aucAncestorKey); !ancestor.empty())
        add("ancestor-keys", std::move(ancestor), reasons.Find("ancestor-key-fid"));
}

void NodeFacts::AddLeafIds(QY_NODE *node, Item *item)
{
    const KorvTreeLeaf *made = classes_.LeafOf(node);
    if (made == nullptr)
        return;
    item->classId = made->uiClassId;
    item->fieldId = made->uiFieldId;
    struct Id {
        Rule rule;
        uint32_t number;
        const char *keyword;
    };
    const Id ids[] = {{"field-id", made->uiFieldId, "field-id"},
                      {"datatype", made->uiDataType, "datatype-id"},
                      {"index-map", made->uiName2IdKeyFid, "name2id-key-fid"},
                      {"reference-key", made->uiRefIdKeyFid, "ref-id-key-fid"}};
    if (std::none_of(std::begin(ids), std::end(ids), [](const Id &id) { return id.number != 0; }))
        return;
    Reasons reasons(node);
    for (const Id &id : ids)
        if (id.number != 0)
            item->facts.push_back(
                {id.rule, static_cast<int64_t>(id.number), PlaceOf(reasons.Find(id.keyword), files_, *item)});
}

/* The rule has the name of the statement. Statements that say what holds anyway count as none. */
void NodeFacts::AddStatements(QY_NODE *node, Rule rule, Item *item)
{
    for (const QXYANG_ORIGIN_S &statement : StatementsOf(node, rule->name)) {
        std::string text = Smoothed(ArgumentOf(statement));
        if (rule->absent == nullptr || text != rule->absent)
            item->facts.push_back({rule, std::move(text), files_->Of(statement)});
    }
}

void NodeFacts::AddNumber(QY_NODE *node, Rule rule, Item *item)
{
    for (const QXYANG_ORIGIN_S &statement : StatementsOf(node, rule->name)) {
        std::string text = Smoothed(ArgumentOf(statement));
        if (text != rule->absent)
            item->facts.push_back(
                {rule, static_cast<int64_t>(std::strtoll(text.c_str(), nullptr, 10)), files_->Of(statement)});
    }
}

/* A condition on an augment or uses holds for what it brings. */
void NodeFacts::AddConditions(const QXYANG_ORIGIN_S &around, Item *item)
{
    files_->Learn(around.pstFile, around.pcFile);
    for (Fact &fact : FactsIn(around.pstFile, StatementAt(around.pstFile, around.uiStatement),
                              {Rule("when"), Rule("if-feature")}, files_))
        item->facts.push_back(std::move(fact));
}

/* Values that the node's own statements give, or else the nearest typedef that has any. */
void NodeFacts::AddInherited(QY_NODE *node, const char *keyword, Rule rule, const std::vector<std::string> &values,
                             Item *item)
{
    if (values.empty())
        return;
    std::vector<Where> places;
    for (const QXYANG_ORIGIN_S &statement : StatementsOf(node, keyword))
        places.push_back(files_->Of(statement));
    if (places.empty())
        for (const QXYANG_ORIGIN_S &definition : TypedefsOf(node)) {
            ForEachIn(definition.pstFile, StatementAt(definition.pstFile, definition.uiStatement),
                      [&](const QXYANG_STATEMENT_S &statement) {
                          if (places.empty() && IsYang(statement, keyword)) {
                              files_->Learn(definition.pstFile, definition.pcFile);
                              places.push_back(files_->Of(definition.pstFile, statement));
                          }
                      });
        }
    for (size_t i = 0; i < values.size(); ++i)
        item->facts.push_back({rule, values[i], i < places.size() ? places[i] : item->where});
}

/* A leafref's own type says to what it refers; all else is that of the leaf at its end. */
void NodeFacts::AddType(QY_NODE *node, Item *item)
{
    std::vector<QXYANG_ORIGIN_S> own = StatementsOf(node, "type");
    if (own.empty())
        return;
    for (const QXYANG_ORIGIN_S &definition : TypedefsOf(node))
        files_->Learn(definition.pstFile, definition.pcFile);
    files_->Learn(own.back().pstFile, own.back().pcFile);
    item->type = types_->Of({own.back().pstFile, own.back().uiStatement});
    if (item->type->base == "union")
        AddMemberLeafrefs(QualifiedPathOf(node), *item->type, item);
    if (item->type->base != "leafref")
        return;
    AddLeafref(node, *item->type, item);
    QY_NODE *end = EndOfLeafrefs(node);
    std::vector<QXYANG_ORIGIN_S> last = end != node ? StatementsOf(end, "type") : own;
    if (last.empty())
        return;
    for (const QXYANG_ORIGIN_S &definition : TypedefsOf(end))
        files_->Learn(definition.pstFile, definition.pcFile);
    files_->Learn(last.back().pstFile, last.back().pcFile);
    item->type = types_->Of({last.back().pstFile, last.back().uiStatement});
}

/* A leafref in a union leads on from the leaf by its path; no data has a choice or case in it. */
void NodeFacts::AddMemberLeafrefs(const std::string &leaf, const TypeModel &type, Item *item)
{
    for (const TypeModel *member : type.members) {
        AddMemberLeafrefs(leaf, *member, item);
        if (member->target.empty())
            continue;
        std::string rest = member->target;
        std::string path = rest.starts_with('/') ? "" : leaf;
        for (; rest.starts_with("../") && !path.empty(); rest.erase(0, 3))
            path.erase(path.rfind('/'));
        item->facts.push_back({"leafref", path + (rest.starts_with('/') ? "" : "/") + rest, member->where});
    }
}

void NodeFacts::AddLeafref(QY_NODE *leaf, const TypeModel &type, Item *item)
{
    QY_NODE *target = QY_NODE_GetLeafrefTargetNode(leaf, 1);
    for (const Fact &fact : type.facts) {
        item->facts.push_back(fact);
        if (fact.rule == Rule("leafref-path"))
            item->facts.push_back(
                {"leafref", target != nullptr ? QualifiedPathOf(target) : ValueText(fact.value), fact.where});
    }
}

void NodeFacts::AddList(QY_NODE *node, Item *item)
{
    AddNumber(node, "min-elements", item);
    AddNumber(node, "max-elements", item);
    AddStatements(node, "ordered-by", item);
    AddStatements(node, "key", item);
    for (const QXYANG_ORIGIN_S &statement : StatementsOf(node, "unique"))
        item->facts.push_back({"unique", SortedWords(ArgumentOf(statement)), files_->Of(statement)});
}

void NodeFacts::AddState(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details, Item *item)
{
    if (details.uiIsConfig != 0)
        return;
    std::vector<QXYANG_ORIGIN_S> own = StatementsOf(node, "config");
    item->facts.push_back({"config", "false", PlaceOf(own.empty() ? nullptr : &own.back(), files_, *item)});
}

/* Of the augment that has the node's statement, and of the uses that brought it. */
void NodeFacts::AddConditionsAround(const QXYANG_NODE_DETAILS_S &details, const QXYANG_ORIGIN_S &above, Item *item)
{
    QXYANG_ORIGIN_S around = details.stStatement;
    if (around.pstFile == nullptr)
        return;
    around.uiStatement = StatementAt(around.pstFile, around.uiStatement).uiParent;
    if (around.uiStatement != QXYANG_NO_STATEMENT && IsYang(StatementAt(around.pstFile, around.uiStatement), "augment"))
        AddConditions(around, item);
    if (details.stUses.pstFile != nullptr && !IsSame(details.stUses, above))
        AddConditions(details.stUses, item);
}

void NodeFacts::Read(QY_NODE *node, const QXYANG_NODE_DETAILS_S &details, const QXYANG_ORIGIN_S &above, Item *item)
{
    item->where = files_->Of(details.stStatement);
    if (item->IsLeaf()) {
        AddLeafIds(node, item);
        AddType(node, item);
        AddInherited(
            node, "units", "units",
            details.pcUnits != nullptr ? std::vector<std::string>{details.pcUnits} : std::vector<std::string>{}, item);
    } else {
        AddIds(node, item);
    }
    if (item->IsLeaf() || item->kind == QY_NODE_TYPE_CHOICE)
        AddInherited(node, "default", "default", DefaultsOf(node), item);
    if (item->kind == QY_NODE_TYPE_LIST || item->kind == QY_NODE_TYPE_LEAF_LIST)
        AddList(node, item);
    if (item->kind == QY_NODE_TYPE_CONTAINER)
        AddStatements(node, "presence", item);
    for (Rule rule :
         {Rule("mandatory"), Rule("must"), Rule("when"), Rule("if-feature"), Rule("status"), Rule("description")})
        AddStatements(node, rule, item);
    AddState(node, details, item);
    AddConditionsAround(details, above, item);
    std::stable_sort(item->facts.begin(), item->facts.end(),
                     [](const Fact &left, const Fact &right) { return left.rule < right.rule; });
}

} // namespace inspect::diff
