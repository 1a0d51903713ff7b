/* A program that shows long results page by page. */
#pragma once

#include <sys/types.h>

namespace inspect {

/* What is written to standard output while the object lives goes through a pager, if that is a terminal: the first of
 * KORV_PAGER and PAGER that is set, else `less`, which leaves short results alone. An empty one, "cat", and a program that
 * is not there mean none. */
class Pager {
  public:
    Pager();
    ~Pager(); /* waits until the reader is done; there is no standard output any more then */
    Pager(const Pager &) = delete;
    Pager &operator=(const Pager &) = delete;

    bool IsOn() const { return program_ != 0; }

  private:
    void Start(const char *command);

    pid_t program_ = 0; /* 0: none */
};

} // namespace inspect
