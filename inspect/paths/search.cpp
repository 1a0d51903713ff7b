#include "paths/search.h"

#include <algorithm>
#include <cstring>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "model/schema_scan.h"

namespace inspect {
namespace {

uint32_t ToId(const std::string &text, const std::string &whole)
{
    Number number = ReadNumber(text);
    if (!number.wellFormed || !number.fits)
        throw Failure("'" + whole + "' is no id: write 0x1001, 4097 or, with an attribute's, 0x1001.7", EXIT_USAGE);
    return number.value;
}

/* The ids on both sides of one that does not exist, and what has them. */
class NearestIds {
  public:
    explicit NearestIds(uint32_t id) : id_(id) {}

    void Offer(uint32_t id, const std::string &path)
    {
        std::optional<Known> &side = id < id_ ? below_ : above_;
        bool isNearer = !side || (id < id_ ? id > side->id : id < side->id);
        if (isNearer)
            side = Known{id, path};
    }

    /* ": the nearest are 0x1000 (/interfaces) and 0x1002 (...)" */
    std::string Hint(bool isHex) const
    {
        std::vector<std::string> texts;
        for (const std::optional<Known> &known : {below_, above_})
            if (known)
                texts.push_back((isHex ? Hex(known->id) : std::to_string(known->id)) + " (" + known->path + ")");
        return texts.empty() ? ""
                             : (texts.size() == 1 ? ": the nearest is " : ": the nearest are ") + Join(texts, " and ");
    }

  private:
    struct Known {
        uint32_t id;
        std::string path;
    };

    uint32_t id_;
    std::optional<Known> below_;
    std::optional<Known> above_;
};

/* True of a leaf that another module than the node's adds to its class. */
bool IsForeign(const PathNode &leaf)
{
    return std::strcmp(leaf.place.leaf->pcModuleName, leaf.place.node->pcModuleName) != 0;
}

} // namespace

std::optional<IdQuery> ToIdQuery(const std::string &text, bool isSample)
{
    if (!isSample && (text.empty() || text[0] < '0' || text[0] > '9'))
        return std::nullopt;
    size_t point = isSample ? std::string::npos : text.find('.');
    IdQuery query = {ToId(text.substr(0, point), text), std::nullopt, isSample};
    if (point != std::string::npos)
        query.fieldId = ToId(text.substr(point + 1), text);
    return query;
}

std::vector<PathNode> Search::All(const PathPattern *pattern,
                                  const std::function<bool(const PathNode &)> &isMeant) const
{
    std::vector<PathNode> found;
    PathWalk walk(instance_, pattern);
    for (const ModuleFile *file : set_.modules)
        walk.Walk(*file, [&](const PathNode &node) {
            if (isMeant(node))
                found.push_back(node);
        });
    return found;
}

std::string Search::Where() const
{
    if (set_.modules.size() == 1)
        return std::string("module '") + set_.modules.front()->pcModuleName + "'";
    return "the " + Count(set_.modules.size(), "module");
}

/* A module that is not loaded may have it. */
void Search::Fail(const std::string &text) const
{
    throw Failure(text, set_.failed == 0 ? EXIT_NEGATIVE : EXIT_NOT_LOADED);
}

std::vector<PathNode> Search::Ids(const IdQuery &query) const
{
    NearestIds nearest(query.classId);
    NearestIds nearestFields(query.fieldId.value_or(0));
    bool hasClass = false;
    std::vector<PathNode> found = All(nullptr, [&](const PathNode &node) {
        uint32_t id = query.isSample ? node.SampleId() : node.ClassId();
        if (id != 0 && !node.IsLeaf())
            nearest.Offer(id, node.path);
        if (id == 0 || id != query.classId)
            return false;
        hasClass = true;
        std::optional<uint32_t> field = node.FieldId();
        if (!query.fieldId)
            return !node.IsLeaf() || IsForeign(node);
        if (field)
            nearestFields.Offer(*field, node.path);
        return field == query.fieldId;
    });
    std::stable_partition(found.begin(), found.end(), [](const PathNode &node) { return !node.IsLeaf(); });
    if (!found.empty())
        return found;
    std::string id = Hex(query.classId);
    if (hasClass && query.fieldId)
        Fail("class " + id + " has no attribute " + std::to_string(*query.fieldId) + " in " + Where() +
             nearestFields.Hint(false));
    Fail(std::string("no ") + (query.isSample ? "sample " : "class ") + id + " in " + Where() + nearest.Hint(true));
}

std::vector<PathNode> Search::Paths(const PathPattern &pattern, const std::string &text) const
{
    std::vector<PathNode> found = All(&pattern, [](const PathNode &) { return true; });
    if (!found.empty())
        return found;
    std::string wanted = pattern.LastName();
    NearestName nearest(wanted);
    std::string elsewhere;
    if (!wanted.empty())
        (void)All(nullptr, [&](const PathNode &node) {
            std::string name = NameOf(node.node);
            nearest.Offer(name);
            if (elsewhere.empty() && name == wanted)
                elsewhere = ": there is " + node.path;
            return false;
        });
    Fail("no path in " + Where() + " fits '" + text + "'" + (elsewhere.empty() ? nearest.Hint() : elsewhere));
}

} // namespace inspect
