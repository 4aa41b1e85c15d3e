#pragma once

#include "reactive/Action.h"

#include <functional>

namespace tensio {

// A command with a fixed input, for a button: each click runs it once with that input. Shares the
// command's state, so it may outlive the Action it was made from.
class CocoaAction {
public:
    template<typename Input, typename T, typename E>
    CocoaAction(Action<Input, T, E> action, Input input)
        : m_run([action = std::move(action), input = std::move(input)]() mutable {
            action.apply(input);
        })
    {
    }

    void execute() const { m_run(); }

private:
    std::function<void()> m_run;
};

} // namespace tensio
