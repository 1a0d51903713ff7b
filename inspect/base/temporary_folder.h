/* A folder for files that nobody else is to see. */
#pragma once

#include <filesystem>

namespace inspect {

/* It goes with the object, with all that is in it. A signal that ends the program leaves it behind. */
class TemporaryFolder {
  public:
    TemporaryFolder() = default;
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    /* Makes the folder the first time. Throws Failure. */
    const std::filesystem::path &Make();

    /* "" as long as it has not been made. */
    const std::filesystem::path &Path() const { return path_; }

  private:
    std::filesystem::path path_;
};

} // namespace inspect
