// What the layer does when memory runs out: the standard containers throw, the interface has no
// exceptions. Each operation of the interface that needs memory does its work in here, and answers
// its failure.
#pragma once

#include <new>

// Runs the work and gives what it returns; `failure` when memory ran out on the way. What the work
// changed before stays, so it allocates first, or its records undo it when they end.
template <typename Answer, typename Work>
Answer UnlessMemoryRunsOut(Answer failure, const Work &work) noexcept
{
    try {
        return static_cast<Answer>(work());
    } catch (const std::bad_alloc &) {
        return failure;
    }
}

// The same for work that returns nothing. Returns whether it came to its end.
template <typename Work> bool DoesMemorySuffice(const Work &work) noexcept
{
    return UnlessMemoryRunsOut(false, [&work] {
        work();
        return true;
    });
}
