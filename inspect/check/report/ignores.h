/* Comments in models that hide findings: "korv-inspect off RULE: reason" behind the marks of a comment. One that has the
 * lines to itself is about the statement that follows, any other about the first statement that begins on its line, or else
 * about the one that ends there; what stands in the statement is hidden as well. */
#pragma once

#include <korv_platform.h>

#include <set>
#include <string>
#include <vector>

#include "base/model_request.h"
#include "check/findings.h"

namespace inspect {

/* Files of checked modules in which such comments stand, by the names that findings have of them. */
using MarkedFiles = std::set<std::string>;

/* Enters the files of a loaded module that have such a comment. */
void NoteMarkedFiles(const QY_CTX *schema, const QY_MOD *module, const SearchDirs &dirs, MarkedFiles *marked);

class Ignores {
  public:
    /* `all`: every module of the directories is checked, so that a comment about what other modules decide has had its
     * chance. */
    Ignores(const SearchDirs &dirs, const MarkedFiles &marked, bool all) : dirs_(dirs), marked_(marked), all_(all) {}

    /* Takes out the findings that comments hide and adds those about the comments. Looks into each file that has a finding,
     * and reads as a model those with such a comment. Returns the number of findings that were taken out. A load that
     * fails cannot be hidden. */
    size_t Apply(std::vector<Finding> *findings) const;

  private:
    const SearchDirs &dirs_;
    const MarkedFiles &marked_;
    bool all_;
};

} // namespace inspect
