/* check: what a device would trip over. */
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <map>
#include <optional>

#include "base/failure.h"
#include "base/progress.h"
#include "check/checker.h"
#include "check/report/baseline.h"
#include "check/report/ignores.h"
#include "check/report/policy.h"
#include "check/report/report_formats.h"
#include "check/rules.h"
#include "commands/commands.h"
#include "line/model_options.h"

namespace inspect {
namespace {

constexpr const char *INTRODUCTION =
    R"(The modules are loaded into one device, after those of --load, in both orders. Findings
name the file and line where these can be told, and end in a short name that stays the
same from release to release.

Exit status: 1 for an error, 3 for a module that cannot be loaded; warnings count with
--strict alone.

The comment '// korv-inspect off RULE: reason' in a model hides findings in the statement
that follows, or in that of its line.

The names of the long options stand under [check] in a file korv-inspect.toml as well.

)";

constexpr const char *EXAMPLES = R"(
Examples:
  korv-inspect check example-interfaces -d examples/yin
  korv-inspect check --all -d examples/yin --strict --off 'missing-field-id:drafts/**'
  korv-inspect check --all -d examples/yin --format sarif)";

/* What CLI11 says of a value that is not right; "" for one that is. */
std::string RuleFault(const std::string &text)
{
    return FindRule(text) != nullptr ? "" : NoRuleText(text);
}

std::string OffFault(const std::string &text)
{
    std::string rule = text.substr(0, text.find(':'));
    if (&*Rule("load-failed") == FindRule(rule))
        return "a module that cannot be loaded is never passed over";
    if (text.ends_with(":") && text.size() == rule.size() + 1)
        return "'" + text + "' names no files: write a path behind the colon, or leave it out";
    return RuleFault(rule);
}

std::vector<std::string> FormatNames()
{
    std::vector<std::string> names;
    for (const ReportFormat &format : ReportFormats())
        names.emplace_back(format.name);
    return names;
}

class CheckCommand final : public Command {
  public:
    void AddTo(CLI::App *app) override;
    void Understand() override;
    int Run() override;

  private:
    void AddLevels(CLI::App *app);
    bool IsOnLine(const CLI::Option *option) const;
    void ApplyLevels(const std::vector<const CLI::Option *> &words);
    void ReadLevels();
    void WriteRules() const;
    Baseline NewBaseline(const std::vector<Finding> &findings) const;

    ModelOptions options_;
    bool all_ = false;
    bool rules_ = false;
    bool strict_ = false;
    std::vector<std::string> errors_;
    std::vector<std::string> warnings_;
    std::vector<std::string> off_;
    std::string baseline_;
    std::string newBaseline_;
    Policy policy_;

    const CLI::App *app_ = nullptr;
    const CLI::Option *allOption_ = nullptr;
    const CLI::Option *errorOption_ = nullptr;
    const CLI::Option *warnOption_ = nullptr;
    const CLI::Option *offOption_ = nullptr;
};

void CheckCommand::AddTo(CLI::App *app)
{
    app_ = app;
    options_.AddCommon(app);
    options_.AddModules(app, "Modules to check");
    allOption_ = app->add_flag("--all", all_, "Check every module in the directories of -d");
    options_.AddFormats(app, FormatNames());
    AddLevels(app);
    app->add_option("--baseline", baseline_, "Findings in this file do not count")->option_text("FILE");
    app->add_option("--write-baseline", newBaseline_, "Make this file of all findings")->option_text("FILE");
    app->add_flag("--rules", rules_, "List the rules and what they count as");
}

void CheckCommand::AddLevels(CLI::App *app)
{
    auto add = [app](const char *name, std::vector<std::string> *rules, const char *description) {
        return app->add_option(name, *rules, description)->option_text("RULE")->allow_extra_args(false);
    };
    CLI::Validator rule(RuleFault, "");
    app->add_flag("--strict", strict_, "Warnings give exit status 1 as well");
    errorOption_ = add("--error", &errors_, "Findings of this rule are errors; may be repeated")->check(rule);
    warnOption_ = add("--warn", &warnings_, "Findings of this rule are warnings; may be repeated")->check(rule);
    offOption_ = add("--off", &off_, "No findings of this rule (in these files); may be repeated")
                     ->option_text("RULE[:PATH]")
                     ->check(CLI::Validator(OffFault, ""));
}

/* True if the option stands on the line and not in the configuration file alone. */
bool CheckCommand::IsOnLine(const CLI::Option *option) const
{
    const std::vector<CLI::Option *> &order = app_->parse_order();
    return std::find(order.begin(), order.end(), option) != order.end();
}

/* `words` has the option of each word about a rule, in the order in which they count. A word about a rule takes back what
 * was said of it before. One about the rule in some files is more exact, and holds for these all the same. */
void CheckCommand::ApplyLevels(const std::vector<const CLI::Option *> &words)
{
    std::map<const CLI::Option *, size_t> seen;
    std::vector<std::string> exact;
    for (const CLI::Option *option : words) {
        if (option != errorOption_ && option != warnOption_ && option != offOption_)
            continue;
        const std::string &word = (option == errorOption_  ? errors_
                                   : option == warnOption_ ? warnings_
                                                           : off_)[seen[option]++];
        if (word.find(':') != std::string::npos)
            exact.push_back(word);
        else if (option == offOption_)
            policy_.Set(*FindRule(word), std::nullopt);
        else
            policy_.Set(*FindRule(word), option == errorOption_ ? Severity::Error : Severity::Warning);
    }
    for (const std::string &word : exact)
        policy_.PassOver(*FindRule(word.substr(0, word.find(':'))), word.substr(word.find(':') + 1));
}

/* The line counts more than the configuration file, whose lists have no order: there the strictest one holds. */
void CheckCommand::ReadLevels()
{
    std::vector<const CLI::Option *> file;
    for (const CLI::Option *option : {offOption_, warnOption_, errorOption_})
        file.insert(file.end(), IsOnLine(option) ? 0 : option->results().size(), option);
    ApplyLevels(file);
    ApplyLevels({app_->parse_order().begin(), app_->parse_order().end()});
}

void CheckCommand::Understand()
{
    options_.Understand();
    ReadLevels();
    bool hasModules = !options_.Request().modules.empty();
    if (hasModules && !IsOnLine(allOption_))
        all_ = false;
    if (rules_ && options_.FormatName() != "text" && options_.FormatName() != "json")
        throw CLI::ValidationError("the rules are listed as text or json");
    if (!rules_ && all_ == hasModules)
        throw CLI::ValidationError("name the modules to check, or give --all");
}

const char *Help()
{
    static const std::string text = INTRODUCTION + RulesText() + EXAMPLES;
    return text.c_str();
}

void CheckCommand::WriteRules() const
{
    if (options_.OutputFormat() == Format::Json)
        WriteRulesJson(policy_);
    else
        WriteRulesText(policy_);
}

/* A baseline that is made anew knows all findings, so that the run does not fail for any of them. */
Baseline CheckCommand::NewBaseline(const std::vector<Finding> &findings) const
{
    std::vector<Finding> left;
    std::copy_if(findings.begin(), findings.end(), std::back_inserter(left),
                 [this](const Finding &finding) { return policy_.LevelOf(finding).has_value(); });
    return Baseline::Write(newBaseline_, left);
}

int CheckCommand::Run()
{
    if (rules_) {
        WriteRules();
        return EXIT_OK;
    }
    std::optional<Baseline> baseline;
    if (!baseline_.empty() && newBaseline_.empty())
        baseline = Baseline::Read(baseline_);
    Checker checker(options_.Request(), all_);
    Progress progress;
    CheckResult result = checker.Check(
        [&progress](size_t number, size_t total, const std::string &module) { progress.Show(number, total, module); });
    progress.Clear();
    size_t hidden = Ignores(options_.Request().dirs, checker.Marked(), all_).Apply(&result.findings);
    if (!newBaseline_.empty())
        baseline = NewBaseline(result.findings);

    Report report = MakeReport(std::move(result.findings), std::move(result.modules),
                               {policy_, baseline ? &*baseline : nullptr, all_});
    report.hidden = hidden;
    report.strict = strict_;
    report.paint = options_.Colors();
    for (const ReportFormat &format : ReportFormats())
        if (format.name == options_.FormatName())
            format.write(report);
    return ExitCodeOf(report);
}

} // namespace

const CommandEntry CHECK_COMMAND = {"check", "Report what a device would trip over", Help(), Make<CheckCommand>};

} // namespace inspect
