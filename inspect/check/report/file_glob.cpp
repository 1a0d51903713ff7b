#include "check/report/file_glob.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace inspect {
namespace {

/* A matcher that is at several places of the pattern at once: its work is the product of the two lengths, whatever the
 * pattern. */
class Matcher {
  public:
    explicit Matcher(std::string_view pattern) : pattern_(pattern) {}

    bool Matches(std::string_view text)
    {
        std::vector<bool> here(pattern_.size() + 1, false);
        Enter(0, true, &here);
        for (const char character : text) {
            std::vector<bool> next(pattern_.size() + 1, false);
            for (size_t at = 0; at < pattern_.size(); ++at)
                if (here[at])
                    Step(at, character, &next);
            here.swap(next);
        }
        return here[pattern_.size()];
    }

  private:
    bool IsFolders(size_t at) const { return pattern_.substr(at, 3) == "**/" && (at == 0 || pattern_[at - 1] == '/'); }
    size_t StarSize(size_t at) const { return pattern_.substr(at, 2) == "**" ? 2 : 1; }

    /* Is at that place, and behind the stars that may stand for nothing. */
    void Enter(size_t at, bool behindSlash, std::vector<bool> *places) const
    {
        while (at <= pattern_.size()) {
            (*places)[at] = true;
            if (at == pattern_.size() || pattern_[at] != '*')
                return;
            if (IsFolders(at) && !behindSlash)
                return;
            at += IsFolders(at) ? 3 : StarSize(at);
        }
    }

    void Step(size_t at, char character, std::vector<bool> *next) const
    {
        bool isSlash = character == '/';
        if (pattern_[at] == '*') {
            if (!isSlash || StarSize(at) == 2)
                Enter(at, isSlash, next);
        } else if (pattern_[at] == character || (pattern_[at] == '?' && !isSlash)) {
            Enter(at + 1, isSlash, next);
        }
    }

    std::string_view pattern_;
};

} // namespace

std::string AbsolutePath(const std::string &path)
{
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return (error ? std::filesystem::path(path) : absolute).lexically_normal().string();
}

FileGlob::FileGlob(const std::string &pattern) : isOfName_(pattern.find('/') == std::string::npos)
{
    pattern_ = isOfName_ ? pattern : AbsolutePath(pattern);
}

bool FileGlob::Matches(const std::string &file) const
{
    if (file == last_)
        return lastMatches_;
    std::string path = AbsolutePath(file);
    lastMatches_ = Matcher(pattern_).Matches(isOfName_ ? path.substr(path.rfind('/') + 1) : path);
    last_ = file;
    return lastMatches_;
}

} // namespace inspect
