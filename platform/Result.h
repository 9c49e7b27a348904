#pragma once

#include <QString>

#include <utility>
#include <variant>

/// Why an operation did not happen: one sentence for the log or a test, never shown to the user.
struct Failure
{
    QString reason;
    /// What it was made for is not there any more: it may be made anew for what is there now.
    bool isOutdated = false;
};

/// The value that an operation made, or why there is none.
template <class Value = std::monostate>
class [[nodiscard]] Result
{
public:
    Result(Value value = {}) : m_content(std::move(value)) {}
    Result(Failure failure) : m_content(std::move(failure)) {}

    explicit operator bool() const { return std::holds_alternative<Value>(m_content); }

    /// Only when there is a value.
    const Value &operator*() const { return std::get<Value>(m_content); }
    Value &operator*() { return std::get<Value>(m_content); }
    const Value *operator->() const { return &std::get<Value>(m_content); }
    Value *operator->() { return &std::get<Value>(m_content); }

    /// Empty when there is a value.
    QString reason() const { return *this ? QString() : std::get<Failure>(m_content).reason; }
    bool isOutdated() const { return !*this && std::get<Failure>(m_content).isOutdated; }

private:
    std::variant<Value, Failure> m_content;
};

/// Of an operation that makes nothing: it worked, or why not.
using Outcome = Result<>;
