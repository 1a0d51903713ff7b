#include "base/xpath.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/excerpt.h"
#include "base/xml_library.h"

namespace inspect {
namespace {

constexpr size_t NONE = static_cast<size_t>(-1);

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/* Bytes of longer characters are taken for letters: an expression with any other of them has faults. */
bool StartsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameCharacter(char c)
{
    return StartsName(c) || IsDigit(c) || c == '-' || c == '.';
}

template <size_t N>
bool IsOneOf(const std::array<std::string_view, N> &words, std::string_view word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

constexpr std::array<std::string_view, 4> NODE_TYPES = {"comment", "node", "processing-instruction", "text"};
constexpr std::array<std::string_view, 3> AXES_BESIDE = {"self", "following-sibling", "preceding-sibling"};

constexpr std::array<std::string_view, 4> NAMED_OPERATORS = {"and", "div", "mod", "or"};

XPathFacts::Fault Unreadable(std::string_view text, size_t offset)
{
    return {UnreadableText(text, offset), offset};
}

/* Reads an expression that libxml2 takes, token by token. */
class Reader {
  public:
    Reader(std::string_view text, XPathFacts *facts) : text_(text), facts_(facts)
    {
        frames_.push_back({});
        frames_.back().context = Place{XPathFacts::Start::Context, 0};
    }

    void Read();

  private:
    /* A node that a path has led to: its level, seen from where the path starts. */
    struct Place {
        XPathFacts::Start from;
        long level;
    };

    /* What stands between two brackets, or the whole expression. */
    struct Frame {
        std::optional<Place> context; /* where its relative paths start */
        std::optional<Place> path;    /* where the path that is being read has led */
        bool goesOn = false;          /* the next step belongs to that path */
        size_t climb = NONE;          /* the path's entry in the climbs */
        size_t function = NONE;       /* whose arguments these are */
        size_t commas = 0;
        bool isEmpty = true;
    };

    enum class Move : uint8_t {
        Down,
        Up,
        Beside, /* or nowhere */
        Unknown
    };

    Frame &Top() { return frames_.back(); }
    char Here(size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }

    void Token();
    void Slash();
    void Dot();
    void Number();
    void Name();
    void Call(const std::string &name, size_t offset);
    void Open(const std::optional<Place> &context, size_t function);
    void Close();
    void Step(Move move, size_t offset);
    void Operand(std::optional<Place> place);
    void Operator(size_t length);
    void Quoted();
    void Variable();
    std::string_view NcName();
    void SkipBlanks();

    std::string_view text_;
    XPathFacts *facts_;
    size_t at_ = 0;
    bool afterOperand_ = false; /* a name or `*` that follows is an operator */
    Move axis_ = Move::Down;    /* of the next step */
    std::vector<Frame> frames_;
};

void Reader::SkipBlanks()
{
    while (IsBlank(Here()))
        ++at_;
}

std::string_view Reader::NcName()
{
    size_t start = at_;
    while (IsNameCharacter(Here()))
        ++at_;
    return text_.substr(start, at_ - start);
}

void Reader::Step(Move move, size_t offset)
{
    Frame &frame = Top();
    if (!frame.goesOn) {
        frame.path = frame.context;
        frame.climb = NONE;
    }
    frame.goesOn = false;
    afterOperand_ = true;
    axis_ = Move::Down;
    if (move == Move::Unknown)
        frame.path.reset();
    if (!frame.path || move == Move::Beside || move == Move::Unknown)
        return;
    frame.path->level += move == Move::Down ? 1 : -1;
    if (move == Move::Down || frame.path->level >= 0)
        return;
    if (frame.climb == NONE) {
        frame.climb = facts_->climbs.size();
        facts_->climbs.push_back({0, frame.path->from, offset});
    }
    size_t &steps = facts_->climbs[frame.climb].steps;
    steps = std::max(steps, static_cast<size_t>(-frame.path->level));
}

void Reader::Operand(std::optional<Place> place)
{
    Top().path = place;
    Top().goesOn = false;
    Top().climb = NONE;
    afterOperand_ = true;
}

void Reader::Operator(size_t length)
{
    at_ += length;
    Top().path.reset();
    Top().goesOn = false;
    afterOperand_ = false;
}

void Reader::Slash()
{
    Frame &frame = Top();
    bool isDouble = Here(1) == '/';
    if (!afterOperand_) {
        frame.path = Place{XPathFacts::Start::Root, 0};
        frame.climb = NONE;
    }
    if (isDouble)
        frame.path.reset();
    frame.goesOn = true;
    afterOperand_ = false;
    at_ += isDouble ? 2 : 1;
}

void Reader::Dot()
{
    size_t offset = at_;
    if (IsDigit(Here(1)))
        return Number();
    bool isUp = Here(1) == '.';
    at_ += isUp ? 2 : 1;
    Step(isUp ? Move::Up : Move::Beside, offset);
}

/* libxml2 takes "1e5", and XPath 1.0 has no such numbers. */
void Reader::Number()
{
    while (IsDigit(Here()) || Here() == '.')
        ++at_;
    if (Here() == 'e' || Here() == 'E') {
        facts_->faults.push_back(Unreadable(text_, at_));
        NcName();
    }
    Operand(std::nullopt);
}

void Reader::Quoted()
{
    at_ = std::min(text_.find(Here(), at_ + 1), text_.size() - 1) + 1;
    Operand(std::nullopt);
}

void Reader::Variable()
{
    size_t offset = at_++;
    std::string name(NcName());
    facts_->faults.push_back({"has the variable '$" + name + "', and YANG has none", offset});
    Operand(std::nullopt);
}

void Reader::Open(const std::optional<Place> &context, size_t function)
{
    Frame frame;
    frame.context = context;
    frame.function = function;
    frames_.push_back(frame);
    afterOperand_ = false;
    ++at_;
}

void Reader::Close()
{
    bool isPredicate = Here() == ']';
    ++at_;
    afterOperand_ = true;
    if (frames_.size() == 1)
        return;
    Frame closed = Top();
    frames_.pop_back();
    if (isPredicate)
        return;
    bool isCurrent = false;
    if (closed.function != NONE) {
        XPathFacts::Function &function = facts_->functions[closed.function];
        function.arguments = closed.isEmpty ? 0 : closed.commas + 1;
        isCurrent = function.name == "current";
    }
    Operand(isCurrent ? std::optional(Place{XPathFacts::Start::Current, 0}) : std::nullopt);
}

/* In front of the bracket behind a name: a test for a type of nodes, or a function. */
void Reader::Call(const std::string &name, size_t offset)
{
    if (IsOneOf(NODE_TYPES, name)) {
        at_ = std::min(text_.find(')', at_), text_.size() - 1) + 1;
        Step(axis_, offset);
        return;
    }
    facts_->functions.push_back({name, 0, offset});
    Open(Top().context, facts_->functions.size() - 1);
}

void Reader::Name()
{
    size_t offset = at_;
    std::string name(NcName());
    if (afterOperand_) {
        if (!IsOneOf(NAMED_OPERATORS, name)) /* libxml2 takes "a orb" */
            facts_->faults.push_back(Unreadable(text_, offset));
        return Operator(0);
    }
    bool isPrefix = Here() == ':' && (StartsName(Here(1)) || Here(1) == '*');
    if (isPrefix) {
        ++at_;
        std::string_view local = Here() == '*' ? text_.substr(at_++, 1) : NcName();
        facts_->prefixes.push_back({name, offset});
        name.append(":").append(local);
    }
    SkipBlanks();
    if (!isPrefix && Here() == ':' && Here(1) == ':') {
        at_ += 2;
        axis_ = name == "child"              ? Move::Down
                : name == "parent"           ? Move::Up
                : IsOneOf(AXES_BESIDE, name) ? Move::Beside
                                             : Move::Unknown;
        return;
    }
    if (Here() == '(')
        Call(name, offset);
    else
        Step(axis_, offset);
}

void Reader::Token()
{
    char c = Here();
    if (StartsName(c))
        return Name();
    if (IsDigit(c) || c == '.')
        return IsDigit(c) ? Number() : Dot();
    switch (c) {
        case '/':
            return Slash();
        case '"':
        case '\'':
            return Quoted();
        case '(':
            return Open(Top().context, NONE);
        case '[':
            return Open(Top().path, NONE);
        case ')':
        case ']':
            return Close();
        case '@':
            axis_ = Move::Unknown;
            ++at_;
            return;
        case '$':
            return Variable();
        case ',':
            ++Top().commas;
            return Operator(1);
        case '*':
            if (!afterOperand_) {
                Step(axis_, at_++);
                return;
            }
            return Operator(1);
        default:
            return Operator(1);
    }
}

void Reader::Read()
{
    for (SkipBlanks(); at_ < text_.size(); SkipBlanks()) {
        if (Here() != ')' && Here() != ']')
            Top().isEmpty = false;
        Token();
    }
}

} // namespace

XPathFacts ReadXPath(const std::string &text)
{
    XPathFacts facts;
    XmlVerdict verdict = XPathVerdict(text);
    facts.tooLarge = verdict.kind == XmlVerdict::TooLarge;
    if (verdict.kind == XmlVerdict::Wrong)
        facts.faults.push_back(Unreadable(text, verdict.offset));
    if (verdict.kind == XmlVerdict::Right)
        Reader(text, &facts).Read();
    return facts;
}

} // namespace inspect
