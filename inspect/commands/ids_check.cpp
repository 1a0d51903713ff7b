/* ids check: do the models say what the registry says? */
#include <cstdio>

#include "base/failure.h"
#include "base/text.h"
#include "commands/ids_action.h"
#include "ids/session.h"

namespace inspect {
namespace {

class CheckIds final : public IdsAction {
  public:
    void Understand(const IdsOptions &options) override { RequireModules(options); }
    int Run(const IdsOptions &options) override;
};

int CheckIds::Run(const IdsOptions &options)
{
    ids::Registry registry = ids::LoadRegistry(options.registry, ids::IfMissing::Fail);
    ids::Session session(options.models.Request(), options.all, options.registry, std::move(registry));
    std::vector<ids::Finding> findings = session.Compare();
    if (options.models.OutputFormat() == Format::Json) {
        JsonOut out;
        out.Object();
        out.Member("registry", options.registry);
        ids::WriteJson(&out, findings);
        out.EndObject();
    } else {
        ids::WriteText(findings);
        std::printf("%s compared with the registry: %s\n", Count(session.ModuleCount(), "module").c_str(),
                    findings.empty() ? "no findings" : Count(findings.size(), "finding").c_str());
    }
    return findings.empty() ? EXIT_OK : EXIT_NEGATIVE;
}

} // namespace

const IdsActionEntry IDS_CHECK = {"check", MakeAction<CheckIds>};

} // namespace inspect
