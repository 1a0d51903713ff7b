#include "build/if_feature.h"

#include <algorithm>

namespace qxyang {

namespace {

/* ---- compiling ------------------------------------------------------------------------------------------------- */

/* Measures on how long a chain of features each feature depends. RFC 7950, 7.20.1: no feature refers to itself,
 * directly or through others. */
class FeatureChains {
  public:
    explicit FeatureChains(Build &build) : build_(build) {}

    void Measure(Feature &feature);

  private:
    /* A feature whose operands are being looked at. */
    struct Visit {
        Feature *feature;
        const Condition *condition; /* whose steps are looked at */
        uint32_t step;
    };

    void Start(Feature &feature);
    void StopAtLimit(const Feature &feature);
    static Feature *NextOperand(Visit &visit);

    Build &build_;
    std::vector<Visit> chain_; /* each refers to the next */
};

/* Parses one expression: RFC 7950, 7.20.2; before version 1.1 it is the name of one feature: RFC 6020, 7.18.2.
 * Operators wait on a stack until their operands are complete. */
class ExpressionParser {
  public:
    ExpressionParser(Build &build, Unit &unit, const Statement *statement)
        : build_(build), unit_(unit), statement_(statement)
    {
    }

    /* False: the failure is recorded. */
    bool Parse(FeatureExpression &expression);

  private:
    enum class Waiting : uint8_t {
        Parenthesis,
        Or,
        And,
        Not
    }; /* in the order of precedence */

    std::string_view TakeToken();
    bool TakeOperand(std::string_view token);
    bool TakeOperator(std::string_view token);
    bool PushFeature(std::string_view token);
    void Push(Waiting waiting) { waiting_.push_back(waiting); }
    void Reduce(Waiting least);
    bool Reject(std::string_view what);

    Build &build_;
    Unit &unit_;
    const Statement *statement_;
    std::string_view rest_;
    std::vector<FeatureStep> steps_;
    std::vector<Waiting> waiting_;
    bool wantsOperand_ = true;
};

bool ExpressionParser::Parse(FeatureExpression &expression)
{
    rest_ = statement_->argument;
    if (!unit_.isVersion11 && !IsReference(rest_))
        return Reject("in YANG version 1 it is the name of one feature");
    for (std::string_view token = TakeToken(); !token.empty(); token = TakeToken()) {
        if (!(wantsOperand_ ? TakeOperand(token) : TakeOperator(token)))
            return false;
        if (waiting_.size() > limits::EXPRESSION_DEPTH)
            return Reject("it is nested deeper than " + std::to_string(limits::EXPRESSION_DEPTH) + " levels");
    }
    if (wantsOperand_)
        return Reject("a feature is missing at its end");
    Reduce(Waiting::Or);
    if (!waiting_.empty())
        return Reject("a ')' is missing");
    Arena &arena = build_.module.records;
    auto *steps = arena.MakeArray<FeatureStep>(steps_.size());
    std::copy(steps_.begin(), steps_.end(), steps);
    expression = {static_cast<uint32_t>(steps_.size()), steps};
    return true;
}

std::string_view ExpressionParser::TakeToken()
{
    while (!rest_.empty() && IsSpace(rest_.front()))
        rest_.remove_prefix(1);
    auto isParenthesis = [](char c) { return c == '(' || c == ')'; };
    size_t length = 0;
    if (!rest_.empty() && isParenthesis(rest_.front()))
        length = 1;
    else
        while (length < rest_.size() && !IsSpace(rest_[length]) && !isParenthesis(rest_[length]))
            ++length;
    std::string_view token = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return token;
}

bool ExpressionParser::TakeOperand(std::string_view token)
{
    if (token == "(" || token == "not") {
        Push(token == "not" ? Waiting::Not : Waiting::Parenthesis);
        return true;
    }
    if (token == ")" || token == "and" || token == "or")
        return Reject("a feature is missing before " + Quoted(token));
    wantsOperand_ = false;
    return PushFeature(token);
}

bool ExpressionParser::TakeOperator(std::string_view token)
{
    if (token == "and" || token == "or") {
        Waiting waiting = token == "and" ? Waiting::And : Waiting::Or;
        Reduce(waiting);
        Push(waiting);
        wantsOperand_ = true;
        return true;
    }
    if (token != ")")
        return Reject("'and' or 'or' is missing before " + Quoted(token));
    Reduce(Waiting::Or);
    if (waiting_.empty())
        return Reject("a '(' is missing");
    waiting_.pop_back();
    return true;
}

/* Moves operators that bind at least that strongly behind their operands. */
void ExpressionParser::Reduce(Waiting least)
{
    for (; !waiting_.empty() && waiting_.back() >= least; waiting_.pop_back()) {
        Waiting waiting = waiting_.back();
        auto kind = waiting == Waiting::Not   ? FeatureStep::Kind::Not
                    : waiting == Waiting::And ? FeatureStep::Kind::And
                                              : FeatureStep::Kind::Or;
        steps_.push_back({kind, nullptr});
    }
}

bool ExpressionParser::PushFeature(std::string_view token)
{
    if (!IsReference(token))
        return Reject(Quoted(token) + " is no feature name");
    Reference reference = SplitReference(token);
    QY_MOD *module = build_.ModuleOf(unit_, statement_, reference);
    if (module == nullptr)
        return false;
    Feature *feature = module->features.Find(reference.name);
    if (feature == nullptr) {
        build_.FailUnknown(
            unit_, statement_, "feature", token, [module](auto &&offer) { ForEachNameIn(module->features, offer); },
            [&](const QY_MOD &imported) { return imported.features.Find(reference.name) != nullptr; });
        return false;
    }
    steps_.push_back({FeatureStep::Kind::Operand, feature});
    return true;
}

bool ExpressionParser::Reject(std::string_view what)
{
    build_.Fail(unit_, statement_, "if-feature " + Quoted(statement_->argument) + ": " + std::string(what));
    return false;
}

uint32_t LongestChain(const Condition *condition)
{
    uint32_t longest = 0;
    for (; condition != nullptr; condition = condition->next)
        for (uint32_t i = 0; i < condition->expression.count; ++i)
            if (const Feature *feature = condition->expression.steps[i].feature)
                longest = std::max(longest, feature->chain);
    return longest;
}

/* Visits the feature and those that it depends on. The chain lies on the heap, since it may be long and the stack
 * small. */
void FeatureChains::Measure(Feature &feature)
{
    for (Start(feature); !chain_.empty();) {
        Visit &visit = chain_.back();
        if (Feature *operand = NextOperand(visit)) {
            if (operand->module == &build_.module)
                Start(*operand);
            continue;
        }
        Feature &measured = *visit.feature;
        measured.chain = 1 + LongestChain(measured.condition);
        measured.visiting = false;
        chain_.pop_back();
        if (measured.chain > limits::CHAIN)
            StopAtLimit(measured);
    }
}

void FeatureChains::Start(Feature &feature)
{
    if (feature.chain != 0)
        return;
    auto nameOf = [](const Visit &visit) { return std::string_view(visit.feature->name); };
    if (feature.visiting)
        return build_.Fail(*feature.unit, feature.statement,
                           "feature cycle: " + ChainText(chain_, feature.name, nameOf));
    if (chain_.size() >= limits::CHAIN)
        StopAtLimit(feature);
    feature.visiting = true;
    chain_.push_back({&feature, feature.condition, 0});
}

Feature *FeatureChains::NextOperand(Visit &visit)
{
    for (; visit.condition != nullptr; visit.condition = visit.condition->next, visit.step = 0)
        while (visit.step < visit.condition->expression.count)
            if (Feature *feature = visit.condition->expression.steps[visit.step++].feature)
                return feature;
    return nullptr;
}

void FeatureChains::StopAtLimit(const Feature &feature)
{
    build_.Fail(*feature.unit, feature.statement,
                "feature " + Quoted(feature.name) + " depends on a chain of more than " +
                    std::to_string(limits::CHAIN) + " features");
    throw LoadStopped{};
}

/* ---- evaluating ------------------------------------------------------------------------------------------------ */

/* A feature keeps its result until a feature is enabled or a module comes or goes. */
bool IsEnabled(Feature &feature)
{
    uint64_t epoch = feature.module->context->featureEpoch;
    if (feature.epoch == epoch)
        return feature.known;
    bool own = !feature.module->byName || feature.enabled;
    feature.known = own && Holds(feature.condition);
    feature.epoch = epoch;
    return feature.known;
}

/* The operands are bits of one word: the parser limits how many of them wait at a time. */
bool Evaluate(const FeatureExpression &expression)
{
    uint64_t stack = 0;
    for (uint32_t i = 0; i < expression.count; ++i) {
        const FeatureStep &step = expression.steps[i];
        uint64_t top = stack & 1;
        uint64_t below = stack >> 1 & 1;
        switch (step.kind) {
            case FeatureStep::Kind::Operand:
                stack = stack << 1 | (IsEnabled(*step.feature) ? 1 : 0);
                break;
            case FeatureStep::Kind::Not:
                stack ^= 1;
                break;
            case FeatureStep::Kind::And:
                stack = (stack >> 2) << 1 | (top & below);
                break;
            case FeatureStep::Kind::Or:
                stack = (stack >> 2) << 1 | (top | below);
                break;
        }
    }
    return (stack & 1) != 0;
}

} // namespace

const Condition *ConditionsOf(Build &build, Unit &unit, const Statement *statement, const Condition *list)
{
    for (const Statement *child = statement->first; child != nullptr; child = child->next) {
        if (child->keyword != Kw::IfFeature)
            continue;
        FeatureExpression expression;
        if (ExpressionParser(build, unit, child).Parse(expression))
            list = build.module.records.Make<Condition>(list, nullptr, expression);
    }
    return list;
}

namespace {

template <class Visit>
void ForEachFeature(Build &build, Visit &&visit)
{
    for (Unit *unit : build.units)
        for (Statement *statement = unit->root->first; statement != nullptr; statement = statement->next)
            if (statement->keyword == Kw::Feature)
                if (Feature *feature = build.module.features.Find(statement->argument))
                    visit(*feature);
}

} // namespace

void CompileFeatures(Build &build)
{
    ForEachFeature(build, [&build](Feature &feature) {
        feature.condition = ConditionsOf(build, *feature.unit, feature.statement, nullptr);
    });
    FeatureChains chains(build);
    ForEachFeature(build, [&chains](Feature &feature) { chains.Measure(feature); });
}

/* Keeps the result in all list entries that it passes, so that conditions that many nodes share are evaluated once. */
bool Holds(const Condition *condition)
{
    if (condition == nullptr)
        return true;
    const Condition *first = condition->shared != nullptr ? condition->shared : condition;
    uint64_t epoch = first->expression.steps[0].feature->module->context->featureEpoch;
    bool holds = true;
    const Condition *end = condition;
    for (; holds && end != nullptr; end = end->next) {
        if (end->epoch == epoch) {
            holds = end->holds;
            break;
        }
        holds = end->shared != nullptr ? Holds(end->shared) : Evaluate(end->expression);
    }
    for (; condition != end; condition = condition->next) {
        condition->epoch = epoch;
        condition->holds = holds;
    }
    return holds;
}

} // namespace qxyang
