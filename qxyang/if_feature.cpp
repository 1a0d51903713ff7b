#include "if_feature.h"

namespace qxyang {

namespace {

/* ---- compiling ------------------------------------------------------------------------------------------------- */

class FeatureCompiler {
  public:
    explicit FeatureCompiler(Build &build) : build_(build) {}

    void compile(Feature &feature);

  private:
    Build &build_;
    std::vector<Feature *> chain_; /* features being compiled, each referring to the next */
};

/* Parses one expression; the operators wait on a stack until their operands are complete. */
class ExpressionParser {
  public:
    ExpressionParser(Build &build, Unit &unit, const Statement *statement, FeatureCompiler *features)
        : build_(build), unit_(unit), statement_(statement), features_(features)
    {
    }

    /* False: the failure is recorded. */
    bool parse(FeatureExpression &expression);

  private:
    enum class Waiting : uint8_t {
        kParenthesis,
        kOr,
        kAnd,
        kNot
    }; /* in the order of precedence */

    std::string_view takeToken();
    bool takeOperand(std::string_view token);
    bool takeOperator(std::string_view token);
    bool pushFeature(std::string_view token);
    void push(Waiting waiting) { waiting_.push_back(waiting); }
    void reduce(Waiting least);
    bool reject(std::string_view what);

    Build &build_;
    Unit &unit_;
    const Statement *statement_;
    FeatureCompiler *features_; /* null: features are compiled already */
    std::string_view rest_;
    std::vector<FeatureStep> steps_;
    std::vector<Waiting> waiting_;
    bool wantsOperand_ = true;
};

bool ExpressionParser::parse(FeatureExpression &expression)
{
    rest_ = statement_->argument;
    if (!unit_.isVersion11 && !isReference(rest_))
        return reject("in YANG version 1 it is the name of one feature");
    for (std::string_view token = takeToken(); !token.empty(); token = takeToken()) {
        if (!(wantsOperand_ ? takeOperand(token) : takeOperator(token)))
            return false;
        if (waiting_.size() > limits::kExpressionDepth)
            return reject("it is nested deeper than " + std::to_string(limits::kExpressionDepth) + " levels");
    }
    if (wantsOperand_)
        return reject("a feature is missing at its end");
    reduce(Waiting::kOr);
    if (!waiting_.empty())
        return reject("a ')' is missing");
    Arena &arena = build_.module.records;
    auto *steps = arena.makeArray<FeatureStep>(steps_.size());
    std::copy(steps_.begin(), steps_.end(), steps);
    expression = {static_cast<uint32_t>(steps_.size()), steps};
    return true;
}

std::string_view ExpressionParser::takeToken()
{
    while (!rest_.empty() && isSpace(rest_.front()))
        rest_.remove_prefix(1);
    auto isParenthesis = [](char c) { return c == '(' || c == ')'; };
    size_t length = 0;
    if (!rest_.empty() && isParenthesis(rest_.front()))
        length = 1;
    else
        while (length < rest_.size() && !isSpace(rest_[length]) && !isParenthesis(rest_[length]))
            ++length;
    std::string_view token = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return token;
}

bool ExpressionParser::takeOperand(std::string_view token)
{
    if (token == "(" || token == "not") {
        push(token == "not" ? Waiting::kNot : Waiting::kParenthesis);
        return true;
    }
    if (token == ")" || token == "and" || token == "or")
        return reject("a feature is missing before " + quoted(token));
    wantsOperand_ = false;
    return pushFeature(token);
}

bool ExpressionParser::takeOperator(std::string_view token)
{
    if (token == "and" || token == "or") {
        Waiting waiting = token == "and" ? Waiting::kAnd : Waiting::kOr;
        reduce(waiting);
        push(waiting);
        wantsOperand_ = true;
        return true;
    }
    if (token != ")")
        return reject("'and' or 'or' is missing before " + quoted(token));
    reduce(Waiting::kOr);
    if (waiting_.empty())
        return reject("a '(' is missing");
    waiting_.pop_back();
    return true;
}

/* Moves operators that bind at least that strongly behind their operands. */
void ExpressionParser::reduce(Waiting least)
{
    for (; !waiting_.empty() && waiting_.back() >= least; waiting_.pop_back()) {
        Waiting waiting = waiting_.back();
        auto kind = waiting == Waiting::kNot   ? FeatureStep::kNot
                    : waiting == Waiting::kAnd ? FeatureStep::kAnd
                                               : FeatureStep::kOr;
        steps_.push_back({kind, nullptr});
    }
}

bool ExpressionParser::pushFeature(std::string_view token)
{
    if (!isReference(token))
        return reject(quoted(token) + " is no feature name");
    Reference reference = splitReference(token);
    QY_MOD *module = build_.moduleOf(unit_, statement_, reference);
    if (module == nullptr)
        return false;
    Feature *feature = module->features.find(reference.name);
    if (feature == nullptr) {
        build_.failUnknown(unit_, statement_, "feature", token,
                           [module](auto &&offer) { forEachNameIn(module->features, offer); });
        return false;
    }
    if (features_ != nullptr && module == &build_.module)
        features_->compile(*feature);
    steps_.push_back({FeatureStep::kFeature, feature});
    return true;
}

bool ExpressionParser::reject(std::string_view what)
{
    build_.fail(unit_, statement_, "if-feature " + quoted(statement_->argument) + ": " + std::string(what));
    return false;
}

const Condition *compileConditions(Build &build, Unit &unit, const Statement *statement, const Condition *list,
                                   FeatureCompiler *features)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::kIfFeature)
            continue;
        FeatureExpression expression;
        if (ExpressionParser(build, unit, child, features).parse(expression))
            list = build.module.records.make<Condition>(list, expression);
    }
    return list;
}

uint32_t longestChain(const Condition *condition)
{
    uint32_t longest = 0;
    for (; condition != nullptr; condition = condition->next)
        for (uint32_t i = 0; i < condition->expression.count; ++i)
            if (const Feature *feature = condition->expression.steps[i].feature)
                longest = std::max(longest, feature->chain);
    return longest;
}

void FeatureCompiler::compile(Feature &feature)
{
    if (feature.chain != 0)
        return;
    auto nameOf = [](const Feature *entry) { return std::string_view(entry->name); };
    if (feature.visiting) {
        build_.fail(*feature.unit, feature.statement, "feature cycle: " + chainText(chain_, feature.name, nameOf));
        return;
    }
    bool tooLong = chain_.size() >= limits::kChain;
    if (!tooLong) {
        feature.visiting = true;
        chain_.push_back(&feature);
        feature.condition = compileConditions(build_, *feature.unit, feature.statement, nullptr, this);
        feature.chain = 1 + longestChain(feature.condition);
        chain_.pop_back();
        feature.visiting = false;
        tooLong = feature.chain > limits::kChain;
    }
    if (!tooLong)
        return;
    build_.fail(*feature.unit, feature.statement,
                "feature " + quoted(feature.name) + " depends on a chain of more than " +
                    std::to_string(limits::kChain) + " features");
    throw LoadStopped{};
}

/* ---- evaluating ------------------------------------------------------------------------------------------------ */

/* Each feature is evaluated once as long as no feature changes. */
bool isEnabled(Feature &feature)
{
    uint64_t epoch = feature.module->context->featureEpoch;
    if (feature.epoch == epoch)
        return feature.known;
    bool own = !feature.module->byName || feature.enabled;
    feature.known = own && holds(feature.condition);
    feature.epoch = epoch;
    return feature.known;
}

/* Operands wait as bits of one word: the parser limits their number. */
bool evaluate(const FeatureExpression &expression)
{
    uint64_t stack = 0;
    for (uint32_t i = 0; i < expression.count; ++i) {
        const FeatureStep &step = expression.steps[i];
        uint64_t top = stack & 1;
        uint64_t below = stack >> 1 & 1;
        switch (step.kind) {
            case FeatureStep::kFeature:
                stack = stack << 1 | (isEnabled(*step.feature) ? 1 : 0);
                break;
            case FeatureStep::kNot:
                stack ^= 1;
                break;
            case FeatureStep::kAnd:
                stack = (stack >> 2) << 1 | (top & below);
                break;
            case FeatureStep::kOr:
                stack = (stack >> 2) << 1 | (top | below);
                break;
        }
    }
    return (stack & 1) != 0;
}

}  // namespace

const Condition *conditionsOf(Build &build, Unit &unit, const Statement *statement, const Condition *list)
{
    return compileConditions(build, unit, statement, list, nullptr);
}

void compileFeatures(Build &build)
{
    FeatureCompiler compiler(build);
    for (Unit *unit : build.units)
        for (Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::kFeature)
                if (Feature *feature = build.module.features.find(statement->argument))
                    compiler.compile(*feature);
}

bool holds(const Condition *condition)
{
    for (; condition != nullptr; condition = condition->next)
        if (!evaluate(condition->expression))
            return false;
    return true;
}

void setCondition(QY_NODE *node, const Condition *condition)
{
    if (condition == nullptr)
        return;
    node->module->conditions.push_back(condition);
    node->condition = static_cast<uint32_t>(node->module->conditions.size());
}

}  // namespace qxyang
