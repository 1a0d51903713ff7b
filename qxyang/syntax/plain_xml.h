/* The elements of an XML file that consists of little else. */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/schema_limits.h"
#include "files/source.h"

namespace qxyang {

/* Reads what nearly all of YIN is made of: elements with attributes, namespaces, text, comments, character references and
 * the five entities of XML itself, in UTF-8. Whatever else a file holds, and all that is wrong with it, is left to expat:
 * the reader stops in front of it. What it tells up to there is what expat tells, in a third of the time. */
class PlainXml {
  public:
    enum class Kind : uint8_t {
        Start,
        End,
        Text,
        Comment,
        Finished, /* the file is read */
        Left      /* what begins at Begin() is for expat, with all that follows */
    };

    /* An xmlns attribute. */
    struct Binding {
        std::string_view prefix; /* empty: of elements without */
        std::string_view space;
    };

    explicit PlainXml(const Source &source);

    /* What stands next. Text is passed over unless it is wanted: then it comes in one piece or several. */
    Kind Next(bool wantsText);

    /* Where that stands in the file. The end of an element that is one tag has no length and stands behind it. */
    uint32_t Begin() const { return OffsetOf(begin_); }
    uint32_t End() const { return OffsetOf(at_); }

    /* True if something other than white space and comments stands between the latest two tags. */
    bool HasText() const { return hasText_; }

    /* Of a start: the element's namespace, whose data are null if it is in none, and its name in it. */
    std::string_view Space() const { return space_; }
    std::string_view Name() const { return name_; }
    std::string_view Prefix() const { return prefix_; }

    /* Of a start: names and values in turn with a null behind, without xmlns attributes. Valid until the next start. */
    const char **Attributes() { return pointers_.data(); }

    /* Of a start: what its xmlns attributes bind. */
    const Binding *NewBindings() const { return bindings_.data() + open_.back().bindings; }
    const Binding *EndOfBindings() const { return bindings_.data() + bindings_.size(); }

    /* Of a text with references resolved, or of a comment without its marks. */
    std::string_view Text() const { return text_; }

  private:
    /* An open element. */
    struct Element {
        std::string_view tag; /* its name as written */
        size_t bindings;      /* that hold around it */
    };

    struct Attribute {
        std::string_view name;
        std::string_view value; /* as written */
        bool isPlain;           /* the value is what is written */
    };

    /* Of one element, xmlns attributes included. */
    static constexpr size_t ATTRIBUTES = 4 * limits::ATTRIBUTES;

    uint32_t OffsetOf(const char *at) const { return static_cast<uint32_t>(at - whole_.data()); }
    const char *AfterDeclaration() const;
    Kind Leave(const char *at);
    bool ReadText(const char *begin, const char *end, bool isWanted);
    Kind ReadStart();
    bool ReadAttribute(const char *&at);
    bool HasTwice(std::string_view name) const;
    bool CanBind(const Attribute &attribute) const;
    bool FindSpace();
    bool BindAll();
    bool CopyAttributes();
    Kind ReadEnd();
    bool ReadComment();
    void Pop();

    std::string_view whole_;
    const char *at_;
    const char *begin_;
    const char *limit_;
    std::vector<Element> open_;
    std::vector<Binding> bindings_;
    std::array<Attribute, ATTRIBUTES> attributes_;
    size_t count_ = 0;           /* of attributes_ */
    std::vector<char> copies_;   /* the attributes with zeros behind */
    std::array<const char *, 2 * limits::ATTRIBUTES + 1> pointers_;
    std::vector<char> resolved_; /* text whose references are resolved */
    std::string_view space_;
    std::string_view prefix_;
    std::string_view name_;
    std::string_view text_;
    bool isRefused_ = false;
    bool isEmpty_ = false; /* the latest tag is an element's start and end */
    bool hasText_ = false;
    bool wasTag_ = false; /* the latest event was a tag */
    bool hasRoot_ = false;
};

} // namespace qxyang
