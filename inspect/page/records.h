/* The page's data while it is made: texts and records, each kept once, however often the models repeat it. */
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace inspect::page {

/* Adds the text as JSON. '<' is escaped, so that JSON in an HTML document never ends the element that holds it. */
void AddQuoted(std::string *json, std::string_view text);

/* A JSON array in which a number is 0 where there is nothing to say, and which ends behind the last one that is not. */
class Row {
  public:
    void Add(uint64_t number);

    /* An array of numbers; 0 for an empty one. */
    void Add(const std::vector<uint32_t> &numbers);

    std::string Json() const { return json_.substr(0, kept_) + "]"; }

  private:
    void Keep(bool isSaid);

    std::string json_ = "[";
    size_t kept_ = 1; /* bytes up to the last value that says something */
};

/* A JSON object of what there is to say; "" as long as that is nothing. */
class Remarks {
  public:
    /* Nothing for an empty text or list. */
    void Add(const char *name, std::string_view text);
    void Add(const char *name, const std::vector<std::string> &texts);
    void Add(const char *name, const std::vector<uint32_t> &numbers);
    void AddNumber(const char *name, uint64_t number); /* also 0 */
    void AddJson(const char *name, const std::string &json);

    std::string Json() const { return json_.empty() ? json_ : json_ + "}"; }

  private:
    void Key(const char *name);

    std::string json_;
};

/* JSON values, counted from 0. */
class Records {
  public:
    uint32_t Add(const std::string &json);

    /* Adds the array of all values. */
    void AddTo(std::string *json) const;

  private:
    std::unordered_map<std::string, uint32_t> numbers_;
    std::vector<const std::string *> values_;
};

/* Texts of the models, counted from 0, which is the empty one. */
class Texts {
  public:
    Texts() { (void)Add(""); }

    uint32_t Add(std::string_view text);
    void AddTo(std::string *json) const { values_.AddTo(json); }

  private:
    std::unordered_map<std::string, uint32_t> numbers_;
    Records values_;
};

/* All that the rows of modules refer to by number. */
struct Tables {
    Texts texts;
    Records types;
    Records remarks;
    Records leaves;
    Records nodes;
};

} // namespace inspect::page
