/* The directory in which the benchmarks' modules live while they run. */
#ifndef KORV_BENCH_MODEL_FILES_H
#define KORV_BENCH_MODEL_FILES_H

#include <string>

namespace bench {

class ModelFiles {
  public:
    ModelFiles();
    ~ModelFiles();
    ModelFiles(const ModelFiles &) = delete;
    ModelFiles &operator=(const ModelFiles &) = delete;

    const std::string &Dir() const { return m_dir; }
    /* Writes NAME.yin and returns its text. */
    std::string Add(const std::string &name, std::string text) const;
    /* Writes NAME.yang: the compact form of a module in YIN. */
    void AddCompact(const std::string &name, const std::string &yin) const;

  private:
    std::string m_dir;
};

} // namespace bench

#endif // KORV_BENCH_MODEL_FILES_H
