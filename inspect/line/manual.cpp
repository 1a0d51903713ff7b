#include "line/manual.h"

#include <korv_lib_yang.h>

#include <CLI/CLI.hpp>

#include <map>
#include <sstream>

#include "line/help.h"

namespace inspect {
namespace {

/* A text as man shows it. */
std::string Plain(const std::string &text)
{
    std::string plain;
    for (char c : text) {
        if (c == '\\' || c == '-')
            plain += '\\';
        plain += c == '\\' ? std::string("e") : std::string(1, c);
    }
    if (plain.starts_with(".") || plain.starts_with("'"))
        plain.insert(0, "\\&");
    return plain;
}

/* The lines as they stand, which is how examples are shown, or as paragraphs. */
std::string Lines(const std::string &text, bool asTheyStand)
{
    std::string lines = asTheyStand ? ".nf\n" : "";
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines += line.empty() ? ".PP\n" : Plain(line) + "\n";
    return lines + (asTheyStand ? ".fi\n" : "");
}

/* A help text: paragraphs, but for tables and examples, which are indented. */
std::string HelpText(const std::string &help)
{
    std::string page;
    std::istringstream in(help);
    bool isOpen = false;
    for (std::string line; std::getline(in, line);) {
        bool isIndented = line.starts_with("  ");
        if (isIndented != isOpen && !line.empty()) {
            page += isIndented ? ".nf\n" : ".fi\n";
            isOpen = isIndented;
        }
        page += line.empty() ? ".PP\n" : Plain(line) + "\n";
    }
    return page + (isOpen ? ".fi\n" : "");
}

/* "-d, --dir DIR" and what it does. */
std::string OptionEntry(const CLI::Option &option)
{
    std::string names;
    for (const std::string &name : option.get_snames())
        names += (names.empty() ? "-" : ", -") + name;
    for (const std::string &name : option.get_lnames())
        names += (names.empty() ? "--" : ", --") + name;
    if (option.get_positional())
        names = option.get_name();
    std::string text = option.get_option_text();
    bool isGlued = text.empty() || text == " " || text.starts_with("[@");
    return ".TP\n\\fB" + Plain(names) + "\\fR" + (isGlued ? "" : " ") + Plain(text == " " ? "" : text) + "\n" +
           Plain(option.get_description()) + ".\n";
}

/* Options that most commands have are listed once. */
class SharedOptions {
  public:
    explicit SharedOptions(const CLI::App &app)
    {
        std::vector<const CLI::App *> commands = app.get_subcommands({});
        std::map<std::string, size_t> counts;
        for (const CLI::App *command : commands)
            for (const CLI::Option *option : command->get_options())
                if (2 * ++counts[OptionEntry(*option)] > commands.size() && !option->get_positional())
                    shared_[OptionEntry(*option)] = true;
    }

    bool Have(const CLI::Option &option) const { return shared_.contains(OptionEntry(option)); }

    std::string Entries() const
    {
        std::string entries;
        for (const auto &[entry, isShared] : shared_)
            entries += entry;
        return entries;
    }

  private:
    std::map<std::string, bool> shared_;
};

std::string CommandSection(const CLI::App &command, const SharedOptions &shared)
{
    std::string section = ".SS " + command.get_name() + "\n" + Plain(command.get_description()) + ".\n.PP\n" +
                          Plain(UsageOf(command, PROGRAM + std::string(" ") + command.get_name())) + "\n";
    for (const CLI::Option *option : command.get_options())
        if (!shared.Have(*option))
            section += OptionEntry(*option);
    return section + ".PP\n" + HelpText(command.get_footer());
}

} // namespace

std::string ManualPage(const CLI::App &app)
{
    SharedOptions shared(app);
    std::string page = ".TH KORV-INSPECT 1 \"\" \"korv-inspect " KORV_LIB_YANG_VERSION
                       "\" \"User Commands\"\n.SH NAME\nkorv\\-inspect \\- shows what a device makes of YANG modules\n"
                       ".SH SYNOPSIS\n.nf\n";
    for (const CLI::App *command : app.get_subcommands({}))
        page += Plain(UsageOf(*command, PROGRAM + std::string(" ") + command->get_name())) + "\n";
    page +=
        ".fi\n.SH DESCRIPTION\n" + Plain(app.get_description()) + "\n.PP\n" + Lines(GENERAL, false) + ".SH COMMANDS\n";
    for (const CLI::App *command : app.get_subcommands({}))
        page += CommandSection(*command, shared);
    page += ".SH OPTIONS\n";
    for (const CLI::Option *option : app.get_options())
        page += OptionEntry(*option);
    page += ".SS Of most commands\n" + shared.Entries();
    page += ".SH EXIT STATUS\n" + Lines(EXIT_STATUS, false) + ".SH ENVIRONMENT\n" + Lines(ENVIRONMENT, true) +
            ".SH EXAMPLES\n" + HelpText(EXAMPLES);
    return page;
}

} // namespace inspect
