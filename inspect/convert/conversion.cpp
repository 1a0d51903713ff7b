#include "convert/conversion.h"

#include <algorithm>
#include <set>

#include "convert/outline.h"

namespace inspect {
namespace {

/* The namespaces of all modules that are found; those of extension statements must be. */
Namespaces FindNamespaces(const Outline &outline, Extensions *extensions)
{
    Namespaces namespaces;
    std::set<std::string> known;
    for (const auto &[prefix, module] : extensions->Prefixes()) {
        std::string space = extensions->NamespaceOf(module);
        if (!prefix.empty() && !space.empty() && known.insert(prefix).second)
            namespaces.emplace_back(prefix, space);
    }
    for (const OutlineItem &item : outline)
        if (!item.isComment && !item.prefix.empty() && known.count(item.prefix) == 0)
            throw ConvertError(item, "the namespace of '" + item.Name() + "' is not known");
    return namespaces;
}

bool IsSame(const OutlineItem &one, const OutlineItem &other)
{
    return one.level == other.level && one.prefix == other.prefix && one.keyword == other.keyword &&
           one.argument == other.argument;
}

/* Compares the statements, and not the comments. */
void RequireSame(const Outline &source, const Outline &result, const char *syntax)
{
    auto other = result.begin();
    for (const OutlineItem &item : source) {
        if (item.isComment)
            continue;
        other = std::find_if(other, result.end(), [](const OutlineItem &each) { return !each.isComment; });
        if (other == result.end() || !IsSame(item, *other))
            throw ConvertError(item, std::string(syntax) + " cannot hold the argument of '" + item.Name() + "'");
        ++other;
    }
}

} // namespace

Written Convert(const ModelFile &file, bool toYin, const std::vector<std::string> &dirs)
{
    const char *syntax = toYin ? "YIN" : "compact syntax";
    Extensions extensions(file, dirs);
    Outline outline = ReadOutline(file, &extensions, toYin);
    Written written = toYin ? WriteYin(outline, FindNamespaces(outline, &extensions)) : WriteCompact(outline);
    ModelFile result = ModelFile::ReadText(written.text, !toYin, "the result");
    if (const std::vector<Cause> faults = result.Faults(); !faults.empty())
        throw ConvertError(
            0, 0, std::string(syntax) + " cannot hold it: " + PlaceText(faults.front(), "") + faults.front().text);
    RequireSame(outline, ReadOutline(result, &extensions, toYin), syntax);
    return written;
}

} // namespace inspect
