/* The directory in which the benchmarks' modules live while they run. */
#ifndef KORV_BENCH_MODEL_FILES_H
#define KORV_BENCH_MODEL_FILES_H

#include <string>

namespace bench {

class ModelFiles {
  public:
    /* given: a directory of models that the user has named, or none. */
    explicit ModelFiles(std::string given = {});
    /* Writes into a directory that exists, and stays. */
    ModelFiles(std::string given, std::string dir);
    ~ModelFiles();
    ModelFiles(const ModelFiles &) = delete;
    ModelFiles &operator=(const ModelFiles &) = delete;

    const std::string &Dir() const { return m_dir; }
    const std::string &Given() const { return m_given; }
    /* Writes NAME.yin and returns its text. */
    std::string Add(const std::string &name, std::string text) const;
    /* Writes NAME.yang: the compact form of a module in YIN. */
    void AddCompact(const std::string &name, const std::string &yin) const;

  private:
    std::string m_given;
    std::string m_dir;
    bool m_stays = false;
};

} // namespace bench

#endif // KORV_BENCH_MODEL_FILES_H
