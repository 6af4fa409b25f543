#include <quillmarsh/gui/gui_watch.h>

#include <quillmarsh/gui/gui_messagehandler.h>

namespace quillmarsh::gui
{

WatchLink &WatchLink::operator=(WatchLink const &other)
{
    if (this != &other)
        Reset(other.handler_);
    return *this;
}

void WatchLink::Reset(MessageHandler *handler)
{
    if (handler == handler_)
        return;
    Unlink();
    Link(handler);
}

void WatchLink::Link(MessageHandler *handler)
{
    handler_ = handler;
    if (handler == nullptr)
        return;
    previous_ = nullptr;
    next_ = handler->firstWatch_;
    if (next_ != nullptr)
        next_->previous_ = this;
    handler->firstWatch_ = this;
}

void WatchLink::Unlink()
{
    if (handler_ == nullptr)
        return;
    (previous_ != nullptr ? previous_->next_ : handler_->firstWatch_) = next_;
    if (next_ != nullptr)
        next_->previous_ = previous_;
    handler_ = nullptr;
}

} // namespace quillmarsh::gui
