/* Patterns of file names. */
#pragma once

#include <string>

namespace inspect {

class FileGlob {
  public:
    /* `*` stands for any characters but "/", `?` for one of these, `**` for any characters; a whole step of the path that
     * is `**` stands for any number of folders, none included. A pattern without "/" is of the file's name alone; any
     * other is relative to the current directory. */
    explicit FileGlob(const std::string &pattern);

    bool Matches(const std::string &file) const;

  private:
    bool isOfName_;
    std::string pattern_;
    mutable std::string last_; /* the file that was asked for last: findings come file by file */
    mutable bool lastMatches_ = false;
};

/* The path from the root, without "." and "..". */
std::string AbsolutePath(const std::string &path);

} // namespace inspect
