#include "build/leafref_members.h"

namespace qxyang {

namespace {

/* Takes the marks of a walk back, also when it ran out of memory. */
class Unmark {
  public:
    explicit Unmark(const std::vector<const UnionMembers *> &marked) : marked_(marked) {}
    Unmark(const Unmark &) = delete;
    Unmark &operator=(const Unmark &) = delete;

    ~Unmark()
    {
        for (const UnionMembers *members : marked_)
            members->isSeen = false;
    }

  private:
    const std::vector<const UnionMembers *> &marked_;
};

} // namespace

const std::vector<const QY_TYPE *> &LeafrefMembers::Of(const QY_TYPE &type)
{
    found_.clear();
    seen_.clear();
    open_.clear();
    Unmark unmark(seen_);
    Enter(type);
    Walk();
    return found_;
}

void LeafrefMembers::Enter(const QY_TYPE &type)
{
    if (type.builtin == QY_TYPE_LEAFREF)
        found_.push_back(&type);
    if (type.builtin != QY_TYPE_UNION || !type.refers || type.members->isSeen)
        return;
    open_.push_back({type.members, 0});
    seen_.push_back(type.members);
    type.members->isSeen = true;
}

void LeafrefMembers::Walk()
{
    while (!open_.empty()) {
        Place &place = open_.back();
        if (place.next == place.members->count)
            open_.pop_back();
        else
            Enter(*place.members->types[place.next++]);
    }
}

} // namespace qxyang
