#include "arguments.h"

#include <string_view>

namespace fuzz {
namespace {

/* Alternatives are separated by "|"; "~" stands for "|" in one of them. */
constexpr std::string_view NUMBERS =
    "0|1|2|3|-1|-2|8|15|16|17|18|19|63|64|65|127|128|255|256|257|300|010|0x100|0xFFFFFFFF|0x1ffffffff|2147483647|"
    "2147483648|-2147483648|4294967295|4294967296|9223372036854775807|-9223372036854775808|9223372036854775808|"
    "18446744073709551615|18446744073709551616|99999999999999999999999999|1.5|-0|+1|0x|00|08|1 2| 1|1\t|{*300}|"
    "unbounded|";
constexpr std::string_view TEXTS =
    "| |a|-|.|..|/|//|*|../..|a:b|:a|a:|a:b:c|xml|%s%n|{*1}|{*63}|{*64}|{*65}|{*255}|{*256}|{*257}|{*1023}|{*1024}|"
    "{*1025}|true|false|min..max|\xc3\xa9|\x01|(((((|'|not a|a and (b or not c)|p:{*250}";

struct Row {
    std::string_view keyword;
    std::string_view arguments;
};

constexpr Row ROWS[] = {
    {"config", "true|false|"},
    {"mandatory", "true|false"},
    {"require-instance", "true|false"},
    {"yin-element", "true|false"},
    {"status", "current|deprecated|obsolete|gone"},
    {"ordered-by", "user|system"},
    {"yang-version", "1|1.1|1.2"},
    {"deviate", "add|replace|delete|not-supported"},
    {"modifier", "invert-match"},
    {"type",
     "binary|bits|boolean|decimal64|empty|enumeration|identityref|instance-identifier|int8|int16|int32|int64|"
     "leafref|string|uint8|uint16|uint32|uint64|union"},
    {"range",
     "min..max|1..10|1..10~20..max|1~3~5|max..min|-1..1|0..18446744073709551615|1.5..2.5|1 .. 2 ~ 4|5..1|"
     "1..2~2..3|-9223372036854775808..9223372036854775807"},
    {"length", "0|1..10|min..max|1..10~20..max|18446744073709551615|-1|5..1"},
    {"fraction-digits", "1|18|0|19"},
    {"default", "a|1|true|zz|-1|1.5|99999999999999999999"},
    {"path", "../a|../../a/b|/p:a/p:b|../a[b=current()/../c]/d|deref(../a)/../b|..|/"},
    {"key", "a|b|a b|a a|p:a"},
    {"unique", "a|a/b|a b"},
    {"must", "1|../a = 'b'|current()|(|'"},
    {"when", "1|../a = 'b'|current()|[|\""},
    {"if-feature", "a|not a|a and b or c|not (a or b)|((((((((a))))))))|a or|p:a"},
    {"revision", "2026-01-01|2024-02-29|2023-02-29|1999-13-01|0000-00-00"},
    {"revision-date", "2026-01-01|2024-02-29|2023-02-29"},
    {"mimext:class-type", "leafref|leafref-target|other"},
    {"mimext:ancestor-key-fid",
     "1|2|8 9|1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16|"
     "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17|0|-1|300|x|9 -1|0x100 7"},
    {"mimext:class-id", "1|2|0x100|0|-1|0xFFFFFFFF"},
    {"mimext:field-id", "1|2|3|255|256|0|-1|010"},
    {"mimext:datatype-id", "1|25|29|283|0x40|-1"},
};

std::string Alternative(std::string_view alternatives, Random *random)
{
    size_t count = 1;
    for (const char c : alternatives)
        count += c == '|' ? 1 : 0;
    for (size_t skip = random->Below(count); skip > 0; --skip)
        alternatives.remove_prefix(alternatives.find('|') + 1);
    std::string text(alternatives.substr(0, alternatives.find('|')));
    for (char &c : text)
        c = c == '~' ? '|' : c;
    return text;
}

} // namespace

size_t ChainLength(Random *random)
{
    constexpr size_t FEW[] = {1, 2, 3, 4, 5, 8};
    constexpr size_t AROUND_LIMITS[] = {15, 16, 17, 20, 21, 31, 32, 33, 63, 64, 65, 66, 100, 127, 128, 129, 130, 140};
    constexpr size_t MANY[] = {200, 254, 255, 256, 257, 300, 400, 511, 512, 513, 600, 1000, 1300, 2000};
    switch (random->Below(4)) {
        case 0:
            return random->Of(FEW);
        case 1:
            return random->Of(MANY);
        default:
            return random->Of(AROUND_LIMITS);
    }
}

std::string ExtremeNumber(Random *random)
{
    return Alternative(NUMBERS, random);
}

std::string ExtremeText(Random *random)
{
    return Alternative(TEXTS, random);
}

std::string ArgumentFor(const std::string &keyword, Random *random)
{
    for (const Row &row : ROWS) {
        if (row.keyword == keyword && !random->OneIn(6))
            return Alternative(row.arguments, random);
    }
    return random->OneIn(2) ? ExtremeNumber(random) : ExtremeText(random);
}

} // namespace fuzz
