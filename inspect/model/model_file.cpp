#include "model/model_file.h"

#include <new>
#include <string_view>

namespace inspect {

ModelFile::ModelFile(QXYANG_FILE *file, std::string shown) : file_(file), shown_(std::move(shown))
{
    if (file == nullptr)
        throw std::bad_alloc();
}

ModelFile ModelFile::Read(const std::string &path, const std::string &shown, bool withComments)
{
    return {QXYANG_ReadFile(path.c_str(), withComments ? QXYANG_OPTION_COMMENTS : 0), shown};
}

ModelFile ModelFile::ReadText(const std::string &text, bool isCompact, const std::string &shown)
{
    const char *name = isCompact ? "text.yang" : "text.yin";
    return {QXYANG_ReadText(name, text.data(), text.size(), QXYANG_OPTION_COMMENTS), shown};
}

std::vector<Cause> ModelFile::Faults() const
{
    struct Faults {
        const std::string &shown;
        std::vector<Cause> causes;
    } faults = {shown_, {}};
    QXYANG_ScanFileFailures(
        file_.get(),
        [](const QXYANG_FAILURE_S *failure, void *cookie) -> uint32_t {
            auto &all = *static_cast<Faults *>(cookie);
            std::string_view sentence = failure->pcSentence;
            std::string own = all.shown + ": "; // a file that cannot be read has no place, but its name
            size_t begin = sentence.starts_with(own) ? own.size() : 0;
            all.causes.push_back({all.shown, failure->uiLine, failure->uiColumn, std::string(sentence.substr(begin))});
            return 0;
        },
        &faults);
    return faults.causes;
}

} // namespace inspect
