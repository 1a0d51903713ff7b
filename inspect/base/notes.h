/* What a run says beside its result, on standard error: lines for people; for scripts, which ask for JSON, an object on a
 * line of its own. */
#pragma once

#include <string>

#include "base/cause.h"
#include "base/failure.h"

namespace inspect {

class Notes {
  public:
    explicit Notes(bool asJson = false) : asJson_(asJson) {}

    bool AreJson() const { return asJson_; }

    /* Something that does not end the run. */
    void Say(const std::string &text) const;

    /* The same about a place in a model, or about the module when the place is not known. */
    void Say(const Cause &cause, const std::string &module) const;

    /* Why the run ends. Returns its exit code. */
    int End(const Failure &failure) const;

  private:
    bool asJson_;
};

} // namespace inspect
