#include "build/leafref_path.h"

#include <algorithm>

namespace qxyang {

namespace {

/* RFC 7950, 9.9.2, and path-arg in 14. */
class PathParser {
  public:
    PathParser(Build &build, Unit &unit, const Statement *statement)
        : build_(build), unit_(unit), statement_(statement), rest_(statement->argument)
    {
    }

    const LeafrefPath *Parse();

  private:
    bool ParseDereference();
    bool ParseStart();
    bool ParseSteps();
    bool ParseStep();
    bool SkipPredicate();
    bool SkipBalanced(char open, char close);
    bool Take(std::string_view text);
    void SkipSpace();
    bool Reject(std::string_view what);

    Build &build_;
    Unit &unit_;
    const Statement *statement_;
    std::string_view rest_;
    std::vector<PathStep> steps_;
    uint32_t up_ = 0;
    bool absolute_ = false;
    bool dereferences_ = false;
};

const LeafrefPath *PathParser::Parse()
{
    SkipSpace();
    bool good = rest_.starts_with("deref") ? ParseDereference() : ParseStart() && ParseSteps();
    if (!good)
        return nullptr;
    Arena &arena = build_.module.records;
    auto *steps = arena.MakeArray<PathStep>(steps_.size());
    std::copy(steps_.begin(), steps_.end(), steps);
    return arena.Make<LeafrefPath>(build_.module.texts.Text(statement_->argument), &build_.module, steps,
                                   static_cast<uint32_t>(steps_.size()), up_, absolute_, dereferences_);
}

/* RFC 7950, 10.3.1: what deref() refers to depends on data, so only the form of the path is checked. */
bool PathParser::ParseDereference()
{
    Take("deref");
    SkipSpace();
    if (!SkipBalanced('(', ')'))
        return Reject("the parentheses after 'deref' do not match");
    dereferences_ = true;
    SkipSpace();
    return rest_.starts_with('/') ? true : Reject("a '/' is missing after 'deref(...)'");
}

bool PathParser::ParseStart()
{
    if (Take("/")) {
        absolute_ = true;
        return true;
    }
    if (Take("current()")) {
        SkipSpace();
        if (!Take("/"))
            return Reject("a '/' is missing after 'current()'");
        SkipSpace();
    }
    while (Take("..")) {
        if (++up_ > limits::PATH_STEPS)
            return Reject("it has more than " + std::to_string(limits::PATH_STEPS) + " steps");
        SkipSpace();
        if (!Take("/"))
            return Reject("it ends above a leaf");
        SkipSpace();
    }
    return up_ > 0 ? true : Reject("it begins with neither '/' nor '..'");
}

bool PathParser::ParseSteps()
{
    for (;;) {
        if (!ParseStep())
            return false;
        SkipSpace();
        if (rest_.empty())
            return true;
        if (!Take("/"))
            return Reject("a '/' is missing before " + Quoted(rest_));
    }
}

bool PathParser::ParseStep()
{
    SkipSpace();
    size_t length = std::min(rest_.find_first_of("/[ \t\r\n"), rest_.size());
    std::string_view text = rest_.substr(0, length);
    if (!IsReference(text))
        return Reject(text.empty() ? "a name is missing" : Quoted(text) + " is no name of a node");
    if (steps_.size() == limits::PATH_STEPS)
        return Reject("it has more than " + std::to_string(limits::PATH_STEPS) + " steps");
    rest_.remove_prefix(length);
    Reference reference = SplitReference(text);
    QY_MOD *module = build_.ModuleOf(unit_, statement_, reference);
    if (module == nullptr)
        return false;
    steps_.push_back({reference.prefix.empty() ? nullptr : module, build_.module.texts.Text(reference.name)});
    return SkipPredicate();
}

/* A predicate chooses among the instances of one schema node, so the way through the schema ignores it. */
bool PathParser::SkipPredicate()
{
    for (SkipSpace(); rest_.starts_with('['); SkipSpace()) {
        std::string_view predicate = rest_;
        if (!SkipBalanced('[', ']'))
            return Reject("a ']' is missing");
        predicate.remove_suffix(rest_.size() + 1);
        if (Trim(predicate.substr(1)).empty())
            return Reject("a predicate is empty");
    }
    return true;
}

/* Skips from an opening bracket to behind its closing one. Brackets in quoted texts do not count. */
bool PathParser::SkipBalanced(char open, char close)
{
    size_t depth = 0;
    char quote = '\0';
    for (size_t i = 0; i < rest_.size(); ++i) {
        char c = rest_[i];
        if (quote != '\0')
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == open)
            ++depth;
        else if (c == close && depth > 0)
            --depth;
        if (depth == 0 && c == close) {
            rest_.remove_prefix(i + 1);
            return true;
        }
        if (depth == 0)
            return false;
    }
    return false;
}

bool PathParser::Take(std::string_view text)
{
    if (!rest_.starts_with(text))
        return false;
    rest_.remove_prefix(text.size());
    return true;
}

void PathParser::SkipSpace()
{
    while (!rest_.empty() && IsSpace(rest_.front()))
        rest_.remove_prefix(1);
}

bool PathParser::Reject(std::string_view what)
{
    build_.Fail(unit_, statement_, "path " + Quoted(statement_->argument) + ": " + std::string(what));
    return false;
}

} // namespace

const LeafrefPath *ParseLeafrefPath(Build &build, Unit &unit, const Statement *path)
{
    return PathParser(build, unit, path).Parse();
}

} // namespace qxyang
