/**
 * @file
 * What the functions of the C++ face answer: a value, or a code and a text. korv_lib_yang.hpp includes this header.
 */
#ifndef KORV_LIB_YANG_CPP_RESULT_HPP
#define KORV_LIB_YANG_CPP_RESULT_HPP

#include "../korv_lib_yang.h"

#include <cstring>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

#if defined(__cpp_exceptions)
#include <exception>
#include <stdexcept>
#include <string>
#endif

/** The C++ face of the host's interface. */
namespace korv {

/** A text with its own characters, which end with a zero. Moving it copies no character. */
class OwnedText {
  public:
    OwnedText() noexcept = default;
    ~OwnedText() = default;
    OwnedText(const OwnedText &) = delete;
    OwnedText &operator=(const OwnedText &) = delete;

    /** Takes the characters; the other one is empty then. */
    OwnedText(OwnedText &&other) noexcept
        : characters_(std::move(other.characters_)), text_(std::exchange(other.text_, ""))
    {
    }
    /** The same. */
    OwnedText &operator=(OwnedText &&other) noexcept
    {
        characters_ = std::move(other.characters_);
        text_ = std::exchange(other.text_, "");
        return *this;
    }

    /** A literal, or another text that outlives this one: nothing is copied. */
    explicit OwnedText(std::string_view outlivingText) noexcept : text_(outlivingText) {}

    /** A text of that many characters, all of them zero, or an empty text without memory: look at its size. */
    static OwnedText ofLength(std::size_t length) noexcept
    {
        OwnedText made;
        made.characters_.reset(new (std::nothrow) char[length + 1]());
        if (made.characters_)
            made.text_ = std::string_view(made.characters_.get(), length);
        return made;
    }

    /** A copy of a text, or an empty text without memory. */
    static OwnedText copyOf(std::string_view text) noexcept
    {
        OwnedText made = ofLength(text.size());
        if (made.text_.size() == text.size() && !text.empty())
            std::memcpy(made.data(), text.data(), text.size());
        return made;
    }

    /** The characters, for as long as this object lives. */
    std::string_view view() const noexcept { return text_; }
    /** The same. */
    operator std::string_view() const noexcept { return text_; }
    /** The characters with their zero, for C. */
    const char *c_str() const noexcept { return text_.data(); }
    /** The characters to be written, or null when this object owns none. */
    char *data() noexcept { return characters_.get(); }

  private:
    std::unique_ptr<char[]> characters_;
    std::string_view text_ = "";
};

/** Why something failed. */
struct Failure {
    uint32_t code = KORV_FAIL; /**< KORV_FAIL, another code of the C interface, or one of the schema library's */
    OwnedText text;            /**< a sentence for people */
};

#if defined(__cpp_exceptions)
/** What value() of a failed result throws. */
class Error : public std::runtime_error {
  public:
    /** The same code and text as the failure's. */
    explicit Error(const Failure &failure) : std::runtime_error(std::string(failure.text.view())), code_(failure.code)
    {
    }

    /** The failure's code. */
    uint32_t code() const noexcept { return code_; }

  private:
    uint32_t code_;
};
#endif

/** A value, or why there is none. T has a default value, which stands for none. */
template <class T>
class [[nodiscard]] Result {
  public:
    /** A value. */
    Result(T value) noexcept : value_(std::move(value)) {}
    /** A failure. */
    Result(Failure failure) noexcept : failure_(std::move(failure)) {}

    /** True if there is a value. */
    bool ok() const noexcept { return failure_.code == KORV_OK; }
    /** True if there is a value. */
    explicit operator bool() const noexcept { return ok(); }
    /** KORV_OK, or the failure's code. */
    uint32_t code() const noexcept { return failure_.code; }
    /** The failure's text, which lives as long as this object; empty when there is a value. */
    std::string_view text() const noexcept { return failure_.text.view(); }

    /** The value; the default of its type when there is none. */
    T &operator*() &noexcept { return value_; }
    /** The same. */
    const T &operator*() const &noexcept { return value_; }
    /** The same, to be moved from. */
    T &&operator*() &&noexcept { return std::move(value_); }
    /** The same. */
    T *operator->() noexcept { return &value_; }
    /** The same. */
    const T *operator->() const noexcept { return &value_; }

#if defined(__cpp_exceptions)
    /** The value; throws Error when there is none. */
    T &value() &
    {
        check();
        return value_;
    }
    /** The same, to be moved from. */
    T value() &&
    {
        check();
        return std::move(value_);
    }
#endif

  private:
#if defined(__cpp_exceptions)
    void check() const
    {
        if (!ok())
            throw Error(failure_);
    }
#endif

    T value_{};
    Failure failure_{KORV_OK, OwnedText()};
};

/** Success without a value, or a failure. */
template <>
class [[nodiscard]] Result<void> {
  public:
    /** Success. */
    Result() noexcept = default;
    /** A failure. */
    Result(Failure failure) noexcept : failure_(std::move(failure)) {}

    /** True for success. */
    bool ok() const noexcept { return failure_.code == KORV_OK; }
    /** True for success. */
    explicit operator bool() const noexcept { return ok(); }
    /** KORV_OK, or the failure's code. */
    uint32_t code() const noexcept { return failure_.code; }
    /** The failure's text, which lives as long as this object; empty after success. */
    std::string_view text() const noexcept { return failure_.text.view(); }

#if defined(__cpp_exceptions)
    /** Throws Error after a failure. */
    void value() const
    {
        if (!ok())
            throw Error(failure_);
    }
#endif

  private:
    Failure failure_{KORV_OK, OwnedText()};
};

/* Not for hosts. */
/** @cond INSIDE */
namespace detail {

inline std::string_view TextOf(const char *text) noexcept
{
    return text != nullptr ? std::string_view(text) : std::string_view("");
}

inline Result<void> ResultOf(uint32_t code, std::string_view literal) noexcept
{
    if (code == KORV_OK)
        return {};
    return Failure{code, OwnedText(literal)};
}

/* A function object behind a C callback. One that returns bool ends the scan with false. An exception ends the scan as well,
 * waits here while the C library returns, and goes on from there. */
template <class Function>
class Visitor {
  public:
    explicit Visitor(Function &function) noexcept : function_(function) {}

    template <class... Arguments>
    uint32_t visit(const Arguments &...arguments) noexcept
    {
        if (ended_)
            return ENDED;
#if defined(__cpp_exceptions)
        try {
            ended_ = !call(arguments...);
        } catch (...) {
            thrown_ = std::current_exception();
            ended_ = true;
        }
#else
        ended_ = !call(arguments...);
#endif
        return ended_ ? ENDED : KORV_OK;
    }

    /* The code of a scan that has called visit(). */
    uint32_t finish(uint32_t code)
    {
#if defined(__cpp_exceptions)
        if (thrown_)
            std::rethrow_exception(std::move(thrown_));
#endif
        return ended_ ? KORV_OK : code;
    }

  private:
    static constexpr uint32_t ENDED = 0xFFFFFFFEu; /* no code of the C interface */

    template <class... Arguments>
    bool call(const Arguments &...arguments)
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Function &, const Arguments &...>>) {
            function_(arguments...);
            return true;
        } else {
            return function_(arguments...);
        }
    }

    Function &function_;
    bool ended_ = false;
#if defined(__cpp_exceptions)
    std::exception_ptr thrown_;
#endif
};

/* The same with the instance that the callback makes views of. */
template <class Function>
class ViewVisitor : public Visitor<Function> {
  public:
    ViewVisitor(TELMYANG_LOCAL_DATA_S *visited, Function &function) noexcept
        : Visitor<Function>(function), local(visited)
    {
    }

    TELMYANG_LOCAL_DATA_S *local;
};

} // namespace detail
/** @endcond */

} // namespace korv

#endif /* KORV_LIB_YANG_CPP_RESULT_HPP */
