// Pointers to components and other message handlers that become null when the object is destroyed.
#ifndef QUILLMARSH_GUI_GUI_WATCH_H
#define QUILLMARSH_GUI_GUI_WATCH_H

#include <quillmarsh/platform/types.h>

namespace quillmarsh::gui
{

class MessageHandler;

/// Part of every Watch that does not depend on the class: a link in the list of watches of one handler. Watching and
/// ending take constant time and no memory. Frame thread only.
class QUILLMARSH_API WatchLink
{
public:
    WatchLink() = default;
    WatchLink(WatchLink const &other) { Link(other.handler_); }
    WatchLink &operator=(WatchLink const &other);
    ~WatchLink() { Unlink(); }

protected:
    /// Watches another handler instead; null for none.
    void Reset(MessageHandler *handler);
    MessageHandler *GetHandler() const { return handler_; }

private:
    friend class MessageHandler;

    void Link(MessageHandler *handler);
    void Unlink();

    MessageHandler *handler_ = nullptr;
    WatchLink *previous_ = nullptr;
    WatchLink *next_ = nullptr;
};

/// Borrowed pointer to a `T`, a class derived from MessageHandler, that becomes null when the object is destroyed. Code
/// that goes on after a call of a handler holds its objects this way, because any handler may delete any component.
/// `T` has to be complete only where a watch is set or read. Frame thread only.
///
/// \code
/// gui::Watch<gui::Component> watch(component);
/// component.DispatchMessage(message);
/// if (watch.Get() == nullptr) // a handler has deleted it
///     return;
/// \endcode
template<typename T>
class Watch : public WatchLink
{
public:
    Watch() = default;
    /// Watches `object`; null for none.
    Watch(T *object) { Reset(object); }
    explicit Watch(T &object) { Reset(&object); }

    Watch &operator=(T *object)
    {
        Reset(object);
        return *this;
    }

    /// @name The object
    /// Null if there is none, or if it was destroyed.
    /// @{
    T *Get() const { return static_cast<T *>(GetHandler()); }
    operator T *() const { return Get(); }
    T *operator->() const { return Get(); }
    /// @}
};

} // namespace quillmarsh::gui

#endif
