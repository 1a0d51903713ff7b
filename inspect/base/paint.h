/* Colors of terminals. */
#pragma once

#include <string>
#include <string_view>

namespace inspect {

/* What a text is for the reader. */
enum class Tone {
    Plain,
    Name, /* of what a row is about */
    Id,   /* what hosts address it by */
    Key,
    Faint, /* what is seldom read */
    Good,
    Warning,
    Bad,
};

class Paint {
  public:
    /* As --color has it, "auto", "always" or "never"; "auto" paints on a terminal unless NO_COLOR is set. */
    explicit Paint(const std::string &when = "never");

    bool IsOn() const { return isOn_; }

    /* The text in its color. */
    std::string Text(Tone tone, std::string_view text) const;

  private:
    bool isOn_;
};

/* A line that is made from left to right: colors take no room in it. */
class PaintedLine {
  public:
    explicit PaintedLine(const Paint &paint) : paint_(paint) {}

    void Add(std::string_view text, Tone tone = Tone::Plain);

    /* Fills up with blanks to a width, counted in characters from the line's beginning. */
    void PadTo(size_t width);

    /* Writes the line to standard output without the blanks at its end, and begins a new one. */
    void Print();

  private:
    Paint paint_;
    std::string line_;
    size_t width_ = 0;  /* characters of the line, with the blanks that are due */
    size_t blanks_ = 0; /* that are due in front of the next text */
};

} // namespace inspect
