#include "check/yang/instance_identifier.h"

#include <utility>

namespace inspect {
namespace {

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/* Reads the text from left to right. Each Take function answers false, and says why, if what it takes is not there. */
class Reader {
  public:
    Reader(std::string_view text, const FileNames &file) : rest_(text), file_(file) {}

    /* 1*("/" (node-identifier [1*key-predicate / leaf-list-predicate / pos])) */
    bool TakeAll()
    {
        do
            if (!Take('/') || !TakeNode() || !TakePredicates())
                return false;
        while (!rest_.empty());
        return true;
    }

    const std::string &Why() const { return why_; }

  private:
    bool Fail(std::string why)
    {
        why_ = std::move(why);
        return false;
    }

    bool FailAt(const char *expected)
    {
        return Fail(std::string("expected ") + expected + " at " +
                    (rest_.empty() ? "its end" : "'" + std::string(rest_) + "'"));
    }

    bool StartsWith(char c) const { return !rest_.empty() && rest_.front() == c; }
    bool StartsWithDigit() const { return !rest_.empty() && IsDigit(rest_.front()); }

    bool Take(char c)
    {
        if (!StartsWith(c))
            return FailAt(std::string({'\'', c, '\''}).c_str());
        rest_.remove_prefix(1);
        return true;
    }

    void SkipBlanks()
    {
        while (StartsWith(' ') || StartsWith('\t'))
            rest_.remove_prefix(1);
    }

    std::string_view TakeWord()
    {
        size_t length = 0;
        if (!rest_.empty() && IsLetter(rest_.front()))
            while (length < rest_.size() &&
                   (IsLetter(rest_[length]) || IsDigit(rest_[length]) || rest_[length] == '-' || rest_[length] == '.'))
                ++length;
        std::string_view word = rest_.substr(0, length);
        rest_.remove_prefix(length);
        return word;
    }

    /* RFC 7950, 9.13.2: each name has a prefix. */
    bool TakeNode()
    {
        std::string_view prefix = TakeWord();
        if (prefix.empty())
            return FailAt("a name");
        if (!StartsWith(':'))
            return Fail("'" + std::string(prefix) + "' has no prefix");
        rest_.remove_prefix(1);
        if (TakeWord().empty())
            return FailAt("a name");
        if (file_.ModuleOf(prefix).empty())
            return Fail("prefix '" + std::string(prefix) + "' is not known");
        return true;
    }

    /* Predicates of keys may follow each other, any other stands alone. */
    bool TakePredicates()
    {
        bool isKey = true;
        for (bool isFirst = true; isKey && StartsWith('['); isFirst = false) {
            rest_.remove_prefix(1);
            SkipBlanks();
            isKey = !StartsWith('.') && !StartsWithDigit();
            if (!isKey && !isFirst)
                return FailAt("a key");
            bool taken = isKey             ? TakeNode() && TakeValue()
                         : StartsWith('.') ? Take('.') && TakeValue()
                                           : TakePosition();
            SkipBlanks();
            if (!taken || !Take(']'))
                return false;
        }
        return true;
    }

    bool TakePosition()
    {
        if (StartsWith('0'))
            return FailAt("a position from 1");
        while (StartsWithDigit())
            rest_.remove_prefix(1);
        return true;
    }

    /* = "value" */
    bool TakeValue()
    {
        SkipBlanks();
        if (!Take('='))
            return false;
        SkipBlanks();
        if (!StartsWith('"') && !StartsWith('\''))
            return FailAt("a value in quotes");
        size_t end = rest_.find(rest_.front(), 1);
        if (end == std::string_view::npos)
            return FailAt("a value with both quotes");
        rest_.remove_prefix(end + 1);
        return true;
    }

    std::string_view rest_;
    const FileNames &file_;
    std::string why_ = {};
};

} // namespace

std::string WhyNoInstanceIdentifier(std::string_view text, const FileNames &file)
{
    Reader reader(text, file);
    return reader.TakeAll() ? "" : reader.Why();
}

} // namespace inspect
