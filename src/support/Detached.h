#pragma once

#include <QCoroTask>
#include <QDebug>

#include <exception>

// Starts a coroutine that nobody awaits, as a slot must. QCoro frees the frame when it ends even
// though its Task is gone; what it throws is logged instead of vanishing unseen.
inline void detached(QCoro::Task<> task)
{
    [](QCoro::Task<> running) -> QCoro::Task<> {
        try {
            co_await std::move(running);
        } catch (const std::exception &error) {
            qWarning("Unhandled failure in a background task: %s", error.what());
        }
    }(std::move(task));
}

// As above, for a task whose answer nobody waits for: it reports its own failures.
template<typename T>
void detached(QCoro::Task<T> task)
{
    detached([](QCoro::Task<T> running) -> QCoro::Task<> { co_await std::move(running); }(std::move(task)));
}
