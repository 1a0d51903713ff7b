#include "base/xml_library.h"

#include <libxml/xmlerror.h>
#include <libxml/xmlregexp.h>
#include <libxml/xpath.h>

#include <algorithm>
#include <memory>
#include <new>

namespace inspect {
namespace {

constexpr size_t MAX_XPATH_SIZE = 65536;

/* Brackets within one another: libxml2 reads them by recursion. */
constexpr size_t MAX_XPATH_DEPTH = 256;

constexpr size_t MAX_PATTERN_SIZE = 65536;

/* libxml2 reads groups no deeper than this. */
constexpr size_t MAX_PATTERN_DEPTH = 50;

/* The time that libxml2 takes grows with the square of the number of alternatives, and with more than the product of that and
 * the number of parts that may be absent. */
constexpr size_t MAX_ALTERNATIVES = 4096;
constexpr size_t MAX_PRODUCT = 32768;

/* Gathers what libxml2 says of one expression. */
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
    std::string text;

  private:
    static void Take(void *self, xmlError *error)
    {
        auto &errors = *static_cast<Errors *>(self);
        if (errors.code != 0)
            return;
        errors.code = error->code;
        errors.offset = error->int1 > 0 ? static_cast<size_t>(error->int1) : 0;
        if (error->message != nullptr)
            errors.text = error->message;
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

/* True if libxml2 reads the pattern, and in no time. */
bool IsModest(const std::string &pattern)
{
    size_t depth = 0;
    size_t deepest = 0;
    size_t alternatives = 1;
    size_t optional = 1;
    size_t classes = 0; /* character classes around */
    char before = '\0';
    for (size_t i = 0; i < pattern.size(); before = pattern[i++]) {
        char c = pattern[i];
        if (c == '\\')
            ++i;
        else if (c == '[')
            ++classes;
        else if (c == ']' && classes > 0)
            --classes;
        else if (classes > 0)
            continue;
        else if (c == '(')
            deepest = std::max(deepest, ++depth);
        else if (c == ')' && depth > 0)
            --depth;
        bool isEmptyBranch = (c == '|' && (before == '(' || before == '|')) || (c == ')' && before == '|');
        if (c == '|')
            ++alternatives;
        if (c == '?' || c == '*' || c == '{' || isEmptyBranch)
            ++optional;
    }
    return pattern.size() <= MAX_PATTERN_SIZE && deepest < MAX_PATTERN_DEPTH && alternatives <= MAX_ALTERNATIVES &&
           (alternatives + optional) * optional <= MAX_PRODUCT;
}

} // namespace

XmlVerdict XPathVerdict(const std::string &text)
{
    if (text.size() > MAX_XPATH_SIZE || !IsFlat(text))
        return {XmlVerdict::TooLarge};
    Errors errors;
    std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContext *)> context(xmlXPathNewContext(nullptr),
                                                                          xmlXPathFreeContext);
    if (!context)
        throw std::bad_alloc();
    xmlXPathCompExpr *compiled = xmlXPathCtxtCompile(context.get(), XmlText(text));
    if (compiled != nullptr) {
        xmlXPathFreeCompExpr(compiled);
        return {XmlVerdict::Right};
    }
    if (errors.code == XML_ERR_NO_MEMORY)
        throw std::bad_alloc();
    int number = errors.code - XML_XPATH_EXPRESSION_OK;
    bool isLimit = number == XPATH_RECURSION_LIMIT_EXCEEDED || number == XPATH_OP_LIMIT_EXCEEDED;
    return {isLimit ? XmlVerdict::TooLarge : XmlVerdict::Wrong, std::min(errors.offset, text.size())};
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
    return {XmlVerdict::Wrong, 0, errors.text};
}

} // namespace inspect
