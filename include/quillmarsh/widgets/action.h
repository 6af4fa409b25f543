// What a program does when a widget was used.
#ifndef QUILLMARSH_WIDGETS_ACTION_H
#define QUILLMARSH_WIDGETS_ACTION_H

#include <functional>
#include <utility>

namespace quillmarsh::widgets
{

/// Function that a widget calls, or none. The function may do anything, also delete the widget or give it another
/// action: it lives until it returns. What it throws goes on to the frame. Frame thread only.
template<typename... Arguments>
class Action
{
public:
    /// What it holds.
    using Function = std::function<void(Arguments...)>;

    Action() = default;

    Action &operator=(Function function)
    {
        function_ = std::move(function);
        return *this;
    }

    /// True if there is a function.
    explicit operator bool() const { return static_cast<bool>(function_); }

    /// Calls the function, if there is one. The widget may be gone after that.
    void operator()(Arguments... arguments) const
    {
        if (!function_)
            return;
        Function const function = function_;
        function(std::forward<Arguments>(arguments)...);
    }

private:
    Function function_;
};

} // namespace quillmarsh::widgets

#endif
