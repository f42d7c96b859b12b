// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <utility>

/// Why there is no value, in words.
struct Failure
{
    QString reason;
};

/// A value, or why there is none. A function returns either the one or a Failure.
template <typename Value>
class [[nodiscard]] Result final
{
public:
    Result(Value value)
        : m_value(std::move(value))
    {
    }

    Result(Failure failure)
        : m_error(std::move(failure.reason))
    {
    }

    explicit operator bool() const noexcept { return m_value.has_value(); }

    /// The value. There must be one.
    Value& operator*() noexcept { return *m_value; }

    const Value& operator*() const noexcept { return *m_value; }

    const Value* operator->() const noexcept { return &*m_value; }

    /// Why there is no value; empty where there is one.
    const QString& error() const noexcept { return m_error; }

private:
    std::optional<Value> m_value;
    QString m_error;
};

/// Whether something without a result was done, or why not. `{}` says that it was.
template <>
class [[nodiscard]] Result<void> final
{
public:
    Result() = default;

    Result(Failure failure)
        : m_failure(std::move(failure))
    {
    }

    explicit operator bool() const noexcept { return !m_failure; }

    /// Why it was not done; empty where it was.
    QString error() const { return m_failure ? m_failure->reason : QString(); }

private:
    std::optional<Failure> m_failure;
};
