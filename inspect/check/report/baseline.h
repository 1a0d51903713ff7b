/* Findings that were there before somebody began to look at them: they do not count. */
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/findings.h"

namespace inspect {

/* What makes a finding the same as one of another run: rule, module, file and words. */
std::string KeyOf(const Finding &finding, const std::string &file);

class Baseline {
  public:
    struct Entry {
        std::string rule;
        std::string module;
        std::string file; /* seen from the baseline's folder, or "" */
        std::string text; /* the words */
        uint64_t count = 0;
    };

    /* Throws Failure, with line and column when the file is damaged. */
    static Baseline Read(const std::string &path);

    /* Makes the file of these findings, except for load-failed: a module that cannot be loaded is always news. Throws
     * Failure. Returns what is in it now. */
    static Baseline Write(const std::string &path, const std::vector<Finding> &findings);

  private:
    friend class BaselineUse;

    explicit Baseline(const std::string &path);
    void Add(const Entry &entry);
    std::string FileOf(const Finding &finding) const;

    std::string folder_;                               /* of the baseline */
    std::map<std::string, Entry> entries_;             /* by their keys */
    mutable std::pair<std::string, std::string> last_; /* answer of FileOf: findings come file by file */
};

/* Compares the findings of a run with a baseline, or with none. */
class BaselineUse {
  public:
    explicit BaselineUse(const Baseline *baseline);

    /* True if the baseline has the finding, as often as it was asked. */
    bool Takes(const Finding &finding);

    /* The number of the findings that the baseline has and that were not asked for, of modules that were looked at. Without
     * `all`, what other modules decide may have been overlooked, and is not counted. */
    size_t Gone(const std::set<std::string> &modules, bool all) const;

  private:
    const Baseline *baseline_;
    std::map<std::string, Baseline::Entry> left_;
};

} // namespace inspect
