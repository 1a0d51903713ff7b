/* What a word of the command line may become: completion of shells asks for it. */
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace inspect {

struct Candidate {
    std::string word;
    std::string description; /* or "" */
};

/* What the last of the words, which may be empty, may become. The words are those behind the program's name. */
std::vector<Candidate> Complete(const CLI::App &app, const std::vector<std::string> &words);

} // namespace inspect
