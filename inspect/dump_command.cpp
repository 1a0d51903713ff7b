/* dump: a tree as flat records. */
#include <cstdio>

#include "commands.h"
#include "dump_records.h"
#include "failure.h"
#include "instance.h"
#include "load_causes.h"

namespace inspect {
namespace {

class Dump {
  public:
    explicit Dump(const YangDumpRequest &request)
    {
        /* A tree that is not there is an empty dump, whichever way the library says so. */
        (void)YANGLIB_DumpYangModuleDataEx(&request, &records_, &count_);
    }
    ~Dump()
    {
        YANGLIB_FreeDumpDataEx(records_, count_);
        ZOR_Free_F(records_, __FILE__, __LINE__);
    }
    Dump(const Dump &) = delete;
    Dump &operator=(const Dump &) = delete;

    DumpRecords Records() const { return {records_, count_}; }

  private:
    YangDumpNodeData **records_ = nullptr;
    uint32_t count_ = 0;
};

KorvTreeNode *AugmentTree(const ModuleFile &file, const Arguments &args)
{
    if (*args.augment >= file.ucAugmentNum)
        throw Failure(std::string("module '") + file.pcModuleName + "' has " + std::to_string(file.ucAugmentNum) +
                      " augments, counted from 0");
    const TELMYANG_AUGMENT_INFO_S &augment = file.astAugment[*args.augment];
    return args.self ? augment.pstSelfTree : augment.pstTargetTree;
}

/* Why there is nothing to dump. */
std::string NothingText(const ModuleFile &file, const Arguments &args)
{
    if (args.augment)
        return "augment " + std::to_string(*args.augment) + " has no " + (args.self ? "self" : "target") + " tree";
    return std::string("module '") + file.pcModuleName + "' has no tree of its own" +
           (file.ucAugmentNum != 0 ? ": --augment N dumps the tree of an augment" : "");
}

} // namespace

int RunDump(const Arguments &args)
{
    Instance instance(args.dirs, args.verbose);
    LoadRequested(&instance, args);
    const ModuleKey &key = args.modules.front();
    const ModuleFile &file = Loaded(instance, key);
    YangDumpRequest request = {instance.Local(), key.name.c_str(), key.revision.c_str(), nullptr, 0};
    if (args.augment) {
        request.pstAugmentTree = AugmentTree(file, args);
        request.bIsAugment = 1;
    }
    const Dump dump(request);
    if (dump.Records().empty())
        std::fprintf(stderr, "korv-inspect: %s\n", NothingText(file, args).c_str());
    if (args.format == Format::JSON)
        WriteDumpJson(dump.Records());
    else if (args.format == Format::CSV)
        WriteDumpCsv(dump.Records());
    else
        WriteDumpText(dump.Records());
    return 0;
}

} // namespace inspect
