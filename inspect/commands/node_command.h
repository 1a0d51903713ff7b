/* What the commands about one node share: they take a module and a path in it. */
#pragma once

#include "line/command.h"
#include "line/model_options.h"

namespace inspect {

class NodeCommand : public Command {
  public:
    void AddTo(CLI::App *app) override
    {
        options_.AddCommon(app);
        options_.AddModule(app);
        options_.AddPath(app);
        options_.AddFormats(app, {"text", "json"});
    }

    void Understand() override { options_.Understand(); }

  protected:
    ModelOptions options_;
};

} // namespace inspect
