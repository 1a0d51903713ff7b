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
    return one.level == other.level && one.module == other.module && one.keyword == other.keyword &&
           one.argument == other.argument && (!one.module.empty() || one.prefix == other.prefix);
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

/* The statement of the source that stands at that line of the result. */
const OutlineItem &SourceOf(uint32_t line, const Outline &source, const Written &written)
{
    size_t end = 0; // of the line
    for (uint32_t i = 0; i < std::max(line, 1U) && end != std::string::npos; ++i)
        end = written.text.find('\n', end + (i > 0 ? 1 : 0));
    auto next = std::upper_bound(written.begins.begin(), written.begins.end(), end);
    auto before = next - written.begins.begin() - 1; // statements in front of it
    for (const OutlineItem &item : source)
        if (!item.isComment && before-- <= 0)
            return item;
    return source.front();
}

/* Reads the result again. What is wrong with it is told of the statement in the source. */
void RequireReadable(const Outline &source, const Written &written, bool isYin, Extensions *extensions)
{
    const char *syntax = isYin ? "YIN" : "compact syntax";
    auto refuse = [&](uint32_t line, const std::string &why) {
        const OutlineItem &item = SourceOf(line, source, written);
        throw ConvertError(item, std::string(syntax) + " cannot hold '" + item.Name() + "': " + why);
    };
    ModelFile result = ModelFile::ReadText(written.text, !isYin, "the result");
    if (const std::vector<Cause> faults = result.Faults(); !faults.empty())
        refuse(faults.front().line, faults.front().text);
    Outline again;
    try {
        again = ReadOutline(result, extensions, isYin);
    } catch (const ConvertError &error) {
        refuse(error.line, error.what());
    }
    RequireSame(source, again, syntax);
}

} // namespace

Written Convert(const ModelFile &file, bool toYin, const std::vector<std::string> &dirs)
{
    Extensions extensions(file, dirs);
    Outline outline = ReadOutline(file, &extensions, toYin);
    Written written = toYin ? WriteYin(outline, FindNamespaces(outline, &extensions)) : WriteCompact(outline);
    RequireReadable(outline, written, toYin, &extensions);
    return written;
}

} // namespace inspect
