#include "syntax/compact_recording.h"

#include "syntax/compact_parser.h"
#include "syntax/statement_recorder.h"

namespace qxyang {

namespace {

class RecordingSink final : public CompactSink {
  public:
    RecordingSink(Unit &unit, Failures &failures) : recorder_(unit, failures) {}

    void Start(const CompactStatement &statement) override { recorder_.StartCompact(statement); }
    void Head(bool) override {}
    void End(uint32_t) override { recorder_.End(); }
    void OnComment(const CompactComment &) override {}
    void Fail(uint32_t offset, std::string_view sentence) override { recorder_.Fail(offset, sentence); }

  private:
    StatementRecorder recorder_;
};

} // namespace

bool ParseCompact(Unit &unit, Failures &failures)
{
    Failures::Mark before = failures.Now();
    RecordingSink sink(unit, failures);
    CompactParser(unit.source, sink, false).Run();
    return unit.root != nullptr && !failures.AnySince(before);
}

} // namespace qxyang
