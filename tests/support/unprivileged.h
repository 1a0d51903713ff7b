/* A user whom permissions bind: they do not bind root. */
#ifndef KORV_TEST_UNPRIVILEGED_H
#define KORV_TEST_UNPRIVILEGED_H

#include <gtest/gtest.h>
#include <unistd.h>

namespace test {

/* This program, and what it starts, runs as nobody for as long as the object lives, where it runs as root. */
class Unprivileged {
  public:
    Unprivileged() : changed_(::geteuid() == 0 && ::setresuid(NOBODY, NOBODY, 0) == 0) {}
    ~Unprivileged() { EXPECT_TRUE(!changed_ || ::setresuid(0, 0, 0) == 0); }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

  private:
    static constexpr uid_t NOBODY = 65534;
    bool changed_;
};

/* Modes that let that user enter but not list a directory that this program makes, or list but not enter it. */
inline unsigned EnterOnly()
{
    return ::geteuid() == 0 ? 0711 : 0311;
}
inline unsigned ListOnly()
{
    return ::geteuid() == 0 ? 0744 : 0444;
}

} // namespace test

#endif // KORV_TEST_UNPRIVILEGED_H
