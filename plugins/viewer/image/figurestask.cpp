#include "figurestask.h"

namespace viewer
{

void FiguresTask::Start(Compute compute, std::function<void(Figures const &)> done)
{
    Stop();
    unsigned int const request = request_;
    auto const finish = [this, request, done = std::move(done)](std::optional<Figures> const &figures)
    {
        if (request != request_)
            return;
        number_ = 0;
        if (figures)
            done(*figures);
    };
    number_ = jobs_->Start(
        "figures",
        [compute = std::move(compute), finish](Jobs::Progress const &progress) -> Jobs::Finish
        {
            std::optional<Figures> figures = compute(progress);
            return [finish, figures = std::move(figures)] { finish(figures); };
        },
        [finish](string const &) { finish(std::nullopt); });
}

void FiguresTask::Stop()
{
    ++request_;
    if (number_ != 0)
        jobs_->Stop(number_);
    number_ = 0;
}

void FiguresTask::Close()
{
    Stop();
    jobs_.reset();
}

} // namespace viewer
