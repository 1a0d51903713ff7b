#include "syntax/plain_xml.h"

#include <algorithm>
#include <cstring>

#include "base/characters.h"
#include "base/text.h"

namespace qxyang {

namespace {

enum Class : uint8_t {
    NAME_START = 1,
    NAME = 2,
    SPACE = 4,
    PLAIN_VALUE = 8, /* in an attribute, whatever its quotes */
};

constexpr std::array<uint8_t, 256> CLASSES = [] {
    std::array<uint8_t, 256> classes{};
    for (size_t c = 0; c < classes.size(); ++c) {
        bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        bool isName = isLetter || (c >= '0' && c <= '9') || c == '-' || c == '.';
        bool isSpace = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        bool isPlain = c >= ' ' && c != '"' && c != '\'' && c != '&' && c != '<';
        classes[c] = static_cast<uint8_t>((isLetter ? NAME_START : 0) | (isName ? NAME : 0) | (isSpace ? SPACE : 0) |
                                          (isPlain ? PLAIN_VALUE : 0));
    }
    return classes;
}();

bool Is(char c, Class wanted)
{
    return (CLASSES[static_cast<unsigned char>(c)] & wanted) != 0;
}

/* Every text ends with a zero byte, which is of no class. */
const char *SkipSpace(const char *at)
{
    while (Is(*at, SPACE))
        ++at;
    return at;
}

/* The same for what stands between tags, eight bytes at a time: most of it is indentation. XML has no other characters up
 * to the blank than white space. */
const char *SkipIndentation(const char *at, const char *limit)
{
    constexpr uint64_t EACH = 0x0101010101010101u;
    for (uint64_t bytes; limit - at >= 8; at += sizeof bytes) {
        std::memcpy(&bytes, at, sizeof bytes);
        if (((bytes | (bytes + EACH * (0x7F - ' '))) & EACH * 0x80) != 0)
            break;
    }
    return SkipSpace(at);
}

/* Behind the name that begins there; null if none does, or one with a colon at a wrong place. `colon` is set to the colon
 * in it, or null. */
const char *SkipName(const char *at, const char *&colon)
{
    colon = nullptr;
    for (;;) {
        if (!Is(*at, NAME_START))
            return nullptr;
        while (Is(*at, NAME))
            ++at;
        if (*at != ':')
            return static_cast<unsigned char>(*at) < 0x80 ? at : nullptr;
        if (colon != nullptr)
            return nullptr;
        colon = at++;
    }
}

std::string_view Between(const char *begin, const char *end)
{
    return {begin, static_cast<size_t>(end - begin)};
}

bool IsXmlCharacter(uint32_t code)
{
    if (code < ' ')
        return code == '\t' || code == '\n' || code == '\r';
    return code <= 0xD7FF || (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

char *PutCharacter(char *to, uint32_t code)
{
    auto put = [&to](uint32_t byte) { *to++ = static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
        return to;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            put(0xE0 | code >> 12);
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
    return to;
}

/* The character of a reference without its "&#" and ";"; 0 if it is none. */
uint32_t NumberOf(std::string_view digits)
{
    uint32_t base = digits.starts_with('x') ? 16 : 10;
    if (base == 16)
        digits.remove_prefix(1);
    uint32_t code = 0;
    for (char c : digits) {
        uint32_t digit = base;
        if (IsDigit(c))
            digit = static_cast<uint32_t>(c - '0');
        else if ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'))
            digit = static_cast<uint32_t>((c | 0x20) - 'a') + 10;
        if (digit >= base || code > 0x10FFFF)
            return 0;
        code = code * base + digit;
    }
    return IsXmlCharacter(code) ? code : 0;
}

/* Puts what the reference at `at` stands for, and moves behind it. Null: it is none that is known here. */
char *PutReference(char *to, const char *&at, const char *end)
{
    struct Entity {
        std::string_view name;
        char character;
    };
    constexpr Entity ENTITIES[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};
    const void *semicolon = std::memchr(at, ';', static_cast<size_t>(end - at));
    if (semicolon == nullptr)
        return nullptr;
    std::string_view name = Between(at + 1, static_cast<const char *>(semicolon));
    at += name.size() + 2;
    if (name.starts_with('#')) {
        uint32_t code = NumberOf(name.substr(1));
        return code != 0 ? PutCharacter(to, code) : nullptr;
    }
    for (const Entity &entity : ENTITIES)
        if (name == entity.name) {
            *to = entity.character;
            return to + 1;
        }
    return nullptr;
}

/* Puts the text with references resolved and the ends of lines as XML has them: as line feeds, or in an attribute as
 * blanks, like tabs. The result is no longer than the text. Null: there is a reference that is not known here. */
char *PutText(char *to, std::string_view text, bool isAttribute)
{
    const char *end = text.data() + text.size();
    for (const char *at = text.data(); at < end;) {
        if (*at == '&') {
            to = PutReference(to, at, end);
            if (to == nullptr)
                return nullptr;
            continue;
        }
        char c = *at++;
        if (c == '\r') {
            at += at < end && *at == '\n';
            c = '\n';
        }
        *to++ = isAttribute && (c == '\n' || c == '\t') ? ' ' : c;
    }
    return to;
}

bool Has(std::string_view text, char c)
{
    return std::memchr(text.data(), c, text.size()) != nullptr;
}

constexpr std::string_view XMLNS = "xmlns";

bool IsBinding(std::string_view name)
{
    return name.starts_with(XMLNS) && (name.size() == XMLNS.size() || name[XMLNS.size()] == ':');
}

std::string_view BoundPrefix(std::string_view name)
{
    return name.size() > XMLNS.size() ? name.substr(XMLNS.size() + 1) : std::string_view("");
}

} // namespace

PlainXml::PlainXml(const Source &source)
    : whole_(source.Text()), at_(whole_.data() + source.Start()), begin_(at_), limit_(whole_.data() + whole_.size())
{
    CharacterCheck check = CheckCharacters(whole_);
    isRefused_ = source.IsWide() || check.illegal != std::string_view::npos || check.noncharacter != std::string_view::npos;
    at_ = AfterDeclaration();
    open_.reserve(64);
}

/* Behind the XML declaration; other forms than the usual ones stay where they are, for expat. */
const char *PlainXml::AfterDeclaration() const
{
    constexpr std::string_view USUAL[] = {
        R"(<?xml version="1.0" encoding="UTF-8"?>)", R"(<?xml version="1.0" encoding="utf-8"?>)",
        R"(<?xml version='1.0' encoding='UTF-8'?>)", R"(<?xml version='1.0' encoding='utf-8'?>)",
        R"(<?xml version="1.0"?>)",
    };
    std::string_view text = Between(at_, limit_);
    for (std::string_view declaration : USUAL)
        if (text.starts_with(declaration))
            return at_ + declaration.size();
    return at_;
}

PlainXml::Kind PlainXml::Leave(const char *at)
{
    begin_ = at_ = at;
    return Kind::Left;
}

PlainXml::Kind PlainXml::Next(bool wantsText)
{
    if (isRefused_)
        return Leave(begin_);
    if (isEmpty_) {
        isEmpty_ = hasText_ = false;
        begin_ = at_;
        Pop();
        return Kind::End;
    }
    if (wasTag_)
        hasText_ = wasTag_ = false;
    for (;;) {
        begin_ = at_;
        const char *mark = SkipIndentation(at_, limit_);
        if (*mark != '<') {
            if (mark == limit_ && open_.empty() && hasRoot_)
                return Kind::Finished;
            const void *next = std::memchr(mark, '<', static_cast<size_t>(limit_ - mark));
            if (next == nullptr || open_.empty())
                return Leave(begin_);
            mark = static_cast<const char *>(next);
            hasText_ = true;
        }
        bool isWanted = wantsText && mark != begin_ && !open_.empty();
        if ((hasText_ || isWanted) && !ReadText(begin_, mark, isWanted))
            return Leave(begin_);
        at_ = mark;
        if (isWanted)
            return Kind::Text;
        begin_ = at_;
        if (at_[1] == '/')
            return ReadEnd();
        if (at_[1] != '!')
            return ReadStart();
        if (!ReadComment())
            return Leave(begin_);
        return Kind::Comment;
    }
}

/* The text between two tags. */
bool PlainXml::ReadText(const char *begin, const char *end, bool isWanted)
{
    text_ = Between(begin, end);
    if (Has(text_, ']') && text_.find("]]>") != std::string_view::npos)
        return false;
    bool isPlain = !Has(text_, '&');
    if (isPlain && (!isWanted || !Has(text_, '\r')))
        return true;
    resolved_.resize(std::max(resolved_.size(), text_.size()));
    const char *put = PutText(resolved_.data(), text_, false);
    if (put == nullptr)
        return false;
    text_ = Between(resolved_.data(), put);
    return true;
}

bool PlainXml::ReadComment()
{
    std::string_view rest = Between(at_, limit_);
    if (!rest.starts_with("<!--"))
        return false;
    size_t end = rest.find("--", 4);
    if (end == std::string_view::npos || rest.substr(end).size() < 3 || rest[end + 2] != '>')
        return false;
    text_ = rest.substr(4, end - 4);
    at_ += end + 3;
    return true;
}

PlainXml::Kind PlainXml::ReadStart()
{
    const char *tag = at_ + 1;
    const char *colon;
    const char *at = SkipName(tag, colon);
    if (at == nullptr || (open_.empty() && hasRoot_))
        return Leave(at_);
    std::string_view written = Between(tag, at);
    count_ = 0;
    for (;;) {
        const char *before = at;
        at = SkipSpace(at);
        if (*at == '>' || (*at == '/' && at[1] == '>'))
            break;
        if (at == before || !ReadAttribute(at))
            return Leave(at_);
    }
    prefix_ = colon != nullptr ? Between(tag, colon) : std::string_view("");
    name_ = colon != nullptr ? Between(colon + 1, written.data() + written.size()) : written;
    open_.push_back({written, bindings_.size()});
    if (!BindAll() || !FindSpace() || !CopyAttributes()) {
        Pop();
        return Leave(at_);
    }
    isEmpty_ = *at == '/';
    at_ = at + (isEmpty_ ? 2 : 1);
    hasRoot_ = wasTag_ = true;
    return Kind::Start;
}

bool PlainXml::ReadAttribute(const char *&at)
{
    const char *colon;
    const char *end = SkipName(at, colon);
    if (end == nullptr || count_ == ATTRIBUTES)
        return false;
    std::string_view name = Between(at, end);
    end = SkipSpace(end);
    if (*end != '=')
        return false;
    end = SkipSpace(end + 1);
    char quote = *end;
    if (quote != '"' && quote != '\'')
        return false;
    const char *value = ++end;
    bool isPlain = true;
    for (;; ++end) {
        while (Is(*end, PLAIN_VALUE))
            ++end;
        if (*end == quote)
            break;
        if (*end == '<' || *end == '\0')
            return false;
        isPlain = isPlain && (*end == '"' || *end == '\'');
    }
    attributes_[count_] = {name, Between(value, end), isPlain};
    at = end + 1;
    if (HasTwice(name) || (IsBinding(name) ? !CanBind(attributes_[count_]) : colon != nullptr))
        return false;
    ++count_;
    return true;
}

bool PlainXml::HasTwice(std::string_view name) const
{
    return std::any_of(attributes_.begin(), attributes_.begin() + static_cast<ptrdiff_t>(count_),
                       [name](const Attribute &known) { return known.name == name; });
}

/* What XML says about itself, and namespaces that are none, are expat's. */
bool PlainXml::CanBind(const Attribute &attribute) const
{
    std::string_view prefix = BoundPrefix(attribute.name);
    return attribute.isPlain && !attribute.value.empty() && !prefix.starts_with("xml") &&
           !attribute.value.starts_with("http://www.w3.org/");
}

bool PlainXml::BindAll()
{
    size_t given = 0;
    for (size_t i = 0; i < count_; ++i) {
        if (IsBinding(attributes_[i].name))
            bindings_.push_back({BoundPrefix(attributes_[i].name), attributes_[i].value});
        else
            ++given;
    }
    return given <= limits::ATTRIBUTES;
}

/* False if nothing binds the prefix of the element. */
bool PlainXml::FindSpace()
{
    for (size_t i = bindings_.size(); i-- > 0;)
        if (bindings_[i].prefix == prefix_) {
            space_ = bindings_[i].space;
            return true;
        }
    space_ = {};
    return prefix_.empty();
}

bool PlainXml::CopyAttributes()
{
    size_t room = 0;
    for (size_t i = 0; i < count_; ++i)
        room += attributes_[i].name.size() + attributes_[i].value.size() + 2;
    if (copies_.size() < room)
        copies_.resize(room);
    char *to = copies_.data();
    const char **pointer = pointers_.data();
    for (size_t i = 0; i < count_; ++i) {
        const Attribute &attribute = attributes_[i];
        if (IsBinding(attribute.name))
            continue;
        *pointer++ = to;
        to += attribute.name.copy(to, attribute.name.size());
        *to++ = '\0';
        *pointer++ = to;
        to = attribute.isPlain ? to + attribute.value.copy(to, attribute.value.size())
                               : PutText(to, attribute.value, true);
        if (to == nullptr)
            return false;
        *to++ = '\0';
    }
    *pointer = nullptr;
    return true;
}

PlainXml::Kind PlainXml::ReadEnd()
{
    std::string_view tag = open_.empty() ? std::string_view() : open_.back().tag;
    const char *at = at_ + 2;
    if (tag.empty() || !Between(at, limit_).starts_with(tag))
        return Leave(at_);
    at = SkipSpace(at + tag.size());
    if (*at != '>')
        return Leave(at_);
    at_ = at + 1;
    wasTag_ = true;
    Pop();
    return Kind::End;
}

void PlainXml::Pop()
{
    bindings_.resize(open_.back().bindings);
    open_.pop_back();
}

} // namespace qxyang
