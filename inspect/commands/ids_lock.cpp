/* ids lock: the registry takes what the models say. */
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

#include "base/failure.h"
#include "base/numbers.h"
#include "base/text.h"
#include "commands/ids_action.h"
#include "ids/lock.h"
#include "ids/session.h"
#include "model/module_search.h"

namespace inspect {
namespace {

/* "MODULE=FIRST..LAST" */
ids::RangeEntry ToRange(const std::string &text)
{
    size_t equals = text.rfind('=');
    size_t dots = text.find("..", equals == std::string::npos ? 0 : equals);
    if (equals == 0 || equals == std::string::npos || dots == std::string::npos)
        throw CLI::ValidationError("--range: '" + text + "' is not MODULE=FIRST..LAST");
    Number first = ReadNumber(text.substr(equals + 1, dots - equals - 1));
    Number last = ReadNumber(text.substr(dots + 2));
    if (!first.wellFormed || !first.fits || first.value == 0 || !last.wellFormed || !last.fits ||
        last.value < first.value)
        throw CLI::ValidationError("--range: '" + text + "' has no range of class ids");
    return {text.substr(0, equals), first.value, last.value};
}

/* Entries of a registry, those that are reserved or the others. */
struct Sum {
    size_t classes = 0;
    size_t attributes = 0;
    size_t ancestorKeys = 0;

    std::string Text() const
    {
        return Count(classes, "class") + ", " + Count(attributes, "attribute") + ", " +
               Count(ancestorKeys, "ancestor key");
    }
};

Sum SumOf(const ids::Registry &registry, bool reserved)
{
    Sum sum;
    for (const ids::ClassEntry &entry : registry.classes)
        sum.classes += entry.gone.has_value() == reserved ? 1 : 0;
    for (const ids::FieldEntry &entry : registry.fields)
        if (entry.gone.has_value() == reserved)
            ++(entry.isAncestorKey ? sum.ancestorKeys : sum.attributes);
    return sum;
}

/* A range may be given out before there is a file of its module. */
void TellUnknown(const ModelRequest &request, const std::vector<ids::RangeEntry> &ranges)
{
    std::vector<std::string> names = ModuleNames(request.dirs);
    for (const ids::RangeEntry &range : ranges) {
        NearestName nearest(range.module);
        for (const std::string &name : names)
            nearest.Offer(name);
        if (std::find(names.begin(), names.end(), range.module) == names.end())
            request.notes.Say("--range: the directories have no module '" + range.module + "'" + nearest.Hint());
    }
}

class LockIds final : public IdsAction {
  public:
    void AddTo(CLI::App *app) override
    {
        app->add_flag("--accept", accept_, "lock: take ids that have another meaning now");
        app->add_option("--range", rangeTexts_, "lock: class ids that the module may take; may be repeated")
            ->option_text("MODULE=FIRST..LAST")
            ->allow_extra_args(false);
    }

    void Understand(const IdsOptions &options) override
    {
        for (const std::string &text : rangeTexts_)
            ranges_.push_back(ToRange(text));
        if (ranges_.empty() || options.all || !options.models.Request().modules.empty())
            RequireModules(options);
    }

    int Run(const IdsOptions &options) override;

  private:
    void AddRanges(ids::Registry *registry) const;
    bool MayTake(const ids::Finding &finding) const;
    static void Write(const IdsOptions &options, const std::vector<ids::Finding> &refused, const ids::Registry &made,
                      bool isNew);

    bool accept_ = false;
    std::vector<std::string> rangeTexts_;
    std::vector<ids::RangeEntry> ranges_;
};

/* One that the registry has already is left as it is. */
void LockIds::AddRanges(ids::Registry *registry) const
{
    for (const ids::RangeEntry &range : ranges_) {
        auto same = [&range](const ids::RangeEntry &other) {
            return other.module == range.module && other.first == range.first && other.last == range.last;
        };
        auto overlaps = [&range](const ids::RangeEntry &other) {
            return other.first <= range.last && range.first <= other.last;
        };
        if (std::any_of(registry->ranges.begin(), registry->ranges.end(), same))
            continue;
        auto other = std::find_if(registry->ranges.begin(), registry->ranges.end(), overlaps);
        if (other != registry->ranges.end())
            throw Failure("the range " + Hex(range.first) + ".." + Hex(range.last) + " of '" + range.module +
                          "' overlaps " + Hex(other->first) + ".." + Hex(other->last) + " of '" + other->module +
                          (other->line != 0 ? "' (line " + std::to_string(other->line) + ")" : "'") +
                          ": nothing is written");
        registry->ranges.push_back(range);
        registry->Sort();
    }
}

/* Two nodes with one id are never right. */
bool LockIds::MayTake(const ids::Finding &finding) const
{
    return IsOrdinary(finding.difference) || (accept_ && finding.difference.kind != ids::Kind::Twice);
}

void LockIds::Write(const IdsOptions &options, const std::vector<ids::Finding> &refused, const ids::Registry &made,
                    bool isNew)
{
    Sum live = SumOf(made, false);
    Sum reserved = SumOf(made, true);
    if (options.models.OutputFormat() == Format::Json) {
        JsonOut out;
        out.Object();
        out.Member("registry", options.registry);
        out.Member("written", isNew);
        out.Member("classes", live.classes);
        out.Member("attributes", live.attributes);
        out.Member("ancestor_keys", live.ancestorKeys);
        out.Member("reserved_classes", reserved.classes);
        out.Member("reserved_attributes", reserved.attributes);
        out.Member("reserved_ancestor_keys", reserved.ancestorKeys);
        out.Member("ranges", made.ranges.size());
        ids::WriteJson(&out, refused);
        out.EndObject();
        return;
    }
    ids::WriteText(refused);
    if (!refused.empty())
        std::printf("%s: nothing is written\n", Count(refused.size(), "finding").c_str());
    else
        std::printf("%s: %s, %s; reserved: %s%s\n", Printable(options.registry).c_str(), live.Text().c_str(),
                    Count(made.ranges.size(), "range").c_str(), reserved.Text().c_str(), isNew ? "" : " (as before)");
}

int LockIds::Run(const IdsOptions &options)
{
    ids::Registry before = ids::LoadRegistry(options.registry, ids::IfMissing::Empty);
    ids::Registry made = before;
    TellUnknown(options.models.Request(), ranges_);
    AddRanges(&made);
    std::vector<ids::Finding> findings;
    if (options.all || !options.models.Request().modules.empty()) {
        ids::Session session(options.models.Request(), options.all, options.registry, made);
        findings = session.Compare();
        findings.erase(std::remove_if(findings.begin(), findings.end(),
                                      [this](const ids::Finding &finding) { return MayTake(finding); }),
                       findings.end());
        if (findings.empty())
            made = Locked(session.Both());
    }
    if (!findings.empty()) {
        Write(options, findings, before, false);
        return EXIT_NEGATIVE;
    }
    bool isNew = RegistryText(made) != RegistryText(before) || (before.classes.empty() && before.ranges.empty());
    if (isNew)
        SaveRegistry(options.registry, made, before);
    Write(options, findings, made, isNew);
    return EXIT_OK;
}

} // namespace

const IdsActionEntry IDS_LOCK = {"lock", MakeAction<LockIds>};

} // namespace inspect
