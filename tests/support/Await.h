#pragma once

#include <QCoroTask>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTest>

#include <exception>
#include <functional>
#include <optional>
#include <type_traits>

// Runs a coroutine to its end in a nested event loop and rethrows what it threw. (QCoro::waitFor
// never returns when the awaited task throws.)
namespace QuilloTest {

namespace detail {

template<typename T>
using Result = std::optional<std::conditional_t<std::is_void_v<T>, bool, T>>;

template<typename T>
QCoro::Task<> drive(QCoro::Task<T> task, Result<T> &result, std::exception_ptr &error, QEventLoop &loop)
{
    try {
        if constexpr (std::is_void_v<T>) {
            co_await std::move(task);
            result = true;
        } else {
            result = co_await std::move(task);
        }
    } catch (...) {
        error = std::current_exception();
    }
    loop.quit();
}

} // namespace detail

template<typename T>
T wait(QCoro::Task<T> task)
{
    QEventLoop loop;
    detail::Result<T> result;
    std::exception_ptr error;
    auto driver = detail::drive(std::move(task), result, error, loop);
    if (!result && !error)
        loop.exec();
    if (error)
        std::rethrow_exception(error);
    if constexpr (std::is_void_v<T>)
        return;
    else
        return std::move(*result);
}

// Polls a real server until it shows what is expected: most actions take effect within a tick.
inline bool eventually(const std::function<bool()> &condition)
{
    const QDeadlineTimer deadline(20'000);
    while (!deadline.hasExpired()) {
        if (condition())
            return true;
        QTest::qWait(100);
    }
    return condition();
}

} // namespace QuilloTest
