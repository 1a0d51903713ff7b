/* What is read from XPath expressions and patterns: libxml2's verdict, and what it does not say. */
#include <gtest/gtest.h>

#include "base/xml_library.h"
#include "base/xpath.h"

using namespace inspect;

namespace {

std::string At(size_t offset)
{
    return "@" + std::to_string(offset) + " ";
}

/* "count/1@0 p:@4 context^2@6 ": functions, prefixes, climbs, faults. */
std::string Read(const std::string &text)
{
    const XPathFacts facts = ReadXPath(text);
    const char *starts[] = {"context^", "current^", "root^"};
    std::string out = facts.tooLarge ? "too large " : "";
    for (const XPathFacts::Fault &fault : facts.faults)
        out += fault.text + At(fault.offset);
    for (const XPathFacts::Function &function : facts.functions)
        out += function.name + "/" + std::to_string(function.arguments) + At(function.offset);
    for (const XPathFacts::Prefix &prefix : facts.prefixes)
        out += prefix.name + ":" + At(prefix.offset);
    for (const XPathFacts::Climb &climb : facts.climbs)
        out += starts[static_cast<size_t>(climb.from)] + std::to_string(climb.steps) + At(climb.offset);
    return out;
}

TEST(XPath, FunctionsPrefixesAndClimbs)
{
    const struct {
        const char *text;
        const char *facts;
    } cases[] = {
        {"a/b * 3 - 2", ""},
        {"* * * and div div div", ""},
        {"a[. = '../..'] = \"p:x()\"", ""},
        {".5 + 1.25 < a.b-c", ""},
        {"../../a", "context^2@0 "},
        {"../a/../../b", "context^2@0 "},
        {"./../a/.. | ..", "context^1@2 context^1@12 "},
        {"../a or /b/.. or -../../c", "context^1@0 context^2@18 "},
        {"parent::x/parent::node()", "context^2@8 "},
        {"following-sibling::a/../self::b/../..", "context^3@21 "},
        {"child::a/..", ""},
        {"/a/..", ""},
        {"/../a", "root^1@1 "},
        {"/a/b[../../../c]", "root^1@11 "},
        {"a[b[../../../c]]", "context^1@10 "},
        {"../a[../../b = current()/../../c]/../../d", "current/0@15 context^2@0 context^2@5 current^2@25 "},
        {"//a/../../..", ""},
        {"ancestor::a/../..", ""},
        {"(../a)[1]/../..", "context^1@1 "},
        {"deref(../a)/../../b", "deref/1@0 context^1@6 "},
        {"count(../p:a [1]) > string-length ( )", "count/1@0 string-length/0@20 p:@9 context^1@6 "},
        {"concat('a,)', \"(b\", c[f(1, 2)], (d), -e)", "concat/5@0 f/2@22 "},
        {"p:a/q:*[child::r:b]/@s:c", "p:@0 q:@4 r:@15 s:@21 "},
        {"p:now() = text()", "p:now/0@0 p:@0 "},
        {"1 + $x", "has the variable '$x', and YANG has none@4 "},
        {"a b", "cannot be read from 'b' on@2 "},
        {"a +", "ends too early@3 "},
        {"a//", "ends too early@3 "},
        {"count(a,)", "cannot be read from ')' on@8 "},
        {"a | b |", "ends too early@7 "},
        {"a[b |]", "cannot be read from ']' on@5 "},
        {"1.5e5 = 2", "cannot be read from 'e5 = 2' on@3 "},
        {"a orb", "cannot be read from 'orb' on@2 "},
        {"1-count(a,b)", "count/2@2 "},
        {"1-p:foo - 3-../..", "p:@2 context^2@12 "},
    };
    for (const auto &[text, facts] : cases)
        EXPECT_EQ(Read(text), facts) << text;
}

std::string Repeated(const std::string &text, size_t times)
{
    std::string out;
    for (size_t i = 0; i < times; ++i)
        out += text;
    return out;
}

/* Neither recursion nor time of libxml2 is at the mercy of a model, and libxml2 prints nothing. */
TEST(XPath, WhatIsTooLargeIsNotRead)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(Read(Repeated("(", 256) + "1" + Repeated(")", 256)), "");
    EXPECT_EQ(Read(Repeated("(", 257) + "1" + Repeated(")", 257)), "too large ");
    EXPECT_EQ(Read(Repeated("a[", 10000) + "1" + Repeated("]", 10000)), "too large ");
    EXPECT_EQ(Read(Repeated("../", 10000) + "a"), "context^10000@0 ");
    EXPECT_EQ(Read("a" + std::string(65535, ' ')), "");
    EXPECT_EQ(Read("a" + std::string(65536, ' ')), "too large ");

    const struct {
        std::string text;
        XmlVerdict::Kind verdict;
    } patterns[] = {
        {Repeated("(", 49) + "a" + Repeated(")", 49), XmlVerdict::Right},
        {Repeated("(", 50) + "a" + Repeated(")", 50), XmlVerdict::TooLarge},
        {Repeated("[(]", 100) + Repeated("\\(", 100), XmlVerdict::Right},
        {"a{1,100000}", XmlVerdict::Right},
        {"((a{1,100000}){1,100000})*", XmlVerdict::Right},
        {"a{2147483647}|a{0,0000000000002147483647}", XmlVerdict::Right},
        {"a{2147483648}", XmlVerdict::TooLarge},
        {"a{0,4294967295}", XmlVerdict::TooLarge},
        {"a{1,99999999999999999999999999}", XmlVerdict::TooLarge},
        {Repeated("a?", 62) + Repeated("(a|b{3})", 10), XmlVerdict::Right},
        {Repeated("a?", 89), XmlVerdict::Right},
        {Repeated("a?", 90), XmlVerdict::TooLarge},
        {Repeated("(|a)", 70), XmlVerdict::TooLarge},
        {"(" + Repeated("a+", 30) + ")+", XmlVerdict::Right},
        {"(" + Repeated("a+", 31) + ")+", XmlVerdict::TooLarge},
        {"(" + Repeated("(a|b)+|", 40) + "a)+", XmlVerdict::TooLarge},
        {Repeated("(", 30) + "a" + Repeated("a{0,3}){0,4}", 30), XmlVerdict::TooLarge},
        {Repeated("a|", 511) + "a", XmlVerdict::Right},
        {Repeated("a|", 512) + "a", XmlVerdict::TooLarge},
        {Repeated("a", 16384), XmlVerdict::Right},
        {Repeated("a", 16385), XmlVerdict::TooLarge},
    };
    for (const auto &[text, verdict] : patterns)
        EXPECT_EQ(PatternVerdict(text).kind, verdict) << text.substr(0, 20);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(XPath, PatternsAreThoseOfXmlSchema)
{
    for (const char *text : {"", "^a$", "\\i\\c*", "\\p{IsBasicLatin}+\\P{Lu}", "[a-z-[aeiou]]", "[a\\-\\]^-]",
                             "a{0,}b{2}|", "\xc3\xa4+", "[\\w.-]*"})
        EXPECT_EQ(PatternVerdict(text).kind, XmlVerdict::Right) << text;
    for (const char *text :
         {"a**", "*a", "(a", "a)", "[a", "[z-a]", "\\p{Xx}", "\\b", "\\$", "(?:a)", "a+?", "a{,3}", "[[:alpha:]]"})
        EXPECT_EQ(PatternVerdict(text).kind, XmlVerdict::Wrong) << text;
}

} // namespace
