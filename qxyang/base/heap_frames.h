/* Coroutines for functions that call one another as deep as a model is nested. Their frames lie on the heap, since the
 * thread's stack may be small. */
#pragma once

#include <coroutine>
#include <utility>
#include <vector>

namespace qxyang {

/* What such a function returns. `co_await Walk(child)` runs Walk to its end. A function begins to run when another one
 * awaits it or when it is passed to RunOnHeap. */
class OnHeap {
  public:
    struct promise_type;
    using Frame = std::coroutine_handle<promise_type>;
    using Frames = std::vector<Frame>; /* each awaits the next */

    struct promise_type {
        Frames *frames = nullptr;

        OnHeap get_return_object() { return OnHeap(Frame::from_promise(*this)); }
        std::suspend_always initial_suspend() noexcept { return {}; }
        std::suspend_always final_suspend() noexcept { return {}; }
        void return_void() noexcept {}
        [[noreturn]] void unhandled_exception() { throw; }
    };

    OnHeap(OnHeap &&other) noexcept : frame_(std::exchange(other.frame_, {})) {}
    OnHeap(const OnHeap &) = delete;
    OnHeap &operator=(const OnHeap &) = delete;
    ~OnHeap()
    {
        if (frame_)
            frame_.destroy();
    }

    bool await_ready() const noexcept { return false; }
    void await_suspend(Frame awaiting) { Enter(*awaiting.promise().frames); }
    void await_resume() const noexcept {}

    /* Puts the function's frame behind the others, which own it from then on. */
    void Enter(Frames &frames)
    {
        frame_.promise().frames = &frames;
        frames.push_back(frame_);
        frame_ = {};
    }

  private:
    explicit OnHeap(Frame frame) : frame_(frame) {}

    Frame frame_;
};

/* Runs the function and all functions that it awaits. An exception from one of them ends all of them, the innermost
 * first. */
inline void RunOnHeap(OnHeap function)
{
    struct Owner {
        ~Owner()
        {
            for (; !frames.empty(); frames.pop_back())
                frames.back().destroy();
        }
        OnHeap::Frames frames;
    };
    Owner owner;
    function.Enter(owner.frames);
    while (!owner.frames.empty()) {
        OnHeap::Frame innermost = owner.frames.back();
        innermost.resume();
        if (!innermost.done())
            continue;
        innermost.destroy();
        owner.frames.pop_back();
    }
}

} // namespace qxyang
