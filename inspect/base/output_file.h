/* Writing a result to a file. */
#pragma once

#include <cstdio>
#include <functional>
#include <string>

namespace inspect {

/* A file beside another one, or beside the place of one, until it takes its name; it goes if it never does. */
class NewFile {
  public:
    /* `shown` is the other one's name in messages. */
    NewFile(const std::string &path, std::string shown);
    NewFile(NewFile &&other) noexcept;
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;
    ~NewFile();

    /* Makes the file with the other one's mode and, if possible, owner; `print` writes its text. Throws Failure, also when nobody
     * may write the other one. */
    void Write(const std::function<void(FILE *)> &print);
    void TakeName();

  private:
    std::string path_;
    std::string shown_;
    std::string name_; /* its own, as long as it has it */
};

/* Writes the text to a new file beside `path` and gives it that name, so that `path` is never seen half written. What is
 * no regular file, such as a terminal, is written to directly. Throws Failure. */
void WriteOutputFile(const std::string &path, const std::string &text);

} // namespace inspect
