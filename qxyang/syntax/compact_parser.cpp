#include "syntax/compact_parser.h"

#include "base/characters.h"
#include "base/schema_limits.h"
#include "base/text.h"

namespace qxyang {

bool CompactParser::Fail(uint32_t offset, std::string_view sentence)
{
    sink_.Fail(offset, sentence);
    return false;
}

void CompactParser::Run()
{
    if (!CheckText())
        return;
    levels_.reserve(32);
    while (Step())
        continue;
}

/* Refuses files that are not in compact syntax at all, and characters that no module may have: RFC 7950, 6. */
bool CompactParser::CheckText()
{
    std::string_view text = source_.Text();
    size_t first = text.find_first_not_of(" \t\r\n", source_.Start());
    if (source_.IsWide())
        return Fail(0, "the file is in UTF-16; expected UTF-8");
    if (first != std::string_view::npos && text[first] == '<')
        return Fail(static_cast<uint32_t>(first),
                    "found '<': this is YIN, in a file whose name says that it is in compact "
                    "syntax; expected 'module' or 'submodule'");
    CharacterCheck check = CheckCharacters(text);
    if (check.illegal != std::string_view::npos)
        return Fail(static_cast<uint32_t>(check.illegal),
                    "found " + DescribeIllegal(text, check.illegal) + "; expected a character of UTF-8 text");
    if (check.noncharacter != std::string_view::npos)
        noncharacter_ = {static_cast<uint32_t>(check.noncharacter),
                         "found a noncharacter, which YANG has none of since yang-version 1.1; expected a character"};
    return true;
}

/* Reads the token where a statement may begin, and goes on as it says. */
bool CompactParser::Step()
{
    Kind kind = tokens_.Next();
    if (kind == Kind::Failed)
        return Fail(tokens_.Why().offset, tokens_.Why().sentence);
    if (kind == Kind::End)
        return CheckEnd();
    if (levels_.empty() && kind == Kind::Close)
        return Fail(tokens_.Begin(), "found '}', which closes nothing; expected " +
                                         std::string(hasRoot_ ? "the end of the file" : "'module' or 'submodule'"));
    if (levels_.empty() && hasRoot_)
        return FailToken("the end of the file behind the module's");
    if (kind == Kind::Close)
        return Close();
    if (kind == Kind::Word)
        return ReadStatement();
    return FailToken(levels_.empty() ? "'module' or 'submodule'" : "a statement or '}'");
}

bool CompactParser::ReadStatement()
{
    CompactStatement statement{tokens_.Value(), {}, tokens_.Begin(), tokens_.End(), tokens_.End()};
    if (levels_.size() >= limits::XML_DEPTH)
        return Fail(statement.offset,
                    "statements are nested deeper than " + std::to_string(limits::XML_DEPTH) + " levels");
    if (statement.keyword.size() > limits::NAME_LENGTH)
        return Fail(statement.offset, "the keyword " + Quoted(statement.keyword) + " is longer than " +
                                          std::to_string(limits::NAME_LENGTH) + " bytes");
    hasRoot_ = true;
    NoteLapse();
    bool endsAtComment = tokens_.EndsAtComment();
    Kind kind = tokens_.Next();
    if (kind == Kind::Failed)
        return Fail(tokens_.Why().offset, tokens_.Why().sentence);
    bool isWord = kind == Kind::Word;
    bool hasArgument = isWord || kind == Kind::String;
    if (hasArgument) {
        statement.argument = tokens_.Value();
        statement.argumentBegin = tokens_.Begin();
        statement.argumentEnd = tokens_.End();
        endsAtComment = tokens_.EndsAtComment();
        NoteLapse();
        ReadVersion(statement);
    }
    sink_.Start(statement);
    if (hasArgument)
        kind = tokens_.Next();
    if (kind != Kind::Semicolon && kind != Kind::Open)
        return FailHead(statement, isWord, endsAtComment, kind);
    sink_.Head(kind == Kind::Open);
    if (kind == Kind::Semicolon)
        sink_.End(tokens_.End());
    else
        levels_.push_back(
            {source_.Text().substr(statement.offset, statement.argumentEnd - statement.offset), statement.offset});
    return true;
}

bool CompactParser::Close()
{
    levels_.pop_back();
    sink_.End(tokens_.End());
    return true;
}

/* The file ends: fails if something is missing. False in any case, which ends the run. */
bool CompactParser::CheckEnd()
{
    if (!hasRoot_)
        return Fail(tokens_.Begin(), "the file has no statement; expected 'module' or 'submodule'");
    if (levels_.empty())
        return false;
    const Level &level = levels_.back();
    uint32_t line = source_.Locate(level.offset).line;
    return Fail(tokens_.Begin(), "found the end of the file in " + Quoted(level.head) + " of line " +
                                     std::to_string(line) + "; expected '}'");
}

/* ---- failures -------------------------------------------------------------------------------------------------- */

bool CompactParser::FailToken(std::string_view expected)
{
    bool isString = tokens_.Written().starts_with('"') || tokens_.Written().starts_with('\'');
    std::string found = isString ? "a string in quotes" : Quoted(tokens_.Written());
    return Fail(tokens_.Begin(), "found " + found + "; expected " + std::string(expected));
}

/* A statement has neither ';' nor block. The failure's place is where one of them belongs. */
bool CompactParser::FailHead(const CompactStatement &statement, bool isWord, bool endsAtComment, Kind found)
{
    if (found == Kind::Failed)
        return Fail(tokens_.Why().offset, tokens_.Why().sentence);
    std::string head(source_.Text().substr(statement.offset, statement.argumentEnd - statement.offset));
    std::string what = found == Kind::End      ? "the end of the file"
                       : found == Kind::String ? "another string in quotes"
                                               : Quoted(tokens_.Written());
    std::string sentence = "found " + what + " behind " + Quoted(head) + "; expected ";
    bool hasArgument = statement.argument.data() != nullptr;
    sentence += hasArgument && !isWord ? "';', '{' or '+'" : "';' or '{'";
    uint32_t foundAt = tokens_.Begin();
    if (endsAtComment)
        sentence += "; a comment begins at its end: a text with '//' or '/*' stands in quotes";
    else if (isWord && found == Kind::Word && source_.Locate(statement.offset).line == source_.Locate(foundAt).line)
        sentence += "; a text with blanks stands in quotes";
    return Fail(statement.argumentEnd, sentence);
}

/* ---- versions -------------------------------------------------------------------------------------------------- */

/* Something that only version 1 allows is kept until the version is known. A module without yang-version is of
 * version 1: RFC 7950, 7.1.2. */
void CompactParser::NoteLapse()
{
    if (!tokens_.HasLapse())
        return;
    if (isVersion11_) {
        sink_.Fail(tokens_.Why().offset, tokens_.Why().sentence);
    } else if (!hasEarlyLapse_) {
        hasEarlyLapse_ = true;
        earlyLapse_ = tokens_.Why();
    }
}

void CompactParser::ReadVersion(const CompactStatement &statement)
{
    if (levels_.size() != 1 || statement.argument != "1.1" || statement.keyword != "yang-version" || isVersion11_)
        return;
    isVersion11_ = true;
    if (hasEarlyLapse_)
        sink_.Fail(earlyLapse_.offset, earlyLapse_.sentence);
    if (!noncharacter_.sentence.empty())
        sink_.Fail(noncharacter_.offset, noncharacter_.sentence);
}

} // namespace qxyang
