#pragma once

#include "TreeListing.h"

#include <chrono>
#include <future>
#include <system_error>
#include <type_traits>

namespace FileTree {

/// How often whoever shows progress hears of it: some thirty times a second.
constexpr std::chrono::milliseconds reportInterval{33};

/// A call in a thread beside this one. Where no thread is to be had it is made when its answer is
/// asked for.
template <class Call>
class SecondThread
{
public:
    using Answer = std::invoke_result_t<Call>;

    explicit SecondThread(Call call)
    {
        try {
            m_answer = std::async(std::launch::async, call);
        } catch (const std::system_error &) {
            m_answer = std::async(std::launch::deferred, call);
        }
    }

    /// What the call answers, once it has ended; ticks until then.
    Answer wait(const Tick &tick)
    {
        while (m_answer.wait_for(reportInterval) == std::future_status::timeout) {
            if (tick)
                tick();
        }
        return m_answer.get();
    }

private:
    std::future<Answer> m_answer;
};

} // namespace FileTree
