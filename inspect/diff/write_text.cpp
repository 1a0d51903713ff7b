#include <algorithm>
#include <cstdio>

#include "base/text.h"
#include "diff/write.h"

namespace inspect::diff {
namespace {

constexpr size_t MARK_WIDTH = 12; /* "compatible" and a gap */
constexpr size_t MAX_PATH_WIDTH = 60;
constexpr size_t MAX_VALUE_WIDTH = 80; /* in bytes; JSON has the whole of a longer text */

std::string OrNone(const std::string &text)
{
    return text.empty() ? "none" : text;
}

std::string Shown(const Value &value)
{
    std::string text = ValueText(value);
    if (text.size() <= MAX_VALUE_WIDTH)
        return OrNone(text);
    size_t end = MAX_VALUE_WIDTH;
    while (end > 0 && (text[end] & 0xC0) == 0x80) /* within a character of UTF-8 */
        --end;
    return text.substr(0, end) + "...";
}

/* "class-removed" as words, with what it was or is. */
std::string ChangeText(const Change &change)
{
    std::string name = change.rule->name;
    std::string text = name;
    std::replace(text.begin(), text.end(), '-', ' ');
    if (change.rule == Rule("no-new-revision") && IsNone(change.after))
        return "changed, and there is no revision: add one";
    if (change.rule == Rule("no-new-revision"))
        return "changed, and the revision is " + Shown(change.after);
    if (name.ends_with("-moved"))
        return text + " to " + Shown(change.after);
    if (name.ends_with("-removed") || name.ends_with("-added")) {
        const Value &id = IsNone(change.before) ? change.after : change.before;
        return text +
               (IsNone(id) ? "" : " (" + std::string(name.starts_with("leaf") ? "field id " : "") + Shown(id) + ")");
    }
    return text + " " + Shown(change.before) + " -> " + Shown(change.after);
}

std::string PlaceText(const Where &where)
{
    return where.file == nullptr ? ""
                                 : *where.file + ":" + std::to_string(where.line) + ":" + std::to_string(where.column);
}

void WriteChanges(const ModuleChanges &module, const Paint &paint)
{
    size_t width = 0;
    for (const Change &change : module.changes)
        width = std::max(width, std::min(change.path.size(), MAX_PATH_WIDTH));
    for (const Change &change : module.changes) {
        std::string mark = change.breaking ? "breaking" : "compatible";
        std::string gap(MARK_WIDTH - mark.size(), ' ');
        mark = paint.Text(change.breaking ? Tone::Bad : Tone::Good, mark) + gap;
        std::string path = change.path.empty() ? module.module : change.path;
        PadTo(&path, width);
        std::printf("%s%s  %s\n", mark.c_str(), path.c_str(), Printable(ChangeText(change)).c_str());
        std::string oldPlace = PlaceText(change.oldWhere);
        std::string newPlace = PlaceText(change.newWhere);
        if (!oldPlace.empty() || !newPlace.empty())
            std::printf("%*s%s%s%s\n", static_cast<int>(MARK_WIDTH), "", Printable(oldPlace).c_str(),
                        oldPlace.empty() || newPlace.empty() ? "" : " -> ", Printable(newPlace).c_str());
    }
}

void WriteHeading(const ModuleChanges &module, const Paint &paint)
{
    std::printf("%s, revision %s -> %s\n", paint.Text(Tone::Name, module.module).c_str(),
                OrNone(module.oldRevision).c_str(), OrNone(module.newRevision).c_str());
}

bool IsNew(const ModuleChanges &module)
{
    return !module.changes.empty() && module.changes.front().rule == Rule("module-added");
}

bool IsGone(const ModuleChanges &module)
{
    return !module.changes.empty() && module.changes.front().rule == Rule("module-removed");
}

} // namespace

void WriteText(const ModuleChanges &module, const Paint &paint)
{
    WriteHeading(module, paint);
    WriteChanges(module, paint);
    size_t breaking = CountBreaking(module.changes);
    if (module.changes.empty())
        std::printf("no difference\n");
    else
        std::printf("%s, %zu compatible\n", Count(breaking, "breaking change").c_str(),
                    module.changes.size() - breaking);
}

void WriteAllText(const std::vector<ModuleChanges> &modules, const Paint &paint)
{
    size_t changes = 0;
    size_t breaking = 0;
    size_t changed = 0;
    for (const ModuleChanges &module : modules) {
        if (module.changes.empty())
            continue;
        WriteHeading(module, paint);
        WriteChanges(module, paint);
        std::printf("\n");
        ++changed;
        changes += module.changes.size();
        breaking += CountBreaking(module.changes);
    }
    auto count = [&modules](auto is) { return static_cast<size_t>(std::count_if(modules.begin(), modules.end(), is)); };
    size_t added = count(IsNew);
    size_t gone = count(IsGone);
    std::printf("%s compared: %zu new, %zu gone, %zu changed; %s, %zu compatible\n",
                Count(modules.size(), "module").c_str(), added, gone, changed - added - gone,
                Count(breaking, "breaking change").c_str(), changes - breaking);
}

} // namespace inspect::diff
