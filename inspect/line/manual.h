/* The manual page, made of what --help says. */
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace inspect {

/* In the language of man. */
std::string ManualPage(const CLI::App &app);

} // namespace inspect
