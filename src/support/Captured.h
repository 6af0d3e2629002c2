#pragma once

#include <QByteArray>
#include <QCoroTask>

#include <exception>
#include <optional>
#include <type_traits>

// What an awaited task gave: its value, or the exception it ended with. A coroutine that must look
// at its world again after a co_await (is the session still there?) before acting on a failure
// awaits `captured(task)` instead of wrapping the co_await in try/catch.
template <typename T> struct Captured
{
    std::optional<T> value;
    std::exception_ptr error;

    explicit operator bool() const { return !error; }
};

template <> struct Captured<void>
{
    std::exception_ptr error;

    explicit operator bool() const { return !error; }
};

template <typename T> QCoro::Task<Captured<T>> captured(QCoro::Task<T> task)
{
    Captured<T> result;
    try {
        if constexpr (std::is_void_v<T>)
            co_await std::move(task);
        else
            result.value.emplace(co_await std::move(task));
    } catch (...) {
        result.error = std::current_exception();
    }
    co_return result;
}

// The exception inside `error` when it is an E.
template <typename E> std::optional<E> thrown(const std::exception_ptr &error)
{
    if (!error)
        return std::nullopt;
    try {
        std::rethrow_exception(error);
    } catch (const E &typed) {
        return typed;
    } catch (...) {
        return std::nullopt;
    }
}

// What an exception says of itself, for the log.
inline QByteArray whatOf(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &typed) {
        return typed.what();
    } catch (...) {
        return QByteArrayLiteral("unknown failure");
    }
}
