/* The YIN files of the directories, found by the rule by which the schema library finds them. */
#ifndef KORV_INSPECT_YIN_FILES_H
#define KORV_INSPECT_YIN_FILES_H

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/model_request.h"
#include "model/yin_file.h"

namespace inspect {

class YinFiles {
  public:
    explicit YinFiles(const SearchDirs &dirs) : dirs_(dirs) {}

    /* The file of a module or submodule, or null: NAME.yin of the first directory that has it, else the newest
     * NAME@REVISION.yin of all. Lives as long as this object. */
    const YinFile *Find(std::string_view name);

    /* The prefix that the module gives itself; its name when its file does not tell. */
    std::string PrefixOf(std::string_view module);

    /* Names of all files, "NAME" of "NAME.yin" and "NAME@REVISION.yin", in order. */
    std::vector<std::string> Names() const;

  private:
    std::string PathOf(std::string_view name) const;

    SearchDirs dirs_;
    std::map<std::string, std::unique_ptr<YinFile>, std::less<>> files_; /* null: looked for in vain */
};

} // namespace inspect

#endif // KORV_INSPECT_YIN_FILES_H
