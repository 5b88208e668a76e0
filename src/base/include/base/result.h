#pragma once

#include <optional>
#include <string>
#include <utility>

namespace base {

// A failure: one whole sentence, or one line, that someone can act on.
struct Failure {
    std::string message;
};

// A value, or the failure that stands in its place.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : value_(std::move(value)) {}
    Result(Failure failure) : message_(std::move(failure.message)) {}

    explicit operator bool() const { return value_.has_value(); }
    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }

    // The failure's message; empty when there is a value.
    const std::string& Message() const { return message_; }

private:
    std::optional<T> value_;
    std::string message_;
};

// Done, or the failure: the result of an operation that yields nothing.
class [[nodiscard]] Status {
public:
    Status() = default;
    Status(Failure failure) : failed_(true), message_(std::move(failure.message)) {}

    explicit operator bool() const { return !failed_; }
    const std::string& Message() const { return message_; }

private:
    bool failed_ = false;
    std::string message_;
};

}  // namespace base
