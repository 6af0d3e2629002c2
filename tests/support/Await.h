#pragma once

#include <QCoroTask>
#include <QEventLoop>

#include <exception>
#include <optional>

// Runs a coroutine to its end in a nested event loop and rethrows what it threw. (QCoro::waitFor
// never returns when the awaited task throws.)
namespace QuilloTest {

namespace detail {

template<typename T>
QCoro::Task<> drive(QCoro::Task<T> task, std::optional<T> &result, std::exception_ptr &error, bool &done,
                    QEventLoop &loop)
{
    try {
        result = co_await std::move(task);
    } catch (...) {
        error = std::current_exception();
    }
    done = true;
    loop.quit();
}

inline QCoro::Task<> drive(QCoro::Task<> task, std::exception_ptr &error, bool &done, QEventLoop &loop)
{
    try {
        co_await std::move(task);
    } catch (...) {
        error = std::current_exception();
    }
    done = true;
    loop.quit();
}

} // namespace detail

template<typename T>
T wait(QCoro::Task<T> task)
{
    QEventLoop loop;
    std::optional<T> result;
    std::exception_ptr error;
    bool done = false;
    auto driver = detail::drive(std::move(task), result, error, done, loop);
    if (!done)
        loop.exec();
    if (error)
        std::rethrow_exception(error);
    return std::move(*result);
}

inline void wait(QCoro::Task<> task)
{
    QEventLoop loop;
    std::exception_ptr error;
    bool done = false;
    auto driver = detail::drive(std::move(task), error, done, loop);
    if (!done)
        loop.exec();
    if (error)
        std::rethrow_exception(error);
}

} // namespace QuilloTest
