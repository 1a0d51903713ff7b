#include "leafref_path.h"

namespace qxyang {

namespace {

class PathParser {
  public:
    PathParser(Build &build, Unit &unit, const Statement *statement)
        : build_(build), unit_(unit), statement_(statement), rest_(statement->argument)
    {
    }

    const LeafrefPath *parse();

  private:
    bool parseDereference();
    bool parseStart();
    bool parseSteps();
    bool parseStep();
    bool skipPredicate();
    bool skipBalanced(char open, char close);
    bool take(std::string_view text);
    void skipSpace();
    bool reject(std::string_view what);

    Build &build_;
    Unit &unit_;
    const Statement *statement_;
    std::string_view rest_;
    std::vector<PathStep> steps_;
    uint32_t up_ = 0;
    bool absolute_ = false;
    bool dereferences_ = false;
};

const LeafrefPath *PathParser::parse()
{
    skipSpace();
    bool good = rest_.starts_with("deref") ? parseDereference() : parseStart() && parseSteps();
    if (!good)
        return nullptr;
    Arena &arena = build_.module.records;
    auto *steps = arena.makeArray<PathStep>(steps_.size());
    std::copy(steps_.begin(), steps_.end(), steps);
    return arena.make<LeafrefPath>(build_.module.texts.text(statement_->argument), &build_.module, steps,
                                   static_cast<uint32_t>(steps_.size()), up_, absolute_, dereferences_);
}

/* What it refers to depends on data, so only its form is looked at. */
bool PathParser::parseDereference()
{
    take("deref");
    skipSpace();
    if (!skipBalanced('(', ')'))
        return reject("the parentheses after 'deref' do not match");
    dereferences_ = true;
    skipSpace();
    return rest_.starts_with('/') ? true : reject("a '/' is missing after 'deref(...)'");
}

bool PathParser::parseStart()
{
    if (take("/")) {
        absolute_ = true;
        return true;
    }
    if (take("current()")) {
        skipSpace();
        if (!take("/"))
            return reject("a '/' is missing after 'current()'");
        skipSpace();
    }
    while (take("..")) {
        if (++up_ > limits::kPathSteps)
            return reject("it has more than " + std::to_string(limits::kPathSteps) + " steps");
        skipSpace();
        if (!take("/"))
            return reject("it ends above a leaf");
        skipSpace();
    }
    return up_ > 0 ? true : reject("it begins with neither '/' nor '..'");
}

bool PathParser::parseSteps()
{
    for (;;) {
        if (!parseStep())
            return false;
        skipSpace();
        if (rest_.empty())
            return true;
        if (!take("/"))
            return reject("a '/' is missing before " + quoted(rest_));
    }
}

bool PathParser::parseStep()
{
    skipSpace();
    size_t length = std::min(rest_.find_first_of("/[ \t\r\n"), rest_.size());
    std::string_view text = rest_.substr(0, length);
    if (!isReference(text))
        return reject(text.empty() ? "a name is missing" : quoted(text) + " is no name of a node");
    if (steps_.size() == limits::kPathSteps)
        return reject("it has more than " + std::to_string(limits::kPathSteps) + " steps");
    rest_.remove_prefix(length);
    Reference reference = splitReference(text);
    QY_MOD *module = build_.moduleOf(unit_, statement_, reference);
    if (module == nullptr)
        return false;
    steps_.push_back({reference.prefix.empty() ? nullptr : module, build_.module.texts.text(reference.name)});
    return skipPredicate();
}

/* Predicates choose among instances: the schema node is the same. */
bool PathParser::skipPredicate()
{
    for (skipSpace(); rest_.starts_with('['); skipSpace())
        if (!skipBalanced('[', ']'))
            return reject("a ']' is missing");
    return true;
}

/* From an opening bracket behind the closing one that belongs to it; quoted texts may contain any of them. */
bool PathParser::skipBalanced(char open, char close)
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

bool PathParser::take(std::string_view text)
{
    if (!rest_.starts_with(text))
        return false;
    rest_.remove_prefix(text.size());
    return true;
}

void PathParser::skipSpace()
{
    while (!rest_.empty() && isSpace(rest_.front()))
        rest_.remove_prefix(1);
}

bool PathParser::reject(std::string_view what)
{
    build_.fail(unit_, statement_, "path " + quoted(statement_->argument) + ": " + std::string(what));
    return false;
}

}  // namespace

const LeafrefPath *parseLeafrefPath(Build &build, Unit &unit, const Statement *path)
{
    return PathParser(build, unit, path).parse();
}

}  // namespace qxyang
