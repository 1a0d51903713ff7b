#include "base/xml_library.h"

#include <libxml/xmlerror.h>
#include <libxml/xmlregexp.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace inspect {
namespace {

constexpr size_t MAX_XPATH_SIZE = 65536;

/* Brackets within one another: libxml2 reads them by recursion. */
constexpr size_t MAX_XPATH_DEPTH = 256;

constexpr size_t MAX_PATTERN_SIZE = 16384;

/* libxml2 reads groups no deeper than this. */
constexpr size_t MAX_PATTERN_DEPTH = 50;

/* The time that libxml2 takes grows with the square of the number of alternatives, and with up to the third power of the number
 * of parts that have a quantifier. Within groups that have one themselves both count more, and again for each such group. */
constexpr size_t MAX_ALTERNATIVES = 512;
constexpr size_t MAX_PRODUCT = 8192;
constexpr size_t MAX_NESTED_PRODUCT = 1024;

/* libxml2 reads no greater number in a quantifier. */
constexpr uint64_t MAX_BOUND = 2147483647;

/* Keeps the first thing that libxml2 says of one expression. */
class Errors {
  public:
    Errors() : context_(xmlStructuredErrorContext), handler_(xmlStructuredError)
    {
        xmlSetStructuredErrorFunc(this, &Errors::Take);
    }
    ~Errors() { xmlSetStructuredErrorFunc(context_, handler_); }
    Errors(const Errors &) = delete;
    Errors &operator=(const Errors &) = delete;

    int code = 0; /* of the first error */
    size_t offset = 0;

  private:
    /* libxml2's own frames are around it: nothing here throws. */
    static void Take(void *self, xmlError *error) noexcept
    {
        auto &errors = *static_cast<Errors *>(self);
        if (errors.code != 0)
            return;
        errors.code = error->code;
        errors.offset = error->int1 > 0 ? static_cast<size_t>(error->int1) : 0;
    }

    void *context_;
    xmlStructuredErrorFunc handler_;
};

const xmlChar *XmlText(const std::string &text)
{
    return reinterpret_cast<const xmlChar *>(text.c_str());
}

/* Brackets in quotes count as well: that takes an odd expression to be felt. */
bool IsFlat(const std::string &expression)
{
    size_t depth = 0;
    for (char c : expression) {
        if (c == '(' || c == '[')
            ++depth;
        else if ((c == ')' || c == ']') && depth > 0)
            --depth;
        if (depth > MAX_XPATH_DEPTH)
            return false;
    }
    return true;
}

/* True if libxml2 reads the numbers of the quantifier that begins with that brace. */
bool HasReadableBounds(const std::string &pattern, size_t brace)
{
    uint64_t bound = 0;
    for (size_t i = brace + 1; i < pattern.size() && pattern[i] != '}'; ++i) {
        bool isDigit = pattern[i] >= '0' && pattern[i] <= '9';
        bound = isDigit ? bound * 10 + static_cast<uint64_t>(pattern[i] - '0') : 0;
        if (bound > MAX_BOUND)
            return false;
    }
    return true;
}

struct Parts {
    size_t alternatives = 1;
    size_t quantified = 1;

    size_t Product() const { return (alternatives + quantified) * quantified; }
};

bool IsQuantifier(char c)
{
    return c == '?' || c == '*' || c == '+' || c == '{';
}

/* True if libxml2 reads the pattern, and in no time. */
bool IsModest(const std::string &pattern)
{
    if (pattern.size() > MAX_PATTERN_SIZE)
        return false;
    Parts all;
    Parts nested;              /* in groups that have a quantifier */
    std::vector<Parts> opened; /* what stands in front of each open group */
    size_t classes = 0;        /* character classes around */
    char before = '\0';
    for (size_t i = 0; i < pattern.size(); before = pattern[i++]) {
        char c = pattern[i];
        if (c == '\\')
            ++i;
        else if (c == '[')
            ++classes;
        else if (c == ']' && classes > 0)
            --classes;
        if (c == '\\' || c == ']' || classes > 0)
            continue;
        bool isEmptyBranch = (c == '|' && (before == '(' || before == '|')) || (c == ')' && before == '|');
        all.alternatives += c == '|' ? 1 : 0;
        all.quantified += IsQuantifier(c) || isEmptyBranch ? 1 : 0;
        if (c == '{' && !HasReadableBounds(pattern, i))
            return false;
        if (c == '(')
            opened.push_back(all);
        if (opened.size() >= MAX_PATTERN_DEPTH)
            return false;
        if (c != ')' || opened.empty())
            continue;
        if (i + 1 < pattern.size() && IsQuantifier(pattern[i + 1])) {
            nested.alternatives += all.alternatives - opened.back().alternatives;
            nested.quantified += all.quantified - opened.back().quantified;
        }
        opened.pop_back();
    }
    return all.alternatives <= MAX_ALTERNATIVES && all.Product() <= MAX_PRODUCT &&
           nested.Product() <= MAX_NESTED_PRODUCT;
}

} // namespace

XmlVerdict XPathVerdict(const std::string &text)
{
    if (text.size() > MAX_XPATH_SIZE || !IsFlat(text))
        return {XmlVerdict::TooLarge};
    /* libxml2 reads an expression without these by its reader of patterns, which takes "a |". */
    bool isSimple = text.find_first_of("[]()@") == std::string::npos;
    std::string expression = isSimple ? "(" + text + ")" : text;
    Errors errors;
    std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext *)> context(xmlXPathNewContext(nullptr),
                                                                          xmlXPathFreeContext);
    if (!context)
        throw std::bad_alloc();
    xmlXPathCompExpr *compiled = xmlXPathCtxtCompile(context.get(), XmlText(expression));
    if (compiled != nullptr) {
        xmlXPathFreeCompExpr(compiled);
        return {XmlVerdict::Right};
    }
    if (errors.code == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();
    int number = errors.code - XML_XPATH_EXPRESSION_OK;
    bool isLimit = number == XPATH_RECURSION_LIMIT_EXCEEDED || number == XPATH_OP_LIMIT_EXCEEDED;
    size_t offset = errors.offset - (isSimple && errors.offset > 0 ? 1 : 0);
    return {isLimit ? XmlVerdict::TooLarge : XmlVerdict::Wrong, std::min(offset, text.size())};
}

XmlVerdict PatternVerdict(const std::string &text)
{
    if (!IsModest(text))
        return {XmlVerdict::TooLarge};
    Errors errors;
    xmlRegexp *compiled = xmlRegexpCompile(XmlText(text));
    if (compiled != nullptr) {
        xmlRegFreeRegexp(compiled);
        return {XmlVerdict::Right};
    }
    if (errors.code == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();
    /* libxml2 points behind the backslash of an escape that it does not know. */
    size_t offset = std::min(errors.offset, text.size());
    bool isEscape = offset > 0 && offset < text.size() && text[offset - 1] == '\\';
    return {XmlVerdict::Wrong, isEscape ? offset - 1 : offset};
}

} // namespace inspect
