#include "line/help.h"

#include <CLI/CLI.hpp>

namespace inspect {

std::string UsageOf(const CLI::App &app, const std::string &name)
{
    std::string usage = name;
    for (const CLI::Option *option : app.get_options())
        if (option->get_positional())
            usage += " " + CLI::Formatter().make_option_usage(option);
    for (const CLI::Option *option : app.get_options())
        if (option->get_required() && !option->get_positional())
            usage += " " +
                     (option->get_snames().empty() ? "--" + option->get_lnames().front()
                                                   : "-" + option->get_snames().front()) +
                     " " + option->get_option_text();
    return usage + (app.get_require_subcommand_min() != 0 ? " COMMAND ..." : " [OPTIONS]");
}

} // namespace inspect
