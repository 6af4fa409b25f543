#include "source/platform/dialogs.h"

#include <atomic>

namespace quillmarsh::platform
{
namespace
{

std::atomic<DialogPresenter *> s_presenter{nullptr};

} // namespace

DialogPresenter::~DialogPresenter() = default;

DialogPresenter *SetDialogPresenter(DialogPresenter *presenter)
{
    return s_presenter.exchange(presenter);
}

eDialogAnswer PresentDialog(DialogRequest const &request)
{
    DialogPresenter *const presenter = s_presenter.load();
    return presenter ? presenter->Present(request) : PresentSystemDialog(request);
}

} // namespace quillmarsh::platform
