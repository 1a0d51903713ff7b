#include "check/yang/path_form.h"

#include <algorithm>

namespace inspect {
namespace {

constexpr std::string_view BLANKS = " \t\r\n";

class PathReader {
  public:
    explicit PathReader(std::string_view text) : text_(text) {}

    std::optional<PathFault> Read();

  private:
    bool Take(std::string_view text);
    bool TakeName();
    void SkipBlanks();
    bool ReadSteps();
    bool ReadPredicate();
    bool Fail(const char *text);

    std::string_view text_;
    size_t at_ = 0;
    std::optional<PathFault> fault_;
};

bool PathReader::Fail(const char *text)
{
    fault_ = {text, at_};
    return false;
}

bool PathReader::Take(std::string_view text)
{
    if (!text_.substr(at_).starts_with(text))
        return false;
    at_ += text.size();
    return true;
}

void PathReader::SkipBlanks()
{
    at_ = std::min(text_.find_first_not_of(BLANKS, at_), text_.size());
}

/* A name with or without prefix. Its characters are known to be right. */
bool PathReader::TakeName()
{
    size_t end = std::min(text_.find_first_of(" \t\r\n/[]()=@*|+,'\"<>!$", at_), text_.size());
    bool isName = end > at_ && text_[at_] != '.' && (text_[at_] < '0' || text_[at_] > '9') &&
                  text_.substr(at_, end - at_).find("::") == std::string_view::npos;
    at_ = isName ? end : at_;
    return isName;
}

/* "[" name "=" "current()" "/" 1*("../") *(name "/") name "]", with blanks anywhere between them. */
bool PathReader::ReadPredicate()
{
    constexpr const char *FORM = "has a predicate that is not of the form [key = current()/../leaf]";
    SkipBlanks();
    if (!TakeName())
        return Fail(FORM);
    for (std::string_view part : {"=", "current", "(", ")", "/", "..", "/"}) {
        SkipBlanks();
        if (!Take(part))
            return Fail(FORM);
    }
    for (SkipBlanks(); Take(".."); SkipBlanks()) {
        SkipBlanks();
        if (!Take("/"))
            return Fail(FORM);
    }
    for (;;) {
        SkipBlanks();
        if (!TakeName())
            return Fail(FORM);
        SkipBlanks();
        if (Take("]"))
            return true;
        if (!Take("/"))
            return Fail(FORM);
    }
}

bool PathReader::ReadSteps()
{
    for (;;) {
        if (!TakeName())
            return Fail(at_ < text_.size() && BLANKS.find(text_[at_]) != std::string_view::npos
                            ? "has blanks between its steps"
                            : "has a step that is no name");
        while (Take("["))
            if (!ReadPredicate())
                return false;
        if (at_ == text_.size())
            return true;
        if (!Take("/"))
            return Fail("has blanks between its steps");
    }
}

std::optional<PathFault> PathReader::Read()
{
    if (!Take("/")) {
        if (!text_.starts_with("../"))
            Fail(BLANKS.find(text_.front()) != std::string_view::npos ? "begins with blanks"
                                                                      : "begins with neither '/' nor '../'");
        while (Take("../"))
            continue;
    }
    if (!fault_)
        ReadSteps();
    return fault_;
}

} // namespace

std::optional<PathFault> FaultOfPath(std::string_view text)
{
    return text.empty() ? std::nullopt : PathReader(text).Read();
}

} // namespace inspect
