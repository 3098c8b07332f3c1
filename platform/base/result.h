#pragma once

#include "platform/base/error.h"

#include <cassert>
#include <optional>
#include <utility>
#include <variant>

namespace platform {

/// The value that an operation returns, or the error with which it failed. Failures of the disk are ordinary
/// outcomes; nothing in this layer throws.
template <class Value>
class [[nodiscard]] Result {
public:
    Result(Value value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }

    /// Returns the value. The result must have one.
    Value& operator*() { return *operator->(); }
    const Value& operator*() const { return *operator->(); }
    Value* operator->() {
        assert(*this);
        return std::get_if<0>(&m_state);
    }
    const Value* operator->() const {
        assert(*this);
        return std::get_if<0>(&m_state);
    }

    /// Returns the error. The result must not have a value.
    const Error& error() const {
        assert(!*this);
        return *std::get_if<1>(&m_state);
    }

private:
    std::variant<Value, Error> m_state;
};

/// The outcome of an operation that returns no value: success or an error.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    explicit operator bool() const { return !m_error; }
    const Error& error() const {
        assert(m_error);
        return *m_error;
    }

private:
    std::optional<Error> m_error;
};

} // namespace platform
