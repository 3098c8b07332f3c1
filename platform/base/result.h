#pragma once

#include "platform/base/error.h"

#include <optional>
#include <utility>
#include <variant>

namespace platform {

/// What an operation gives: its value, or the error that kept it from giving one. Failures of the disk are
/// ordinary outcomes here; nothing in this layer throws.
template <class Value>
class [[nodiscard]] Result {
public:
    Result(Value value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }

    /// The value; only of a result that has one.
    Value& operator*() { return *std::get_if<0>(&m_state); }
    const Value& operator*() const { return *std::get_if<0>(&m_state); }
    Value* operator->() { return std::get_if<0>(&m_state); }
    const Value* operator->() const { return std::get_if<0>(&m_state); }

    /// The error; only of a result that has no value.
    const Error& error() const { return *std::get_if<1>(&m_state); }

private:
    std::variant<Value, Error> m_state;
};

/// The outcome of an operation that gives nothing but success or an error.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    explicit operator bool() const { return !m_error; }
    const Error& error() const { return *m_error; }

private:
    std::optional<Error> m_error;
};

} // namespace platform
